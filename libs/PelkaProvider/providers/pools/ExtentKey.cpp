#include "providers/pools/ExtentKey.h"

#include <locale>

#include <boost/algorithm/string/predicate.hpp>

#include "inventory/Keys.h"
#include "providers/common/TextOps.h"
#include "providers/pools/ClassifyDisk.h"

namespace zeda::pelka {

ExtentKeyParts ParseExtentKey(const std::string& systemName, const std::string& deviceId) {
  ExtentKeyParts parts;
  parts.nasName = NasNameFromSystemName(systemName);
  parts.diskId = text::TextAfterLast(deviceId, "DiskExtent");
  return parts;
}

int PoolOfDisk(const zeda::orvi::OrviDiskList& diskList, const std::string& diskId) {
  int pool = 0;
  const std::locale locale;  // the global locale
  for (const zeda::orvi::OrviDisk& disk : diskList.disks) {
    if (boost::algorithm::iequals(disk.id, diskId, locale)) {
      const int found = ClassifyDisk(disk, diskList.groups);
      if (found != 0) {
        pool = found;
      }
    }
  }
  return pool;
}

}  // namespace zeda::pelka
