#include "providers/common/TextOps.h"

#include <stdexcept>

namespace zeda::pelka::text {

std::string Substr(const std::string& s, std::size_t pos, std::size_t count) {
  if (pos > s.size()) {
    // std::exception: answered as 200 (CMPI_RC_ERROR) with this text.
    throw std::out_of_range("invalid string position");
  }
  return s.substr(pos, count);
}

std::string TextAfterLast(const std::string& s, const std::string& marker) {
  // Unsigned wrap-around is intended when rfind answers npos.
  return Substr(s, s.rfind(marker) + marker.size());
}

int Stoi(const std::string& s) {
  try {
    return std::stoi(s);
  } catch (const std::invalid_argument&) {
    // std::exception: answered as 200 (CMPI_RC_ERROR) with this text.
    throw std::invalid_argument("invalid stoi argument");
  } catch (const std::out_of_range&) {
    // std::exception: answered as 200 (CMPI_RC_ERROR) with this text.
    throw std::out_of_range("stoi argument out of range");
  }
}

}  // namespace zeda::pelka::text
