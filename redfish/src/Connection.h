// One client connection: TLS handshake, then requests one after the other
// (keep-alive) until the client closes, a limit is hit or the server stops.
#pragma once

#include <boost/asio/ip/tcp.hpp>

#include "Server.h"

namespace zeda::redfish {

// Starts serving `socket`, which holds a place in state.connections for
// `address` (given back when the connection ends).
void ServeConnection(boost::asio::ip::tcp::socket socket, std::string address, ServerState& state);

}  // namespace zeda::redfish
