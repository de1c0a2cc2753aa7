// Functions of the utility library libPelkaUtility.
#pragma once

#include <list>
#include <string>

#include "inventory/Nas.h"
#include "inventory/Orvi.h"
#include "inventory/Records.h"

namespace zeda::pelka {

// The managed NAS devices in a stable order; may be empty.
const std::list<Nas>& GetNasList();

// The NAS API object of `nas`; owned by the library.
zeda::orvi::Orvi& GetOrvi(const Nas& nas);

// Keeps everything the look-ups of this thread hand out (Nas&, the NAS list,
// Orvi&) valid until the outermost hold of the thread ends, however often the
// inventory is replaced meanwhile: an inventory taken out of service is freed
// when the last hold that read it ends. Open one for the whole of a request
// and on its thread; holds nest. Look-ups made outside any hold stay valid
// for a grace period after their inventory left service (PELKA_SNAPSHOT_GRACE_SECONDS).
class InventoryHold {
 public:
  InventoryHold() noexcept;
  ~InventoryHold();
  InventoryHold(const InventoryHold&) = delete;
  InventoryHold& operator=(const InventoryHold&) = delete;

 private:
  bool opened_ = true;
};

namespace util {

// Same lookup as Nas::Get.
const Nas& GetNas(const std::string& name);

// CIM OperationalStatus number of a disk state.
int GetOperationalStatus(const zeda::orvi::DiskStatus& status);

// The program-data folder of the product.
std::string GetProgramDataPath();

}  // namespace util

}  // namespace zeda::pelka
