#include "Keys.h"

#include <boost/format.hpp>

namespace zeda::pelka {

namespace {

// Formats `Text` with two string arguments. The format text is parsed once
// per thread and the parsed object reused: clear() drops the arguments of the
// previous key and keeps the parsed items. A text that fails to parse throws
// from the constructor on every call, as a fresh boost::format would.
template <const char* Text>
std::string FormatKey(const std::string& first, const std::string& second) {
  thread_local boost::format format(Text);
  format.clear();
  return (format % first % second).str();
}

}  // namespace

std::string SystemName(const std::string& nasName) { return "ZEDA:" + nasName; }

std::string NasNameFromSystemName(const std::string& systemName) {
  const auto colon = systemName.rfind(':');
  return colon == std::string::npos ? systemName : systemName.substr(colon + 1);
}

std::string StripFirstColon(const std::string& id) {
  // Without a colon, find() gives npos: the "before" part is the whole id and
  // the "after" part, starting at npos + 1 == 0, is the whole id again.
  const auto colon = id.find(':');
  return id.substr(0, colon) + id.substr(colon + 1);
}

std::string DiskDeviceId(const std::string& systemName, const std::string& id) {
  return FormatKey<kDiskKeyFormat>(systemName, id);
}

std::string PackageTag(const std::string& systemName, const std::string& id) {
  return FormatKey<kDiskKeyFormat>(systemName, id);
}

std::string ExtentDeviceId(const std::string& systemName, const std::string& id) {
  return FormatKey<kExtentKeyFormat>(systemName, id);
}

std::string SoftwareInstanceId(const std::string& nasName, const std::string& id) {
  return FormatKey<kSoftwareKeyFormat>(nasName, id);
}

std::string SystemSoftwareInstanceId(const std::string& systemName, const std::string& id) {
  return FormatKey<kSystemSoftwareKeyFormat>(systemName, id);
}

}  // namespace zeda::pelka
