#include "Connection.h"

#include <memory>
#include <optional>
#include <string>

#include <glog/logging.h>
#include <boost/asio/ssl/error.hpp>
#include <boost/asio/ssl/stream_base.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/ssl/ssl_stream.hpp>

#include "inventory/Library.h"

namespace zeda::redfish {

namespace {

namespace beast = boost::beast;
namespace http = beast::http;
namespace net = boost::asio;
namespace ssl = net::ssl;
using tcp = net::ip::tcp;

// Bytes asked for at once while waiting for a request, and the size a
// streamed reply gathers before it is written (one TLS record).
constexpr std::size_t kReadSize = 4096;
constexpr std::size_t kPieceBytes = 16 * 1024;
constexpr std::chrono::seconds kShutdownTimeout{5};

// Counts a request as being answered while it lives.
class BusyMark {
 public:
  explicit BusyMark(std::atomic<int>& busy) : busy_(busy) { ++busy_; }
  ~BusyMark() { --busy_; }
  BusyMark(const BusyMark&) = delete;
  BusyMark& operator=(const BusyMark&) = delete;

 private:
  std::atomic<int>& busy_;
};

bool IsQuietEnd(const beast::error_code& error) {
  return error == http::error::end_of_stream || error == http::error::partial_message ||
         error == net::error::eof || error == net::error::connection_reset ||
         error == net::error::operation_aborted || error == ssl::error::stream_truncated;
}

bool SameNoCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (std::tolower(static_cast<unsigned char>(a[i])) !=
        std::tolower(static_cast<unsigned char>(b[i]))) {
      return false;
    }
  }
  return true;
}

// The headers every reply carries, then the reply's own.
template <typename Fields>
void SetHeaders(Fields& fields, const Reply& reply) {
  if (reply.status != 204) {
    std::string type = "application/json;charset=utf-8";
    if (!reply.body.empty() && reply.body[0] == '<') type = "application/xml;charset=utf-8";
    for (const auto& [name, value] : reply.headers) {
      if (SameNoCase(name, "Content-Type")) type = value;
    }
    fields.set(http::field::content_type, type);
  }
  fields.set("OData-Version", "4.0");
  fields.set(http::field::cache_control, "no-store");
  fields.set("X-Content-Type-Options", "nosniff");
  fields.set("X-Frame-Options", "DENY");
  fields.set("Content-Security-Policy", "default-src 'none'");
  fields.set("Strict-Transport-Security", "max-age=31536000");
  for (const auto& [name, value] : reply.headers) {
    if (!SameNoCase(name, "Content-Type")) fields.set(name, value);
  }
}

