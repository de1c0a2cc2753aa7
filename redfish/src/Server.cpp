#include "Server.h"

#include <glog/logging.h>
#include <boost/asio/ip/address.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/strand.hpp>

#include "Connection.h"

namespace zeda::redfish {

namespace net = boost::asio;
using tcp = net::ip::tcp;

Server::Server(net::io_context& io, ServerState& state) : io_(io), state_(state), acceptor_(io) {}

void Server::Listen(const std::string& address, unsigned short port) {
  const tcp::endpoint endpoint(net::ip::make_address(address), port);
  acceptor_.open(endpoint.protocol());
  acceptor_.set_option(net::socket_base::reuse_address(true));
  acceptor_.bind(endpoint);
  acceptor_.listen(net::socket_base::max_listen_connections);
}

unsigned short Server::Port() const { return acceptor_.local_endpoint().port(); }

void Server::Start() { Accept(); }

void Server::Stop() {
  state_.stopping = true;
  boost::system::error_code ignored;
  acceptor_.close(ignored);
}

void Server::Accept() {
  acceptor_.async_accept(
      net::make_strand(io_), [this](boost::system::error_code error, tcp::socket socket) {
        if (error == net::error::operation_aborted || state_.stopping) return;
        if (error) {
          LOG(ERROR) << "Cannot accept a connection: " << error.message();
          // Out of descriptors or memory: try again a little later.
          auto timer = std::make_shared<net::steady_timer>(io_, std::chrono::milliseconds(100));
          timer->async_wait([this, timer](boost::system::error_code) { Accept(); });
          return;
        }
        boost::system::error_code ignored;
        const std::string address = socket.remote_endpoint(ignored).address().to_string();
        if (state_.connections.Take(address)) {
          ServeConnection(std::move(socket), address, state_);
        } else {
          LOG_EVERY_N(WARNING, 100)
              << "Connection of " << address << " refused: too many connections (1 line per 100)";
          socket.close(ignored);
        }
        Accept();
      });
}

}  // namespace zeda::redfish
