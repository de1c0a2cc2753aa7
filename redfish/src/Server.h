// The HTTPS server: Boost.Beast over Boost.Asio with OpenSSL. Accepts
// connections within the limits of Limits.h, reads requests, hands them to
// HandleRequest (Handler.h) and writes the replies, streaming the pieces of a
// chunked one.
#pragma once

#include <atomic>
#include <memory>
#include <string>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/context.hpp>

#include "Handler.h"
#include "Limits.h"
#include "RateLimiter.h"

namespace zeda::redfish {

// What every connection shares.
struct ServerState {
  boost::asio::ssl::context& tls;
  Services& services;
  RateLimiter& rateLimiter;
  ConnectionCounter connections;
  std::atomic<int> busy{0};  // requests being answered
  std::atomic<bool> stopping{false};
};

class Server {
 public:
  Server(boost::asio::io_context& io, ServerState& state);

  // Binds and listens on address:port (SO_REUSEADDR); throws
  // boost::system::system_error when it cannot.
  void Listen(const std::string& address, unsigned short port);
  // The port listened on (the one chosen by the system for port 0).
  unsigned short Port() const;

  // Accepts until Stop().
  void Start();
  // Stops accepting; connections end after their current request.
  void Stop();

 private:
  void Accept();

  boost::asio::io_context& io_;
  ServerState& state_;
  boost::asio::ip::tcp::acceptor acceptor_;
};

}  // namespace zeda::redfish
