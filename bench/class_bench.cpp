// Cost per disk of enumerating every instance class the module serves,
// through the in-process object manager, at the three sizes of
// BenchInventory.h. One enumeration per iteration covers every NAS; the
// disks of the inventory are the items, so items_per_second of the 100,000
// disks in one NAS against the 1,000 disks in NAS devices of 500 shows
// whether an enumeration stays linear.
#include <benchmark/benchmark.h>

#include <cstddef>
#include <optional>
#include <string>

#include "BenchHost.h"
#include "BenchInventory.h"
#include "zeda/host/all.hpp"

namespace {

namespace host = zeda::host;

using zeda::bench::EnumeratedInAPool;
using zeda::bench::EveryDisk;
using zeda::bench::Size;

// Enumerates `className` (provider "<className>Provider") once per
// iteration and checks the number of instances against `perDisk` summed
// over the disks.
void Enumerate(benchmark::State& state, const char* className, std::size_t (*perDisk)(int disk)) {
  const Size size = zeda::bench::SizeOf(state);
  std::size_t expected = 0;
  for (int d = 0; d < size.disks; ++d) expected += perDisk(d);
  const zeda::bench::ServedInventory served(zeda::bench::MakeInventory(size.disks, size.perNas));
  host::Host& h = zeda::bench::ModuleHost();
  const std::string provider = std::string(className) + "Provider";
  const host::ObjectPath classPath("root/cimv2", className);
  {
    // Untimed first request: the module reads the served inventory on it.
    zeda::bench::CountingSink sink;
    h.enumerateInstances(provider, classPath, std::nullopt, sink);
  }
  for (auto _ : state) {
    zeda::bench::CountingSink sink;
    const host::Outcome outcome = h.enumerateInstances(provider, classPath, std::nullopt, sink);
    if (!outcome.ok() || sink.count() != expected) {
      state.SkipWithError("unexpected answer from the module");
      break;
    }
  }
  state.SetItemsProcessed(state.iterations() * size.disks);
}

void BM_EnumDiskDrive(benchmark::State& state) { Enumerate(state, "ZEDA_DiskDrive", EveryDisk); }
void BM_EnumStorageExtent(benchmark::State& state) {
  Enumerate(state, "ZEDA_StorageExtent_Disk", EveryDisk);
}
void BM_EnumPhysicalPackage(benchmark::State& state) {
  Enumerate(state, "ZEDA_PhysicalPackage_Disk", EveryDisk);
}
void BM_EnumSoftwareIdentity(benchmark::State& state) {
  Enumerate(state, "ZEDA_SoftwareIdentity_Disk", EveryDisk);
}
void BM_EnumSystemDeviceDrive(benchmark::State& state) {
  Enumerate(state, "ZEDA_SystemDevice_DiskDrive", EveryDisk);
}
void BM_EnumSystemDeviceExtent(benchmark::State& state) {
  Enumerate(state, "ZEDA_SystemDevice_StorageExtent_Disk", EveryDisk);
}
void BM_EnumMediaPresent(benchmark::State& state) {
  Enumerate(state, "ZEDA_MediaPresent", EveryDisk);
}
void BM_EnumRealizes(benchmark::State& state) { Enumerate(state, "ZEDA_Realizes_Disk", EveryDisk); }
void BM_EnumElementSoftwareIdentity(benchmark::State& state) {
  Enumerate(state, "ZEDA_ElementSoftwareIdentity_Disk", EveryDisk);
}
void BM_EnumConcreteComponent(benchmark::State& state) {
  Enumerate(state, "ZEDA_ConcreteComponent_Primordial", EnumeratedInAPool);
}

BENCHMARK(BM_EnumDiskDrive)->Apply(zeda::bench::ThreeSizes);
BENCHMARK(BM_EnumStorageExtent)->Apply(zeda::bench::ThreeSizes);
BENCHMARK(BM_EnumPhysicalPackage)->Apply(zeda::bench::ThreeSizes);
BENCHMARK(BM_EnumSoftwareIdentity)->Apply(zeda::bench::ThreeSizes);
BENCHMARK(BM_EnumSystemDeviceDrive)->Apply(zeda::bench::ThreeSizes);
BENCHMARK(BM_EnumSystemDeviceExtent)->Apply(zeda::bench::ThreeSizes);
BENCHMARK(BM_EnumMediaPresent)->Apply(zeda::bench::ThreeSizes);
BENCHMARK(BM_EnumRealizes)->Apply(zeda::bench::ThreeSizes);
BENCHMARK(BM_EnumElementSoftwareIdentity)->Apply(zeda::bench::ThreeSizes);
BENCHMARK(BM_EnumConcreteComponent)->Apply(zeda::bench::ThreeSizes);

}  // namespace
