// TLS of the service: TLS 1.2 or later with forward-secret AEAD ciphers, the
// configured certificate and key, or a self-signed pair made at first start.
#pragma once

#include <string>

#include <openssl/ssl.h>

#include <boost/asio/ssl/context.hpp>

namespace zeda::redfish {

// Where the self-signed pair lives: <programData>/redfish/server.{crt,key}.
struct CertificatePaths {
  std::string certificate;
  std::string key;
};
CertificatePaths SelfSignedPaths(const std::string& programData);

// Makes a self-signed EC P-256 certificate (CN and DNS name: `hostName`, also
// "localhost" and 127.0.0.1, ::1; ten years) and its key (mode 0600) at
// `paths` unless both files exist. Returns whether it made them. Throws
// std::runtime_error naming the file and the problem.
bool EnsureSelfSigned(const CertificatePaths& paths, const std::string& hostName);

// The service's TLS policy on a server context: TLS 1.2 or later, with TLS 1.2
// only ECDHE with AES-GCM or ChaCha20-Poly1305, server preference, no
// renegotiation. The benchmark of another HTTP library applies it too.
void ApplyTlsPolicy(SSL_CTX* context);

// A server context with that policy and that certificate; throws std::runtime_error
// "Cannot use certificate <file>: <reason>" when OpenSSL refuses it.
boost::asio::ssl::context MakeTlsContext(const CertificatePaths& paths);

}  // namespace zeda::redfish
