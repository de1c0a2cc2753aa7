// The NAS record of the machine, built from what it shows (MachineDisks.h)
// and the SMART answers of its disks: one disk record per physical disk, one
// disk group per md RAID array. The rules are stated in LinuxSource.h.
#pragma once

#include <map>
#include <string>

#include "MachineDisks.h"
#include "Smart.h"
#include "platform/Inventory.h"

namespace zeda::pelka::platform {

// `smart` holds the reports by device node (SmartNodes); a disk without one
// has an unknown health.
NasRecord BuildNasRecord(const std::string& nasName, const MachineView& machine,
                         const std::map<std::string, SmartReport>& smart);

}  // namespace zeda::pelka::platform
