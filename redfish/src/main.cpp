// zeda-redfishd [--config FILE] [--make-certificate]
//
// The read-only Redfish/Swordfish service over the NAS disks of the product's
// configuration file (default /etc/pelka/pelka.json): HTTPS only, HTTP Basic
// and session logins against the accounts file of zeda-redfish-user. Logs go
// to standard error. SIGTERM or SIGINT stop it after the requests in flight
// (at most kStopGrace). Exit status: 0 stopped, 1 could not start (listen,
// certificate, accounts), 2 bad usage or bad configuration.
//
// --make-certificate only makes the self-signed pair the service would make
// at its first start (when the configuration names no certificate and the
// pair does not exist yet) and exits: the package's installation runs it.
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

#include <glog/logging.h>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/host_name.hpp>
#include <boost/asio/signal_set.hpp>
#include <boost/asio/steady_timer.hpp>

#include "AccountStore.h"
#include "Handler.h"
#include "RedfishConfig.h"
#include "Resources.h"
#include "Server.h"
#include "Sessions.h"
#include "TlsSetup.h"
#include "inventory/Library.h"

namespace {

namespace net = boost::asio;
using namespace zeda::redfish;

constexpr int kCannotStart = 1;
constexpr int kBadUsage = 2;
constexpr char kDefaultConfig[] = "/etc/pelka/pelka.json";
constexpr char kUsage[] = "usage: zeda-redfishd [--config FILE] [--make-certificate]";

int Refuse(int status, const std::string& problem) {
  std::cerr << "zeda-redfishd: " << problem << "\n";
  return status;
}

// The name the self-signed certificate is made out to.
std::string CertificateName() {
  boost::system::error_code failed;
  const std::string name = boost::asio::ip::host_name(failed);
  return failed || name.empty() ? "localhost" : name;
}

struct Arguments {
  std::string config = kDefaultConfig;
  bool makeCertificate = false;
};

// What the command line asks for; `problem` is set when it is bad.
Arguments ReadArguments(int argc, char** argv, std::string& problem) {
  Arguments arguments;
  for (int i = 1; i < argc && problem.empty(); ++i) {
    const std::string arg = argv[i];
    if (arg == "--config" && i + 1 < argc) {
      arguments.config = argv[++i];
    } else if (arg.rfind("--config=", 0) == 0) {
      arguments.config = arg.substr(9);
    } else if (arg == "--config") {
      problem = "--config needs a FILE";
    } else if (arg == "--make-certificate") {
      arguments.makeCertificate = true;
    } else {
      problem = "unknown argument \"" + arg + "\"";
    }
  }
  if (problem.empty() && arguments.config.empty()) problem = "--config needs a FILE";
  return arguments;
}

// --make-certificate: the self-signed pair of a configuration that names no
// certificate, made unless it exists. One line on standard output says what
// was done.
int MakeCertificateOnly(const RedfishConfig& config, const std::string& configPath) {
  if (!config.certificate.empty()) {
    std::cout << "zeda-redfishd: " << configPath << " names the certificate " << config.certificate
              << ": nothing to make\n";
    return 0;
  }
  const CertificatePaths paths = SelfSignedPaths(config.programData);
  try {
    const bool made = EnsureSelfSigned(paths, CertificateName());
    std::cout << "zeda-redfishd: " << (made ? "made the self-signed certificate " : "kept ")
              << paths.certificate << " and its key " << paths.key << "\n";
  } catch (const std::exception& error) {
    return Refuse(kCannotStart, error.what());
  }
  return 0;
}

// Runs a function when it goes out of scope.
class ResetOnExit {
 public:
  explicit ResetOnExit(std::function<void()> reset) : reset_(std::move(reset)) {}
  ~ResetOnExit() { reset_(); }
  ResetOnExit(const ResetOnExit&) = delete;
  ResetOnExit& operator=(const ResetOnExit&) = delete;

