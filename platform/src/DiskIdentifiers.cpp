#include "DiskIdentifiers.h"

#include <algorithm>
#include <cctype>
#include <numeric>
#include <tuple>

namespace zeda::pelka::platform {

namespace {

std::string Property(const UdevProperties& properties, const char* key) {
  const auto it = properties.find(key);
  return it == properties.end() ? "" : it->second;
}

// Whether the digits of a world-wide name after its prefix are all zero.
bool AllZero(const std::string& digits) {
  return digits.find_first_not_of('0') == std::string::npos;
}

std::string UdevWwn(const UdevProperties& udev) {
  for (const char* key : {"ID_WWN_WITH_EXTENSION", "ID_WWN"}) {
    const std::string wwn = Property(udev, key);
    if (wwn.empty()) continue;
    const std::string digits = wwn.rfind("0x", 0) == 0 ? wwn.substr(2) : wwn;
    // An all-zero ID_WWN_WITH_EXTENSION leaves ID_WWN unlikely to be better.
    return AllZero(digits) ? "" : wwn;
  }
  return "";
}

}  // namespace

std::string SanitizedId(const std::string& text) {
  std::string out;
  for (const char c : text) {
    const bool kept =
        std::isalnum(static_cast<unsigned char>(c)) || c == '.' || c == '-' || c == '_' || c == ':';
    out += kept ? c : '_';
  }
  const std::string marker = "DiskExtent";
  for (std::string::size_type at = out.find(marker); at != std::string::npos;
       at = out.find(marker, at)) {
    out.insert(at + 4, "_");
    at += marker.size() + 1;
  }
  return out;
}

std::string WorldWideNameId(const BlockDisk& disk, const UdevProperties& udev) {
  const std::string& wwid = disk.wwid;
  const std::string kernelDigits = wwid.size() > 4 ? wwid.substr(4) : "";
  if (wwid.rfind("naa.", 0) == 0 && !AllZero(kernelDigits))
    return SanitizedId("wwn-0x" + kernelDigits);
  if (wwid.rfind("eui.", 0) == 0 && !AllZero(kernelDigits))
    return SanitizedId("eui-" + kernelDigits);
  const std::string wwn = UdevWwn(udev);
  return wwn.empty() ? "" : SanitizedId("wwn-" + wwn);
}

std::string StableId(const BlockDisk& disk, const UdevProperties& udev,
                     const std::string& interfaceType, const std::string& model,
                     const std::string& serial) {
  if (std::string wwn = WorldWideNameId(disk, udev); !wwn.empty()) return wwn;
  if (!serial.empty()) {
    std::string bus;
    for (const char c : interfaceType.empty() ? std::string("disk") : interfaceType) {
      bus += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return SanitizedId(bus + "-" + (model.empty() ? serial : model + "_" + serial));
  }
  if (!disk.devicePath.empty()) {
    std::string path = disk.devicePath;
    std::replace(path.begin(), path.end(), '/', '-');
    return SanitizedId("path-" + path);
  }
  return SanitizedId("name-" + disk.name);
}

std::vector<std::string> UniqueIds(const std::vector<IdCandidate>& candidates) {
  std::vector<std::size_t> order(candidates.size());
  std::iota(order.begin(), order.end(), 0);
  const auto key = [&candidates](std::size_t i) {
    const IdCandidate& c = candidates[i];
    return std::tie(c.id, c.devicePath, c.name);
  };
  std::sort(order.begin(), order.end(),
            [&key](std::size_t a, std::size_t b) { return key(a) < key(b); });
  std::vector<std::string> ids(candidates.size());
  std::size_t repeat = 0;
  for (std::size_t k = 0; k < order.size(); ++k) {
    const std::string& id = candidates[order[k]].id;
    repeat = (k > 0 && candidates[order[k - 1]].id == id) ? repeat + 1 : 1;
    ids[order[k]] = repeat == 1 ? id : id + "~" + std::to_string(repeat);
  }
  return ids;
}

}  // namespace zeda::pelka::platform
