#include "Auth.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>

#include <vector>

namespace zeda::redfish {

namespace {

bool StartsWithNoCase(std::string_view text, std::string_view prefix) {
  if (text.size() < prefix.size()) return false;
  for (std::size_t i = 0; i < prefix.size(); ++i) {
    const char a = text[i] >= 'A' && text[i] <= 'Z' ? static_cast<char>(text[i] + 32) : text[i];
    if (a != prefix[i]) return false;
  }
  return true;
}

std::optional<std::string> DecodeBase64(std::string_view text) {
  if (text.empty() || text.size() % 4 != 0) return std::nullopt;
  std::vector<unsigned char> out(text.size() / 4 * 3 + 1);
  const int length =
      EVP_DecodeBlock(out.data(), reinterpret_cast<const unsigned char*>(text.data()),
                      static_cast<int>(text.size()));
  if (length < 0) return std::nullopt;
  std::size_t padding = 0;
  if (text.back() == '=') ++padding;
  if (text.size() >= 2 && text[text.size() - 2] == '=') ++padding;
  if (static_cast<std::size_t>(length) < padding) return std::nullopt;
  std::string decoded(reinterpret_cast<const char*>(out.data()),
                      static_cast<std::size_t>(length) - padding);
  OPENSSL_cleanse(out.data(), out.size());
  return decoded;
}

}  // namespace

std::optional<Credentials> ParseBasic(std::string_view authorization) {
  if (authorization.size() > kMaxCredentialLength || !StartsWithNoCase(authorization, "basic ")) {
    return std::nullopt;
  }
  std::string_view encoded = authorization.substr(6);
  while (!encoded.empty() && encoded.front() == ' ') encoded.remove_prefix(1);
  while (!encoded.empty() && encoded.back() == ' ') encoded.remove_suffix(1);
  std::optional<std::string> decoded = DecodeBase64(encoded);
  if (!decoded) return std::nullopt;
  const auto colon = decoded->find(':');
  if (colon == std::string::npos) return std::nullopt;
  Credentials credentials{decoded->substr(0, colon), decoded->substr(colon + 1)};
  OPENSSL_cleanse(decoded->data(), decoded->size());
  return credentials;
}

AuthResult Authenticate(std::string_view authorization, std::string_view token,
                        AccountStore& accounts, SessionStore& sessions) {
  AuthResult result;
  if (!token.empty()) {
    result.how = "session token";
    const std::optional<SessionInfo> session =
        token.size() <= kMaxCredentialLength ? sessions.Find(std::string(token)) : std::nullopt;
    if (!session) {
      result.outcome = AuthResult::kRefused;
      return result;
    }
    result.outcome = AuthResult::kAccepted;
    result.user = session->user;
    result.sessionId = session->id;
    return result;
  }
  if (authorization.empty()) return result;
  result.how = "Basic";
  std::optional<Credentials> credentials = ParseBasic(authorization);
  if (!credentials) {
    result.outcome = AuthResult::kRefused;
    return result;
  }
  result.user = credentials->user;
  const bool good = IsValidAccountName(credentials->user) &&
                    accounts.Verify(credentials->user, credentials->password);
  OPENSSL_cleanse(credentials->password.data(), credentials->password.size());
  result.outcome = good ? AuthResult::kAccepted : AuthResult::kRefused;
  return result;
}

}  // namespace zeda::redfish
