#include "providers/pools/ExtentKey.h"

#include "providers/common/Keys.h"
#include "providers/common/TextOps.h"

namespace zeda::pelka {

ExtentKeyParts ParseExtentKey(const std::string& systemName, const std::string& deviceId) {
  ExtentKeyParts parts;
  parts.nasName = NasNameFromSystemName(systemName);
  parts.diskId = text::TextAfterLast(deviceId, "DiskExtent");
  return parts;
}

}  // namespace zeda::pelka
