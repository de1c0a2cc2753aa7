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

namespace util {

// Same lookup as Nas::Get.
const Nas& GetNas(const std::string& name);

// CIM OperationalStatus number of a disk state.
int GetOperationalStatus(const zeda::orvi::DiskStatus& status);

// The program-data folder of the product.
std::string GetProgramDataPath();

}  // namespace util

}  // namespace zeda::pelka