 private:
  std::function<void()> reset_;
};

// The defaults that depend on the process, filled in as at the start.
void FillDefaults(RedfishConfig& config, const std::string& programData) {
  if (config.programData.empty()) config.programData = programData;
  if (config.accounts.empty()) config.accounts = config.programData + "/redfish-accounts";
}

// The TLS context of `config`: its certificate and key, or the self-signed
// pair under its program data, made when missing. Throws with the file and
// the problem.
std::shared_ptr<net::ssl::context> TlsContextOf(const RedfishConfig& config) {
  CertificatePaths paths{config.certificate, config.key};
  if (paths.certificate.empty()) {
    paths = SelfSignedPaths(config.programData);
    if (EnsureSelfSigned(paths, CertificateName())) {
      LOG(INFO) << "Made a self-signed certificate " << paths.certificate;
    }
  }
  return std::make_shared<net::ssl::context>(MakeTlsContext(paths));
}

// What a reload (SIGHUP) may change while the service runs.
struct Running {
  std::string configPath;
  RedfishConfig config;  // the section in use
  Server& server;
  ServerState& state;
  AccountStore& accounts;
  RateLimiter& rateLimiter;
};

// SIGHUP: reads the configuration file again. The inventory follows its
// sources by itself and the accounts file is read again when it changes. A
// good redfish section that differs from the one in use is applied whole:
// the new address is listened on first (when it changed), and only once
// that worked do the certificate, the accounts file and the rate change.
// A bad section, a certificate OpenSSL refuses or an address that cannot be
// listened on is reported in one line, and the section in use stays.
void ReloadOnHangUp(net::signal_set& hangUp, Running& running);

void ApplySection(net::signal_set& hangUp, Running& running, RedfishConfig now,
                  std::shared_ptr<net::ssl::context> tls) {
  if (tls) running.state.tls.Set(std::move(tls));
  running.accounts.UsePath(now.accounts);
  if (now.requestsPerSecond != running.config.requestsPerSecond) {
    running.rateLimiter.SetRate(now.requestsPerSecond);
  }
  running.config = std::move(now);
  const RedfishConfig& config = running.config;
  LOG(INFO) << "SIGHUP: applied the redfish section of " << running.configPath << ": listening on "
            << config.address << ":" << running.server.Port() << ", certificate "
            << (config.certificate.empty() ? "self-signed" : config.certificate) << ", accounts "
            << config.accounts << ", " << config.requestsPerSecond << " requests per second";
  ReloadOnHangUp(hangUp, running);
}

void ReloadOnHangUp(net::signal_set& hangUp, Running& running) {
  hangUp.async_wait([&hangUp, &running](boost::system::error_code error, int) {
    if (error) return;
    RedfishConfig now;
    std::shared_ptr<net::ssl::context> tls;
    const RedfishConfig& old = running.config;
    try {
      now = LoadRedfishConfig(running.configPath);
      FillDefaults(now, old.programData);
      const bool sameTls = now.certificate == old.certificate && now.key == old.key &&
                           (!now.certificate.empty() || now.programData == old.programData);
      if (!sameTls) tls = TlsContextOf(now);
    } catch (const std::exception& problem) {
      LOG(ERROR) << "SIGHUP: " << problem.what() << "; the configuration in use stays";
      ReloadOnHangUp(hangUp, running);
      return;
    }
    const bool sameListen = now.address == old.address && now.port == old.port;
    if (sameListen && !tls && now.accounts == old.accounts &&
        now.requestsPerSecond == old.requestsPerSecond) {
      LOG(INFO) << "SIGHUP: " << running.configPath << " is good, nothing to change";
      ReloadOnHangUp(hangUp, running);
      return;
    }
    if (sameListen) {
      ApplySection(hangUp, running, std::move(now), std::move(tls));
      return;
    }
    const std::string address = now.address;
    const unsigned short port = now.port;
    running.server.Relisten(
        address, port,
        [&hangUp, &running, now = std::move(now), tls = std::move(tls)](bool moved) mutable {
          if (!moved) {
            LOG(ERROR) << "SIGHUP: the redfish section of " << running.configPath
                       << " is not applied; the configuration in use stays";
            ReloadOnHangUp(hangUp, running);
            return;
          }
          ApplySection(hangUp, running, std::move(now), std::move(tls));
        });
  });
}

// Stops `io` once no request is being answered, or after kStopGrace.
void StopWhenQuiet(net::io_context& io, ServerState& state,
                   std::chrono::steady_clock::time_point deadline) {
  if (state.busy == 0 || std::chrono::steady_clock::now() >= deadline) {
    io.stop();
    return;
  }
  auto timer = std::make_shared<net::steady_timer>(io, std::chrono::milliseconds(20));
  timer->async_wait([&io, &state, deadline, timer](boost::system::error_code) {
    StopWhenQuiet(io, state, deadline);
  });
}

}  // namespace

