// The inventory in service and every snapshot served before it.
//
// In file mode each look-up compares the inventory file's stamp with the one
// last read and parses the file only when it changed. A changed file that
// cannot be read or parsed leaves the inventory in service untouched and is
// logged once; with no good inventory yet, the look-up throws its message.
//
// Superseded snapshots are kept for the life of the process: callers hold
// Nas&, std::list<Nas>& and Orvi& without telling the library when they are
// done, so no snapshot can be proven unused. The cost is one snapshot per
// real change of the file (identical re-reads reuse the snapshot in service).
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "InventoryFile.h"
#include "Snapshot.h"

namespace zeda::pelka::platform {

class InventoryStore {
 public:
  static InventoryStore& Instance();

  // The inventory in service, refreshed from the file first in file mode.
  const Snapshot& Current();

  // Nas::Get: throws std::runtime_error "NAS not found: <name>".
  const Nas& Find(const std::string& name);

  // The NAS API object of a Nas of any snapshot served; for a Nas the
  // library did not hand out, that of the NAS of the same name in service.
  zeda::orvi::Orvi& OrviOf(const Nas& nas);

  void UseInMemory(Inventory inventory);
  void UseFile();
  std::uint64_t ParseCount();
  void ForgetFileState();

 private:
  InventoryStore() = default;

  // All private members below expect mutex_ to be held.
  const Snapshot& CurrentLocked();
  void RefreshFromFile();
  bool RefreshFromConfiguration();  // false when there is no configuration file
  void Install(Inventory inventory);

  std::mutex mutex_;
  std::vector<std::unique_ptr<const Snapshot>> snapshots_;
  std::map<const Nas*, zeda::orvi::Orvi*> orviByNas_;
  const Snapshot* current_ = nullptr;
  bool inMemory_ = false;
  std::optional<FileStamp> fileStamp_;  // of the last read attempt
  std::string fileError_;               // its failure, empty when it succeeded
  std::uint64_t parseCount_ = 0;
};

}  // namespace zeda::pelka::platform
