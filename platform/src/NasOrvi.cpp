#include "NasOrvi.h"

#include <stdexcept>

#include "CallTrace.h"

namespace zeda::pelka::platform {

namespace {

char AsciiLower(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

std::string AsciiFolded(std::string text) {
  for (char& c : text) c = AsciiLower(c);
  return text;
}

// The key under which the NAS API answers the health of disk `id`: the text
// before the first ":" followed by the text after it ("0:3" gives "03"). An
// identifier without ":" gives itself twice ("7" gives "77"): the substr
// calls below make exactly that of npos, and callers query with that key.
std::string HealthKey(const std::string& id) {
  const auto colon = id.find(':');
  return id.substr(0, colon) + id.substr(colon + 1);
}

[[noreturn]] void DiskNotFound(const std::string& key) {
  throw std::runtime_error("Disk not found: " + key);
}

}  // namespace

NasOrvi::NasOrvi(const NasRecord& nas) : nas_(nas) {
  // Inserting in list order with emplace keeps the first disk for every key:
  // the answer of a scan that stops at the first disk matching either form.
  healthIndex_.reserve(2 * nas_.disks.size());
  identityIndex_.reserve(nas_.disks.size());
  for (std::size_t i = 0; i < nas_.disks.size(); ++i) {
    const std::string& id = nas_.disks[i].disk.id;
    healthIndex_.emplace(AsciiFolded(HealthKey(id)), i);
    healthIndex_.emplace(AsciiFolded(id), i);
    identityIndex_.emplace(AsciiFolded(id), i);
  }
}

zeda::orvi::OrviDiskHealth NasOrvi::GetDiskHealth(const std::string& key) {
  TraceCall(nas_.name, "GetDiskHealth", key);
  const auto found = healthIndex_.find(AsciiFolded(key));
  if (found == healthIndex_.end()) DiskNotFound(key);
  return nas_.disks[found->second].health;
}

zeda::orvi::OrviDiskIdentity NasOrvi::GetDiskIdentity(const std::string& id) {
  TraceCall(nas_.name, "GetDiskIdentity", id);
  const auto found = identityIndex_.find(AsciiFolded(id));
  if (found == identityIndex_.end()) DiskNotFound(id);
  return nas_.disks[found->second].identity;
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