int main(int argc, char** argv) {
  std::string problem;
  const Arguments arguments = ReadArguments(argc, argv, problem);
  if (!problem.empty()) return Refuse(kBadUsage, problem + " (" + kUsage + ")");
  const std::string& configPath = arguments.config;

  FLAGS_logtostderr = true;
  google::InitGoogleLogging("zeda-redfishd");
  std::signal(SIGPIPE, SIG_IGN);
  // The inventory library reads the same file.
  ::setenv("PELKA_CONFIG", configPath.c_str(), 1);

  RedfishConfig config;
  try {
    config = LoadRedfishConfig(configPath);
  } catch (const std::exception& error) {
    return Refuse(kBadUsage, error.what());
  }
  if (arguments.makeCertificate) {
    if (config.programData.empty()) config.programData = zeda::pelka::util::GetProgramDataPath();
    return MakeCertificateOnly(config, configPath);
  }
  try {
    // The library would log its refusal too; here it is reported once, below.
    const int logLevel = FLAGS_minloglevel;
    FLAGS_minloglevel = google::GLOG_FATAL;
    const ResetOnExit restore([logLevel] { FLAGS_minloglevel = logLevel; });
    const zeda::pelka::InventoryHold hold;
    zeda::pelka::GetNasList();
  } catch (const std::exception& error) {
    const std::string message = error.what();
    if (message.rfind("Bad configuration file", 0) == 0) return Refuse(kBadUsage, message);
    // The inventory may come later (a file not written yet): requests answer
    // 500 until then.
    LOG(ERROR) << "Inventory not available: " << message;
  }
  FillDefaults(config, zeda::pelka::util::GetProgramDataPath());

  std::shared_ptr<net::ssl::context> tls;
  try {
    tls = TlsContextOf(config);
  } catch (const std::exception& error) {
    return Refuse(kCannotStart, error.what());
  }

  std::optional<AccountStore> accounts;
  try {
    accounts.emplace(config.accounts);
  } catch (const std::exception& error) {
    return Refuse(kCannotStart, error.what());
  }
  if (accounts->Names().empty()) {
    LOG(WARNING) << "No account in " << config.accounts
                 << ": add one with zeda-redfish-user --accounts " << config.accounts
                 << " add NAME";
  }
  SessionStore sessions;
  RateLimiter rateLimiter(config.requestsPerSecond);
  Services services{*accounts, sessions, [](std::string_view path) { return GetResource(path); },
                    [] { return ServiceRootBody(); }};
  ServerState state{TlsContextHolder(tls), services, rateLimiter, {}, {0}, {false}};
  // Made after what connections use: when the process ends with connections
  // still open, destroying `io` ends them, and they let go of `state`.
  net::io_context io;
  Server server(io, state);
  try {
    server.Listen(config.address, config.port);
  } catch (const std::exception& error) {
    const std::string message = "Cannot listen on " + config.address + ":" +
                                std::to_string(config.port) + ": " + error.what();
    return Refuse(kCannotStart, message);
  }
  server.Start();

  net::signal_set signals(io, SIGTERM, SIGINT);
  signals.async_wait([&](boost::system::error_code error, int signal) {
    if (error) return;
    LOG(INFO) << "Signal " << signal << ": stopping";
    server.Stop();
    StopWhenQuiet(io, state, std::chrono::steady_clock::now() + kStopGrace);
  });
  net::signal_set hangUp(io, SIGHUP);
  Running running{configPath, config, server, state, *accounts, rateLimiter};
  ReloadOnHangUp(hangUp, running);
  LOG(INFO) << "Serving https://" << config.address << ":" << server.Port()
            << "/redfish/v1 (accounts " << config.accounts << ")";

  const unsigned threads = std::clamp(std::thread::hardware_concurrency(), 1u, 4u);
  std::vector<std::thread> workers;
  for (unsigned i = 1; i < threads; ++i) workers.emplace_back([&io] { io.run(); });
  io.run();
  for (auto& worker : workers) worker.join();
  LOG(INFO) << "Stopped";
  return 0;
}
