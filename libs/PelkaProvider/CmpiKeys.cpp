#include "CmpiKeys.h"

#include <cmpi/CmpiObjectPath.h>

namespace zeda::pelka::cmpi {

namespace {

std::string Text(const CmpiString& value) {
  const char* chars = value.charPtr();
  return chars != nullptr ? chars : "";
}

}  // namespace

std::string GetString(const CmpiObjectPath& path, const char* key) {
  // getKey throws CmpiStatus when the key is absent, the conversion when the
  // key holds no string; both pass to the caller.
  const CmpiString value = path.getKey(key);
  return Text(value);
}

std::string GetClassName(const CmpiObjectPath& path) { return Text(path.getClassName()); }

}  // namespace zeda::pelka::cmpi
