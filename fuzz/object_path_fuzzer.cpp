// libFuzzer harness of the object-path parser (zeda-cim's PATH argument).
// Any input either parses or is refused with UriError; a parsed path printed
// and parsed again prints the same text (printing is a fixed point).
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "zeda/host/wbem_uri.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  zeda::host::ObjectPath path;
  try {
    path = zeda::host::parseObjectPath(text);
  } catch (const zeda::host::UriError&) {
    return 0;
  }
  const std::string printed = zeda::host::formatObjectPath(path);
  const std::string reprinted =
      zeda::host::formatObjectPath(zeda::host::parseObjectPath(printed, path.nameSpace()));
  if (printed != reprinted) std::abort();
  return 0;
}
