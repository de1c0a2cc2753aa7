// The HTTPS server: Boost.Beast over Boost.Asio with OpenSSL. Accepts
// connections within the limits of Limits.h, reads requests, hands them to
// HandleRequest (Handler.h) and writes the replies, streaming the pieces of a
// chunked one.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/strand.hpp>

#include "Handler.h"
#include "Limits.h"
#include "RateLimiter.h"

namespace zeda::redfish {

// The TLS context of new connections. A reload of the configuration may
// replace it; each connection keeps the one it started with.
class TlsContextHolder {
 public:
  using Context = std::shared_ptr<boost::asio::ssl::context>;
  TlsContextHolder(Context context) : context_(std::move(context)) {}
  Context Get() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return context_;
  }
  void Set(Context context) {
    const std::lock_guard<std::mutex> lock(mutex_);
    context_.swap(context);
  }

 private:
  mutable std::mutex mutex_;
  Context context_;
};

// What every connection shares.
struct ServerState {
  TlsContextHolder tls;
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
  // Stops accepting; connections end after their current request. Safe
  // from any thread.
  void Stop();
  // Listens on address:port instead, from any thread while serving: the
  // new address is bound before the old one is let go, so a failure leaves
  // the server where it was and is logged (ERROR) with both addresses.
  // `done` receives whether it moved, on a thread of the server.
  void Relisten(const std::string& address, unsigned short port,
                std::function<void(bool moved)> done);

 private:
  void Accept();

  boost::asio::io_context& io_;
  ServerState& state_;
  // The acceptor is only used on this strand once serving.
  boost::asio::strand<boost::asio::io_context::executor_type> strand_;
  boost::asio::ip::tcp::acceptor acceptor_;
  // Counts the acceptors listened on: an accept of an earlier one that
  // completes after a move does not go on accepting.
  std::uint64_t generation_ = 0;
};

}  // namespace zeda::redfish
