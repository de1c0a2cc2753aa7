#include "NasOrvi.h"

#include <stdexcept>

#include "CallTrace.h"
#include "inventory/Keys.h"

namespace zeda::pelka::platform {

namespace {

char AsciiLower(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

bool AsciiEqualIgnoringCase(const std::string& a, const std::string& b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (AsciiLower(a[i]) != AsciiLower(b[i])) return false;
  }
  return true;
}

[[noreturn]] void DiskNotFound(const std::string& key) {
  throw std::runtime_error("Disk not found: " + key);
}

}  // namespace

zeda::orvi::OrviDiskHealth NasOrvi::GetDiskHealth(const std::string& key) {
  TraceCall(nas_.name, "GetDiskHealth", key);
  for (const DiskRecord& record : nas_.disks) {
    const std::string& id = record.disk.id;
    if (AsciiEqualIgnoringCase(StripFirstColon(id), key) || AsciiEqualIgnoringCase(id, key)) {
      return record.health;
    }
  }
  DiskNotFound(key);
}

zeda::orvi::OrviDiskIdentity NasOrvi::GetDiskIdentity(const std::string& id) {
  TraceCall(nas_.name, "GetDiskIdentity", id);
  for (const DiskRecord& record : nas_.disks) {
    if (AsciiEqualIgnoringCase(record.disk.id, id)) {
      return record.identity;
    }
  }
  DiskNotFound(id);
}

zeda::orvi::OrviDiskList NasOrvi::GetDiskList() {
  TraceCall(nas_.name, "GetDiskList", "");
  zeda::orvi::OrviDiskList list;
  list.disks.reserve(nas_.disks.size());
  for (const DiskRecord& record : nas_.disks) {
    list.disks.push_back(record.disk);
  }
  list.groups = nas_.groups;
  return list;
}

}  // namespace zeda::pelka::platform
