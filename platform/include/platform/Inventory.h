// The inventory behind libPelkaUtility: what the library serves, where it
// comes from, and the controls tests and benchmarks use.
//
// By default the library serves the JSON file named by PELKA_INVENTORY, or
// <program-data>/inventory.json. The file is checked on every GetNasList,
// Nas::Get and util::GetNas call and parsed again only when its path, inode,
// size, modification or change time differ from the last read.
//
// With a configuration file (Config.h) the sources are read by a refresher
// thread instead, and a look-up only takes the snapshot in service.
//
// Lifetime of what the library hands out: each inventory is served as an
// immutable snapshot, and a Nas&, the std::list<Nas>& and an Orvi& taken from
// it stay valid while it is in service and, when taken inside an
// InventoryHold (inventory/Library.h), until the outermost hold of the thread
// ends; taken outside any hold, for a grace period after it was replaced
// (PELKA_SNAPSHOT_GRACE_SECONDS, default 300). The snapshot is freed after
// that. A re-read whose content equals the inventory in service keeps the
// snapshot in service, so touching the file costs no memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "inventory/Records.h"

namespace zeda::pelka::platform {

struct DiskRecord {
  zeda::orvi::OrviDisk disk;
  zeda::orvi::OrviDiskHealth health;
  zeda::orvi::OrviDiskIdentity identity;
  // The kernel names of the block devices the disk is reached by, in name
  // order: one for a plain disk, one per path of a multipath disk ("sdb",
  // "sdk"). Only the linux source fills it; no NAS API answer shows it.
  std::vector<std::string> paths;
  // The percentage of its rated media life the disk has left (0 to 100), as
  // its SMART wear indicator tells; nothing when unknown. Only the linux
  // source fills it; no NAS API answer shows it (platform/MediaLife.h).
  std::optional<std::uint32_t> mediaLifeLeftPercent;
};

struct NasRecord {
  std::string name;
  std::vector<DiskRecord> disks;
  std::vector<zeda::orvi::OrviDiskGroup> groups;
};

// One parsed inventory, NAS devices in file order.
struct Inventory {
  std::vector<NasRecord> nas;
};

bool operator==(const Inventory& a, const Inventory& b);
bool operator!=(const Inventory& a, const Inventory& b);

// The inventory file in use: PELKA_INVENTORY when set, else
// util::GetProgramDataPath() + "/inventory.json".
std::string InventoryFilePath();

// Parses and checks inventory JSON text. `fileName` only goes into messages.
// Throws std::runtime_error with one message naming the file, the place and
// the problem, e.g.
//   Bad inventory file /x/inventory.json: nas[0].disks[2].capacity: number is negative
Inventory ParseInventory(const std::string& jsonText, const std::string& fileName);

// Reads and parses a file; a file that cannot be read gives
//   Cannot read inventory file <path>: <reason>
Inventory LoadInventoryFile(const std::string& path);

// Serves `inventory` instead of the file until UseFileInventory() is called.
void UseInMemoryInventory(Inventory inventory);

// The machine's configuration file, read when neither PELKA_CONFIG nor
// PELKA_INVENTORY names what to serve: /etc/pelka/pelka.json unless a test
// names another, so that the configuration of the machine it runs on (where
// the package is installed) cannot change what it sees.
void UseMachineConfigFile(std::string path);

// Serves the inventory file again; it is read at the next call.
void UseFileInventory();

// How many times the library has parsed the inventory file (successful or
// not) since the process started.
std::uint64_t InventoryParseCount();

// Makes the next call re-read the file even when it has not changed.
void ForgetInventoryFileState();

// How many snapshots are in memory: the one in service (if any), those still
// held, and those handed out outside a hold and replaced less than a grace
// period ago.
std::size_t SnapshotsInMemory();

}  // namespace zeda::pelka::platform
