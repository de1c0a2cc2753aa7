#include "Server.h"

#include <glog/logging.h>
#include <boost/asio/ip/address.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/strand.hpp>

#include "Connection.h"

namespace zeda::redfish {

namespace net = boost::asio;
using tcp = net::ip::tcp;

Server::Server(net::io_context& io, ServerState& state)
    : io_(io), state_(state), strand_(net::make_strand(io)), acceptor_(strand_) {}

namespace {

tcp::acceptor Bound(const net::strand<net::io_context::executor_type>& strand,
                    const std::string& address, unsigned short port) {
  const tcp::endpoint endpoint(net::ip::make_address(address), port);
  tcp::acceptor acceptor(strand);
  acceptor.open(endpoint.protocol());
  acceptor.set_option(net::socket_base::reuse_address(true));
  acceptor.bind(endpoint);
  acceptor.listen(net::socket_base::max_listen_connections);
  return acceptor;
}

}  // namespace

void Server::Listen(const std::string& address, unsigned short port) {
  acceptor_ = Bound(strand_, address, port);
}

unsigned short Server::Port() const { return acceptor_.local_endpoint().port(); }

void Server::Start() { Accept(); }

void Server::Stop() {
  state_.stopping = true;
  net::post(strand_, [this] {
    boost::system::error_code ignored;
    acceptor_.close(ignored);
  });
}

void Server::Relisten(const std::string& address, unsigned short port,
                      std::function<void(bool moved)> done) {
  net::post(strand_, [this, address, port, done = std::move(done)] {
    boost::system::error_code ignored;
    const tcp::endpoint old = acceptor_.local_endpoint(ignored);
    try {
      tcp::acceptor moved = Bound(strand_, address, port);
      // The accept under way ends with operation_aborted; the next one
      // waits on the new acceptor.
      acceptor_.close(ignored);
      acceptor_ = std::move(moved);
      ++generation_;
      if (!state_.stopping) Accept();
    } catch (const std::exception& error) {
      LOG(ERROR) << "Cannot listen on " << address << ":" << port << ": " << error.what()
                 << "; still listening on " << old;
      done(false);
      return;
    }
    done(true);
  });
}

void Server::Accept() {
  // Runs on strand_ (the acceptor's executor), as its completion does.
  acceptor_.async_accept(
      net::make_strand(io_),
      [this, generation = generation_](boost::system::error_code error, tcp::socket socket) {
        if (error == net::error::operation_aborted || state_.stopping) return;
        const bool current = generation == generation_;
        if (error) {
          LOG(ERROR) << "Cannot accept a connection: " << error.message();
          if (!current) return;
          // Out of descriptors or memory: try again a little later.
          auto timer = std::make_shared<net::steady_timer>(strand_, std::chrono::milliseconds(100));
          timer->async_wait([this, timer](boost::system::error_code) { Accept(); });
          return;
        }
        boost::system::error_code ignored;
        // Replies are written whole or in large pieces: waiting for more to
        // send (Nagle) only delays the last segment of each by up to 40 ms.
        socket.set_option(tcp::no_delay(true), ignored);
        const std::string address = socket.remote_endpoint(ignored).address().to_string();
        if (state_.connections.Take(address)) {
          ServeConnection(std::move(socket), address, state_);
        } else {
          LOG_EVERY_N(WARNING, 100)
              << "Connection of " << address << " refused: too many connections (1 line per 100)";
          socket.close(ignored);
        }
        if (current) Accept();
      });
}

}  // namespace zeda::redfish
