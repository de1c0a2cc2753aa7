// libFuzzer harness of the module driven through the in-process object
// manager, as an object manager drives it: fuzzed operations, providers,
// object paths (classes, key names, key types and values), association and
// result classes, roles and property lists, against the sample inventory.
// Every request must end with a status; nothing may crash, leak or touch
// freed memory (the fuzz build runs under AddressSanitizer).
#include <dlfcn.h>
#include <fuzzer/FuzzedDataProvider.h>
#include <stdlib.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "zeda/host/host.hpp"
#include "zeda/host/wbem_uri.hpp"

namespace {

namespace host = zeda::host;

constexpr std::array<const char*, 13> kClasses = {
    "ZEDA_DiskDrive",
    "ZEDA_StorageExtent_Disk",
    "ZEDA_PhysicalPackage_Disk",
    "ZEDA_SoftwareIdentity_Disk",
    "ZEDA_SystemDevice_DiskDrive",
    "ZEDA_SystemDevice_StorageExtent_Disk",
    "ZEDA_MediaPresent",
    "ZEDA_Realizes_Disk",
    "ZEDA_ElementSoftwareIdentity_Disk",
    "ZEDA_ConcreteComponent_Primordial",
    "ZEDA_AssociatedComponentExtent_Primordial",
    "ZEDA_ComputerSystem",
    "ZEDA_StoragePool_Primordial",
};
// The first eleven classes are served; their providers are "<Class>Provider".
constexpr std::size_t kServedClasses = 11;

constexpr std::array<const char*, 8> kKeyNames = {
    "SystemName", "DeviceID", "InstanceID",       "CreationClassName", "SystemCreationClassName",
    "Tag",        "Name",     "CreationClassName"};

constexpr std::array<const char*, 12> kKeyValues = {
    "ZEDA:nas1",
    "ZEDA:nas1:DISK0:1",
    "ZEDA:nas1:DiskExtent0:1",
    "ZEDA:nas1:DiskExtent",
    "ZEDA:nas1:PrimordialPool2",
    "ZEDA:nas1:PrimordialPool99999999999",
    "ZEDA:nas2:PrimordialPool3",
    "InstanceID_SPP",
    "ZEDA:nas1:Software(DISK0:1)",
    "short",
    "",
    ":",
};

host::Host& ModuleHost() {
  static const std::unique_ptr<host::Host> instance = [] {
    char dir[] = "/tmp/zeda-fuzz-XXXXXX";
    if (mkdtemp(dir) != nullptr) setenv("PELKA_PROGRAM_DATA", dir, 1);
    setenv("PELKA_INVENTORY", ZEDA_SAMPLE_INVENTORY, 1);
    unsetenv("PELKA_NAS_TRACE");
    // Keeps the module and the libraries it brought in mapped after the host
    // unloads it at exit: what they hold in static storage (provider state,
    // inventory snapshots, glog) stays reachable for the leak check at exit,
    // and any report can still name their functions.
    dlopen(ZEDA_MODULE_PATH, RTLD_NOW | RTLD_GLOBAL | RTLD_NODELETE);
    return std::make_unique<host::Host>(ZEDA_MODULE_PATH);
  }();
  return *instance;
}

std::string PickOrFuzz(FuzzedDataProvider& in, const char* const* names, std::size_t count) {
  if (in.ConsumeBool()) return names[in.ConsumeIntegralInRange<std::size_t>(0, count - 1)];
  return in.ConsumeRandomLengthString(64);
}

host::OptString OptionalName(FuzzedDataProvider& in) {
  switch (in.ConsumeIntegralInRange(0, 2)) {
    case 0:
      return std::nullopt;
    case 1:
      return PickOrFuzz(in, kClasses.data(), kClasses.size());
    default:
      return in.ConsumeRandomLengthString(32);
  }
}

host::Value KeyValue(FuzzedDataProvider& in) {
  switch (in.ConsumeIntegralInRange(0, 3)) {
    case 0:
      return host::Value::string(PickOrFuzz(in, kKeyValues.data(), kKeyValues.size()));
    case 1:
      return host::Value::uint16(in.ConsumeIntegral<std::uint16_t>());
    case 2:
      return host::Value::boolean(in.ConsumeBool());
    default:
      return host::Value::string(in.ConsumeRandomLengthString(96));
  }
}

host::ObjectPath Path(FuzzedDataProvider& in) {
  if (in.ConsumeIntegralInRange(0, 3) == 0) {
    try {
      return host::parseObjectPath(in.ConsumeRandomLengthString(160));
    } catch (const host::UriError&) {
      // fall through to a built path
    }
  }
  const std::string nameSpace = in.ConsumeBool() ? "root/cimv2" : in.ConsumeRandomLengthString(16);
  host::ObjectPath path(nameSpace, PickOrFuzz(in, kClasses.data(), kClasses.size()));
  const int keys = in.ConsumeIntegralInRange(0, 5);
  for (int i = 0; i < keys; ++i) {
    path.addKey(PickOrFuzz(in, kKeyNames.data(), kKeyNames.size()), KeyValue(in));
  }
  return path;
}

host::PropertyList Properties(FuzzedDataProvider& in) {
  if (in.ConsumeBool()) return std::nullopt;
  std::vector<std::string> names;
  const int count = in.ConsumeIntegralInRange(0, 4);
  for (int i = 0; i < count; ++i) names.push_back(in.ConsumeRandomLengthString(24));
  return names;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider in(data, size);
  host::Host& module = ModuleHost();
  const std::string provider =
      in.ConsumeIntegralInRange(0, 15) == 0
          ? in.ConsumeRandomLengthString(48)
          : std::string(kClasses[in.ConsumeIntegralInRange<std::size_t>(0, kServedClasses - 1)]) +
                "Provider";
  const int operation = in.ConsumeIntegralInRange(0, 6);
  const host::ObjectPath path = Path(in);
  try {
    switch (operation) {
      case 0:
        module.enumerateInstances(provider, path, Properties(in));
        break;
      case 1:
        module.enumerateInstanceNames(provider, path);
        break;
      case 2:
        module.getInstance(provider, path, Properties(in));
        break;
      case 3: {
        const host::OptString assocClass = OptionalName(in);
        const host::OptString resultClass = OptionalName(in);
        const host::OptString role = OptionalName(in);
        const host::OptString resultRole = OptionalName(in);
        module.associators(provider, path, assocClass, resultClass, role, resultRole,
                           Properties(in));
        break;
      }
      case 4: {
        const host::OptString assocClass = OptionalName(in);
        const host::OptString resultClass = OptionalName(in);
        module.associatorNames(provider, path, assocClass, resultClass, std::nullopt, std::nullopt);
        break;
      }
      case 5: {
        const host::OptString resultClass = OptionalName(in);
        const host::OptString role = OptionalName(in);
        module.references(provider, path, resultClass, role, Properties(in));
        break;
      }
      default: {
        const host::OptString resultClass = OptionalName(in);
        const host::OptString role = OptionalName(in);
        module.referenceNames(provider, path, resultClass, role);
        break;
      }
    }
  } catch (const host::LoadError&) {
    // No such factory in the module (a fuzzed provider name): the object
    // manager would not have routed the request here.
  }
  return 0;
}
