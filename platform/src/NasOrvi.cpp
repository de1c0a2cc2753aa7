#include "NasOrvi.h"

#include <stdexcept>

#include "CallTrace.h"

namespace zeda::pelka::platform {

namespace {

[[noreturn]] void DiskNotFound(const std::string& key) {
  throw std::runtime_error("Disk not found: " + key);
}

}  // namespace

NasOrvi::NasOrvi(const NasRecord& nas) : nas_(nas), index_(nas.disks) {}

zeda::orvi::OrviDiskHealth NasOrvi::GetDiskHealth(const std::string& key) {
  TraceCall(nas_.name, "GetDiskHealth", key);
  const auto found = index_.FindByHealthKey(key);
  if (!found) DiskNotFound(key);
  return nas_.disks[*found].health;
}

zeda::orvi::OrviDiskIdentity NasOrvi::GetDiskIdentity(const std::string& id) {
  TraceCall(nas_.name, "GetDiskIdentity", id);
  const auto found = index_.FindByIdentifier(id);
  if (!found) DiskNotFound(id);
  return nas_.disks[*found].identity;
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

std::optional<zeda::orvi::OrviDisk> NasOrvi::FindListedDisk(const std::string& id) {
  TraceCall(nas_.name, "GetDiskList", "");
  const DiskRecord* record = FindListedRecord(id);
  if (record == nullptr) return std::nullopt;
  return record->disk;
}

const DiskRecord* NasOrvi::FindListedRecord(const std::string& id) const {
  // The index finds the first disk whose identifier equals `id` without
  // regard to letter case; an exact match can only be that one or a later
  // one, which only identifiers differing in case alone make possible.
  const auto found = index_.FindByIdentifier(id);
  if (!found) return nullptr;
  for (std::size_t i = *found; i < nas_.disks.size(); ++i) {
    if (nas_.disks[i].disk.id == id) return &nas_.disks[i];
  }
  return nullptr;
}

}  // namespace zeda::pelka::platform
