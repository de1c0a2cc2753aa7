#include "TlsSetup.h"

#include <fcntl.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/rand.h>
#include <openssl/ssl.h>
#include <openssl/x509.h>
#include <openssl/x509v3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <stdexcept>

namespace zeda::redfish {

namespace {

constexpr long kValiditySeconds = 10L * 365 * 24 * 3600;

template <typename T, void (*Free)(T*)>
struct Deleter {
  void operator()(T* pointer) const { Free(pointer); }
};
using KeyPtr = std::unique_ptr<EVP_PKEY, Deleter<EVP_PKEY, EVP_PKEY_free>>;
using X509Ptr = std::unique_ptr<X509, Deleter<X509, X509_free>>;
using ExtensionPtr = std::unique_ptr<X509_EXTENSION, Deleter<X509_EXTENSION, X509_EXTENSION_free>>;

// The first queued OpenSSL error as text (and the queue emptied).
std::string OpenSslError() {
  const unsigned long code = ERR_get_error();
  ERR_clear_error();
  if (code == 0) return "unknown OpenSSL error";
  char text[256];
  ERR_error_string_n(code, text, sizeof text);
  return text;
}

[[noreturn]] void Fail(const std::string& what) {
  throw std::runtime_error(what + ": " + OpenSslError());
}

void AddExtension(X509* certificate, int nid, const std::string& value) {
  X509V3_CTX context;
  X509V3_set_ctx_nodb(&context);
  X509V3_set_ctx(&context, certificate, certificate, nullptr, nullptr, 0);
  const ExtensionPtr extension(X509V3_EXT_conf_nid(nullptr, &context, nid, value.c_str()));
  if (!extension || X509_add_ext(certificate, extension.get(), -1) != 1) {
    Fail("Cannot add a certificate extension");
  }
}

X509Ptr MakeCertificate(EVP_PKEY* key, const std::string& hostName) {
  X509Ptr certificate(X509_new());
  if (!certificate) Fail("Cannot make a certificate");
  X509_set_version(certificate.get(), 2);
  unsigned char serial[16];
  if (RAND_bytes(serial, sizeof serial) != 1) Fail("Cannot make a serial number");
  serial[0] &= 0x7f;  // a positive number
  BIGNUM* number = BN_bin2bn(serial, sizeof serial, nullptr);
  if (number == nullptr ||
      BN_to_ASN1_INTEGER(number, X509_get_serialNumber(certificate.get())) == nullptr) {
    BN_free(number);
    Fail("Cannot set the serial number");
  }
  BN_free(number);
  X509_gmtime_adj(X509_getm_notBefore(certificate.get()), 0);
  X509_gmtime_adj(X509_getm_notAfter(certificate.get()), kValiditySeconds);
  X509_set_pubkey(certificate.get(), key);
  X509_NAME* name = X509_get_subject_name(certificate.get());
  X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_UTF8,
                             reinterpret_cast<const unsigned char*>(hostName.c_str()), -1, -1, 0);
  X509_set_issuer_name(certificate.get(), name);
  AddExtension(certificate.get(), NID_basic_constraints, "critical,CA:FALSE");
  AddExtension(certificate.get(), NID_key_usage, "critical,digitalSignature");
  AddExtension(certificate.get(), NID_ext_key_usage, "serverAuth");
  std::string names = "DNS:" + hostName;
  if (hostName != "localhost") names += ",DNS:localhost";
  AddExtension(certificate.get(), NID_subject_alt_name, names + ",IP:127.0.0.1,IP:::1");
  if (X509_sign(certificate.get(), key, EVP_sha256()) == 0) Fail("Cannot sign the certificate");
  return certificate;
}

// Writes PEM text through `write` into `path`, made afresh with `mode`
// (a temporary file renamed over it).
template <typename Write>
void WritePem(const std::string& path, mode_t mode, Write write) {
  const std::string temporary = path + ".new";
  ::unlink(temporary.c_str());
  const int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
  if (fd < 0) throw std::runtime_error("Cannot write " + temporary + ": " + std::strerror(errno));
  FILE* file = ::fdopen(fd, "w");
  if (file == nullptr) {
    ::close(fd);
    throw std::runtime_error("Cannot write " + temporary + ": " + std::strerror(errno));
  }
  const bool written = write(file) == 1;
  const bool flushed = std::fflush(file) == 0 && ::fsync(fd) == 0;
  std::fclose(file);
  if (!written || !flushed || ::rename(temporary.c_str(), path.c_str()) != 0) {
    ::unlink(temporary.c_str());
    throw std::runtime_error("Cannot write " + path + ": " +
                             (written ? std::strerror(errno) : OpenSslError()));
  }
}

}  // namespace

