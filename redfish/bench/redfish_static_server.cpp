// The cost floor of the Redfish service: the same HTTPS server (TLS, limits,
// headers, HandleRequest) answering GET /redfish/v1 with the bytes of a file
// read once, so `wrk` can compare a resource of the inventory with a static
// answer of the same size.
//
//   redfish_static_server --port PORT --file BODY --program-data DIR
//
// DIR receives (or holds) the self-signed pair, as the daemon's programData.
#include <csignal>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <glog/logging.h>
#include <boost/asio/io_context.hpp>
#include <boost/asio/signal_set.hpp>

#include "AccountStore.h"
#include "Server.h"
#include "Sessions.h"
#include "TlsSetup.h"

int main(int argc, char** argv) {
  using namespace zeda::redfish;
  std::string port, file, programData;
  for (int i = 1; i + 1 < argc; i += 2) {
    const std::string option = argv[i];
    if (option == "--port") port = argv[i + 1];
    if (option == "--file") file = argv[i + 1];
    if (option == "--program-data") programData = argv[i + 1];
  }
  if (port.empty() || file.empty() || programData.empty()) {
    std::cerr << "usage: redfish_static_server --port PORT --file BODY --program-data DIR\n";
    return 2;
  }
  std::ifstream in(file, std::ios::binary);
  if (!in) {
    std::cerr << "redfish_static_server: cannot read " << file << "\n";
    return 2;
  }
  std::ostringstream text;
  text << in.rdbuf();
  const std::string body = text.str();

  FLAGS_logtostderr = true;
  google::InitGoogleLogging("redfish_static_server");
  std::signal(SIGPIPE, SIG_IGN);
  try {
    const CertificatePaths paths = SelfSignedPaths(programData);
    EnsureSelfSigned(paths, "localhost");
    auto tls = std::make_shared<boost::asio::ssl::context>(MakeTlsContext(paths));
    AccountStore accounts(programData + "/no-accounts");
    SessionStore sessions;
    RateLimiter unlimited(0);
    Services services{accounts, sessions, [](std::string_view) { return Reply(); },
                      [&body] { return body; }};
    ServerState state{tls, services, unlimited, {}, {0}, {false}};
    // After what connections use: destroying it ends the open ones.
    boost::asio::io_context io;
    Server server(io, state);
    server.Listen("127.0.0.1", static_cast<unsigned short>(std::stoi(port)));
    server.Start();
    boost::asio::signal_set signals(io, SIGTERM, SIGINT);
    signals.async_wait([&](boost::system::error_code, int) { io.stop(); });
    std::vector<std::thread> workers;
    for (unsigned i = 1; i < std::max(1u, std::thread::hardware_concurrency()); ++i) {
      workers.emplace_back([&io] { io.run(); });
    }
    io.run();
    for (auto& worker : workers) worker.join();
  } catch (const std::exception& error) {
    std::cerr << "redfish_static_server: " << error.what() << "\n";
    return 1;
  }
  return 0;
}
