// redfish_static_server's twin on cpp-httplib (Debian's libcpp-httplib-dev),
// so the two HTTP libraries can be compared on the same answer: GET
// /redfish/v1 with the bytes of a file read once, over HTTPS with the same
// self-signed pair, the same TLS policy and the service's reply headers.
//
//   httplib_static_server --port PORT --file BODY --program-data DIR [--threads N]
//                         [--tcp-nodelay on|off]
//
// cpp-httplib serves each connection from one thread of a fixed pool for the
// connection's whole life; N is that pool (default: the library's own,
// max(8, cores - 1)). Keep-alive without a request cap, 30 s idle, 10 s per
// read and 30 s per write, as close to the service's limits as the library
// goes (its timeouts bound each read, not a whole header). TCP_NODELAY is on
// unless told off: the library writes a reply's header and body apart, and
// with Nagle's algorithm each keep-alive request then waits for the client's
// delayed ACK (about 40 ms on Linux).
#include <pthread.h>
#include <signal.h>

#include <csignal>
#include <cstddef>
#include <fstream>
#include <iostream>
#include <limits>
#include <sstream>
#include <string>
#include <thread>

#include <httplib.h>

#include "TlsSetup.h"

namespace {

struct Options {
  std::string port;
  std::string file;
  std::string programData;
  std::size_t threads = 0;  // 0: the library's default pool
  bool noDelay = true;
};

Options ParseOptions(int argc, char** argv) {
  Options options;
  for (int i = 1; i + 1 < argc; i += 2) {
    const std::string option = argv[i];
    const std::string value = argv[i + 1];
    if (option == "--port") options.port = value;
    if (option == "--file") options.file = value;
    if (option == "--program-data") options.programData = value;
    if (option == "--threads") options.threads = std::stoul(value);
    if (option == "--tcp-nodelay") options.noDelay = value != "off";
  }
  return options;
}

}  // namespace

int main(int argc, char** argv) {
  using namespace zeda::redfish;
  const Options options = ParseOptions(argc, argv);
  if (options.port.empty() || options.file.empty() || options.programData.empty()) {
    std::cerr << "usage: httplib_static_server --port PORT --file BODY --program-data DIR"
                 " [--threads N] [--tcp-nodelay on|off]\n";
    return 2;
  }
  std::ifstream in(options.file, std::ios::binary);
  if (!in) {
    std::cerr << "httplib_static_server: cannot read " << options.file << "\n";
    return 2;
  }
  std::ostringstream text;
  text << in.rdbuf();
  const std::string body = text.str();

  // SIGTERM and SIGINT are taken by a thread of their own (below), which
  // stops the server; every other thread inherits the blocked set.
  sigset_t stopSignals;
  sigemptyset(&stopSignals);
  sigaddset(&stopSignals, SIGTERM);
  sigaddset(&stopSignals, SIGINT);
  pthread_sigmask(SIG_BLOCK, &stopSignals, nullptr);
  std::signal(SIGPIPE, SIG_IGN);

  try {
    const CertificatePaths paths = SelfSignedPaths(options.programData);
    EnsureSelfSigned(paths, "localhost");
    httplib::SSLServer server(paths.certificate.c_str(), paths.key.c_str());
    if (!server.is_valid()) {
      std::cerr << "httplib_static_server: cannot use " << paths.certificate << "\n";
      return 1;
    }
    ApplyTlsPolicy(server.ssl_context());
    if (options.threads > 0) {
      const std::size_t threads = options.threads;
      server.new_task_queue = [threads] { return new httplib::ThreadPool(threads); };
    }
    server.set_tcp_nodelay(options.noDelay);
    server.set_keep_alive_max_count(std::numeric_limits<std::size_t>::max());
    server.set_keep_alive_timeout(30);
    server.set_read_timeout(10);
    server.set_write_timeout(30);
    server.set_payload_max_length(64 * 1024);
    server.set_default_headers({{"OData-Version", "4.0"},
                                {"Cache-Control", "no-store"},
                                {"X-Content-Type-Options", "nosniff"},
                                {"X-Frame-Options", "DENY"},
                                {"Content-Security-Policy", "default-src 'none'"},
                                {"Strict-Transport-Security", "max-age=31536000"}});
    server.Get("/redfish/v1", [&body](const httplib::Request&, httplib::Response& response) {
      response.set_content(body, "application/json;charset=utf-8");
    });

    std::thread stopper([&server, stopSignals] {
      int signal = 0;
      sigwait(&stopSignals, &signal);
      server.stop();
    });
    const bool listened = server.listen("127.0.0.1", std::stoi(options.port));
    if (!listened) {
      std::cerr << "httplib_static_server: cannot listen on 127.0.0.1:" << options.port << "\n";
      // Wake the signal thread so that it can be joined.
      pthread_kill(stopper.native_handle(), SIGTERM);
    }
    stopper.join();
    return listened ? 0 : 1;
  } catch (const std::exception& error) {
    std::cerr << "httplib_static_server: " << error.what() << "\n";
    return 1;
  }
}
