// Replies of the NAS API, as the providers read them. Words of the replies
// that no provider reads are left out; the members keep their reply order.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zeda::orvi {

// State of one disk as the NAS reports it. The utility library maps it to a
// CIM OperationalStatus number (util::GetOperationalStatus).
enum DiskStatus : std::int32_t {
  Unknown = 0,
  Ok = 1,
  Degraded = 2,
  PredictiveFailure = 3,
  Error = 4,
  Stopped = 5,
  NoContact = 6,
};

struct OrviDisk {
  DiskStatus status = Unknown;
  bool isFree = false;   // not part of any group: unused capacity
  bool isSpare = false;  // hot spare
  bool isSsd = false;
  std::string interfaceType;  // "SATA", "SAS", "NL-SAS", ...
  std::string id;             // disk identifier, used verbatim in every key
  std::string firmwareVersion;
  std::uint64_t capacity = 0;  // bytes
  std::uint32_t rpm = 0;       // revolutions per minute, 0 for solid state
};

struct OrviDiskGroup {
  std::vector<std::string> dataDisks;   // disk identifiers
  std::vector<std::string> spareDisks;  // disk identifiers
};

struct OrviDiskList {
  std::vector<OrviDisk> disks;  // in the NAS's order
  std::vector<OrviDiskGroup> groups;
};

struct OrviDiskHealth {
  std::string message;
  std::uint32_t healthStatus = 0;  // 0: healthy, anything else: unknown
};

struct OrviDiskIdentity {
  std::string product;  // vendor and model as one text
  std::string model;
  std::string serial;
};

}  // namespace zeda::orvi
