// String operations whose failures are part of the module's answers. The
// object managers this module was first deployed with report an out-of-range
// position as "invalid string position" and a failed integer parse as
// "invalid stoi argument" / "stoi argument out of range"; clients see these
// texts as status messages (code 200, like every standard exception), so they
// are reproduced here on every platform.
#ifndef ZEDA_PELKA_TEXTOPS_H
#define ZEDA_PELKA_TEXTOPS_H

#include <cstddef>
#include <string>

namespace zeda::pelka::text {

// std::string::substr; a `pos` past the end throws std::out_of_range
// "invalid string position". `count` is capped at the remaining length.
std::string Substr(const std::string& s, std::size_t pos, std::size_t count = std::string::npos);

// The text after the last occurrence of `marker`. When `marker` does not occur
// the start position is npos + marker.size(), which wraps around to
// marker.size() - 1: the value less its first (size - 1) characters. Clients
// rely on this arithmetic, so it is kept.
std::string TextAfterLast(const std::string& s, const std::string& marker);

// std::stoi (base 10, leading blanks and sign allowed, trailing text ignored)
// with the messages "invalid stoi argument" and "stoi argument out of range".
int Stoi(const std::string& s);

}  // namespace zeda::pelka::text

#endif