class Connection : public std::enable_shared_from_this<Connection> {
 public:
  Connection(tcp::socket socket, std::string address, ServerState& state)
      : tls_(state.tls.Get()),
        stream_(std::move(socket), *tls_),
        address_(std::move(address)),
        state_(state) {}
  ~Connection() { state_.connections.Give(address_); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  void Start() {
    Lowest().expires_after(kHandshakeTimeout);
    stream_.async_handshake(
        ssl::stream_base::server,
        beast::bind_front_handler(&Connection::OnHandshake, shared_from_this()));
  }

 private:
  beast::tcp_stream& Lowest() { return beast::get_lowest_layer(stream_); }

  void OnHandshake(beast::error_code error) {
    if (error) return Dropped("during the TLS handshake", error, kHandshakeTimeout);
    WaitForRequest();
  }

  // Waits up to kIdleTimeout for the first byte of the next request.
  void WaitForRequest() {
    if (state_.stopping) return Close();
    if (buffer_.size() > 0) return ReadHeader();
    Lowest().expires_after(kIdleTimeout);
    stream_.async_read_some(
        buffer_.prepare(kReadSize),
        beast::bind_front_handler(&Connection::OnFirstBytes, shared_from_this()));
  }

  void OnFirstBytes(beast::error_code error, std::size_t bytes) {
    // An idle keep-alive connection running out of time is ordinary: no log line.
    if (error == beast::error::timeout) return;
    if (error) return Dropped("while idle", error, kIdleTimeout);
    buffer_.commit(bytes);
    ReadHeader();
  }

  // The whole header must come within kHeaderTimeout of its first byte.
  void ReadHeader() {
    parser_.emplace();
    parser_->header_limit(static_cast<std::uint32_t>(kMaxHeaderBytes));
    parser_->body_limit(kMaxBodyBytes);
    Lowest().expires_after(kHeaderTimeout);
    http::async_read_header(stream_, buffer_, *parser_,
                            beast::bind_front_handler(&Connection::OnHeader, shared_from_this()));
  }

  void OnHeader(beast::error_code error, std::size_t) {
    if (error) return OnReadError(error, kHeaderTimeout);
    if (parser_->is_done()) return Process();
    Lowest().expires_after(kBodyTimeout);
    http::async_read(stream_, buffer_, *parser_,
                     beast::bind_front_handler(&Connection::OnBody, shared_from_this()));
  }

  void OnBody(beast::error_code error, std::size_t) {
    if (error) return OnReadError(error, kBodyTimeout);
    Process();
  }

  void OnReadError(const beast::error_code& error, std::chrono::seconds timeout) {
    if (error == http::error::header_limit || error == http::error::buffer_overflow) {
      LOG(WARNING) << "Request of " << address_ << " refused: header over " << kMaxHeaderBytes
                   << " bytes (431)";
      return Refuse(431);
    }
    if (error == http::error::body_limit) {
      LOG(WARNING) << "Request of " << address_ << " refused: body over " << kMaxBodyBytes
                   << " bytes (413)";
      return Refuse(413);
    }
    if (error == beast::error::timeout || IsQuietEnd(error)) {
      return Dropped(timeout == kHeaderTimeout ? "while reading a request header"
                                               : "while reading a request body",
                     error, timeout);
    }
    LOG(WARNING) << "Request of " << address_ << " refused: " << error.message() << " (400)";
    Refuse(400);
  }

  // Answers a request that could not be read, then closes.
  void Refuse(int status) {
    keepAlive_ = false;
    head_ = false;
    version_ = 11;
    busy_.emplace(state_.busy);
    Write(ErrorReply(status, "GeneralError", {}));
  }

  void Dropped(const char* when, const beast::error_code& error, std::chrono::seconds timeout) {
    if (error == beast::error::timeout) {
      LOG(WARNING) << "Connection of " << address_ << " dropped " << when << ": not done within "
                   << timeout.count() << " s";
    } else if (!IsQuietEnd(error)) {
      LOG(WARNING) << "Connection of " << address_ << " dropped " << when << ": "
                   << error.message();
    }
  }

  void Process() {
    busy_.emplace(state_.busy);
    http::request<http::string_body> request = parser_->release();
    parser_.reset();
    version_ = request.version();
    keepAlive_ = request.keep_alive() && !state_.stopping;
    head_ = request.method() == http::verb::head;
    if (const int retry = state_.rateLimiter.Admit(address_); retry > 0) {
      LOG_EVERY_N(WARNING, 100) << "Requests of " << address_
                                << " over the rate limit (429; 1 line per 100)";
      Reply reply = ErrorReply(429, "ServiceTemporarilyUnavailable", {std::to_string(retry)});
      reply.headers.emplace_back("Retry-After", std::to_string(retry));
      return Write(std::move(reply));
    }
    Request handled;
    handled.method = std::string(request.method_string());
    handled.target = std::string(request.target());
    handled.authorization = std::string(request[http::field::authorization]);
    handled.authToken = std::string(request["X-Auth-Token"]);
    handled.body = std::move(request.body());
    handled.clientAddress = address_;
    const zeda::pelka::InventoryHold hold;
    Write(HandleRequest(handled, state_.services));
  }

  void Write(Reply reply) {
    reply_ = std::move(reply);
    if (reply_.chunks && !head_) return WriteStreamed();
    auto response = std::make_shared<http::response<http::string_body>>(
        static_cast<http::status>(reply_.status), version_);
    SetHeaders(*response, reply_);
    response->keep_alive(keepAlive_);
    if (reply_.status != 204 && !reply_.chunks) {
      response->content_length(reply_.body.size());
      if (!head_) response->body() = std::move(reply_.body);
    }
    Lowest().expires_after(kWriteTimeout);
    http::async_write(stream_, *response,
                      [self = shared_from_this(), response](beast::error_code error, std::size_t) {
                        self->OnWritten(error);
                      });
  }

  void WriteStreamed() {
    streamed_ = std::make_unique<http::response<http::buffer_body>>(
        static_cast<http::status>(reply_.status), version_);
    SetHeaders(*streamed_, reply_);
    streamed_->keep_alive(keepAlive_);
    streamed_->chunked(true);
    streamed_->body().data = nullptr;
    streamed_->body().more = true;
    serializer_ = std::make_unique<http::response_serializer<http::buffer_body>>(*streamed_);
    Lowest().expires_after(kWriteTimeout);
    http::async_write_header(
        stream_, *serializer_,
        beast::bind_front_handler(&Connection::OnPieceWritten, shared_from_this()));
  }

  // Gathers the next kPieceBytes of a streamed reply and writes them.
  void WriteNextPiece() {
    piece_.clear();
    bool more = true;
    try {
      const zeda::pelka::InventoryHold hold;
      while (more && piece_.size() < kPieceBytes) more = reply_.chunks(piece_);
    } catch (const std::exception& error) {
      // The status line is out: all that can be done is to end the connection
      // before the last chunk, which tells the client the reply is cut short.
      LOG(ERROR) << "Streamed reply to " << address_ << " failed: " << error.what();
      return;
    }
    streamed_->body().data = piece_.empty() ? nullptr : piece_.data();
    streamed_->body().size = piece_.size();
    streamed_->body().more = more;
    Lowest().expires_after(kWriteTimeout);
    http::async_write(stream_, *serializer_,
                      beast::bind_front_handler(&Connection::OnPieceWritten, shared_from_this()));
  }

  void OnPieceWritten(beast::error_code error, std::size_t) {
    if (error == http::error::need_buffer) error = {};
    if (error) return OnWritten(error);
    if (serializer_->is_done()) return OnWritten(error);
    WriteNextPiece();
  }

  void OnWritten(const beast::error_code& error) {
    busy_.reset();
    serializer_.reset();
    streamed_.reset();
    reply_ = Reply();
    if (error) return Dropped("while writing a reply", error, kWriteTimeout);
    if (!keepAlive_) return Close();
    WaitForRequest();
  }

  void Close() {
    Lowest().expires_after(kShutdownTimeout);
    stream_.async_shutdown([self = shared_from_this()](beast::error_code) {
      beast::error_code ignored;
      self->Lowest().socket().shutdown(tcp::socket::shutdown_both, ignored);
    });
  }

  // The context the connection started with, kept while a reload may
  // replace the server's.
  const std::shared_ptr<ssl::context> tls_;
  beast::ssl_stream<beast::tcp_stream> stream_;
  const std::string address_;
  ServerState& state_;
  beast::flat_buffer buffer_{kMaxHeaderBytes + kMaxBodyBytes + kReadSize};
  std::optional<http::request_parser<http::string_body>> parser_;
  std::optional<BusyMark> busy_;
  Reply reply_;
  unsigned version_ = 11;
  bool keepAlive_ = false;
  bool head_ = false;
  std::unique_ptr<http::response<http::buffer_body>> streamed_;
  std::unique_ptr<http::response_serializer<http::buffer_body>> serializer_;
  std::string piece_;
};

}  // namespace

void ServeConnection(tcp::socket socket, std::string address, ServerState& state) {
  std::make_shared<Connection>(std::move(socket), std::move(address), state)->Start();
}

}  // namespace zeda::redfish
