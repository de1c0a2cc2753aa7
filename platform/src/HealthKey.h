// The key the NAS API files a disk's health under.
#pragma once

#include <string>

namespace zeda::pelka {

// The disk identifier without its first ":" ("0:3" gives "03"); an
// identifier without ":" gives itself twice ("7" gives "77"). Callers of
// GetDiskHealth form the same key from the same identifier, so the NAS API
// keeps this rule of its own rather than borrowing the module's helpers.
inline std::string HealthKeyOf(const std::string& id) {
  const std::string::size_type colon = id.find(':');
  return id.substr(0, colon) + id.substr(colon + 1);
}

}  // namespace zeda::pelka