CertificatePaths SelfSignedPaths(const std::string& programData) {
  const std::string folder = programData + "/redfish";
  return {folder + "/server.crt", folder + "/server.key"};
}

bool EnsureSelfSigned(const CertificatePaths& paths, const std::string& hostName) {
  namespace fs = std::filesystem;
  std::error_code error;
  if (fs::exists(paths.certificate, error) && fs::exists(paths.key, error)) return false;
  const fs::path folder = fs::path(paths.key).parent_path();
  fs::create_directories(folder, error);
  if (error) {
    throw std::runtime_error("Cannot make folder " + folder.string() + ": " + error.message());
  }
  const KeyPtr key(EVP_EC_gen("P-256"));
  if (!key) Fail("Cannot make an EC P-256 key");
  const X509Ptr certificate = MakeCertificate(key.get(), hostName);
  WritePem(paths.key, S_IRUSR | S_IWUSR, [&](FILE* file) {
    return PEM_write_PrivateKey(file, key.get(), nullptr, nullptr, 0, nullptr, nullptr);
  });
  WritePem(paths.certificate, S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH,
           [&](FILE* file) { return PEM_write_X509(file, certificate.get()); });
  return true;
}

void ApplyTlsPolicy(SSL_CTX* context) {
  SSL_CTX_set_min_proto_version(context, TLS1_2_VERSION);
  // TLS 1.2: forward secrecy and authenticated encryption only (TLS 1.3's
  // suites are all of that kind).
  SSL_CTX_set_cipher_list(context,
                          "ECDHE-ECDSA-AES128-GCM-SHA256:ECDHE-RSA-AES128-GCM-SHA256:"
                          "ECDHE-ECDSA-AES256-GCM-SHA384:ECDHE-RSA-AES256-GCM-SHA384:"
                          "ECDHE-ECDSA-CHACHA20-POLY1305:ECDHE-RSA-CHACHA20-POLY1305");
  SSL_CTX_set_options(context, SSL_OP_NO_RENEGOTIATION | SSL_OP_CIPHER_SERVER_PREFERENCE);
}

boost::asio::ssl::context MakeTlsContext(const CertificatePaths& paths) {
  namespace ssl = boost::asio::ssl;
  ssl::context context(ssl::context::tls_server);
  context.set_options(ssl::context::default_workarounds | ssl::context::no_sslv2 |
                      ssl::context::no_sslv3 | ssl::context::no_tlsv1 | ssl::context::no_tlsv1_1 |
                      ssl::context::single_dh_use);
  SSL_CTX* native = context.native_handle();
  ApplyTlsPolicy(native);
  if (SSL_CTX_use_certificate_chain_file(native, paths.certificate.c_str()) != 1) {
    Fail("Cannot use certificate " + paths.certificate);
  }
  if (SSL_CTX_use_PrivateKey_file(native, paths.key.c_str(), SSL_FILETYPE_PEM) != 1) {
    Fail("Cannot use key " + paths.key);
  }
  if (SSL_CTX_check_private_key(native) != 1) {
    Fail("Cannot use key " + paths.key + " with certificate " + paths.certificate);
  }
  return context;
}

}  // namespace zeda::redfish
