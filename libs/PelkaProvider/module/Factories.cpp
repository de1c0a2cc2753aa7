// The exported CMPI factories, one per interface of each served class
// (ServedClasses.h). The object manager finds each by its plain name,
// "<Class>Provider_Create_InstanceMI" or "..._Create_AssociationMI"; nothing
// else leaves the module (exports.map).
//
// Each factory has its export table (MIExport: MI name, function table, MI
// record), a static built when the module is loaded, named
// exportTable::<Class>_<Kind>, and hands it with the class's provider base
// to CreateMI.
#include <cmpi/cmpift.h>

#include "module/FunctionTables.h"
#include "module/MIFactory.h"
#include "module/ProviderBases.h"
#include "module/ServedClasses.h"

// Expands `Each(Class, Kind)` once per exported interface of a class.
#define PELKA_INTERFACES_INSTANCE(Each, Class) Each(Class, Instance)
#define PELKA_INTERFACES_ASSOCIATION(Each, Class) Each(Class, Association)
#define PELKA_INTERFACES_INSTANCE_AND_ASSOCIATION(Each, Class) \
  Each(Class, Instance) Each(Class, Association)

namespace zeda::pelka::exportTable {

#define PELKA_EXPORT_TABLE(Class, Interface) \
  MIExport<Interface##Kind> Class##_##Interface(#Class "Provider");
#define PELKA_EXPORT_TABLES(Class, Interfaces) \
  PELKA_INTERFACES_##Interfaces(PELKA_EXPORT_TABLE, Class)
PELKA_SERVED_CLASSES(PELKA_EXPORT_TABLES)

}  // namespace zeda::pelka::exportTable

// Exported with C linkage and default visibility; the module is otherwise
// built with hidden symbols.
#define PELKA_FACTORY extern "C" __attribute__((visibility("default")))

#define PELKA_DEFINE_FACTORY(Class, Kind)                                                      \
  PELKA_FACTORY CMPI##Kind##MI* Class##Provider_Create_##Kind##MI(                             \
      const CMPIBroker* broker, const CMPIContext* ctx, CMPIStatus* rc) {                      \
    return zeda::pelka::CreateMI<zeda::pelka::Class>(zeda::pelka::exportTable::Class##_##Kind, \
                                                     zeda::pelka::providerBase::Class, broker, \
                                                     ctx, rc);                                 \
  }
#define PELKA_FACTORIES(Class, Interfaces) \
  PELKA_INTERFACES_##Interfaces(PELKA_DEFINE_FACTORY, Class)
PELKA_SERVED_CLASSES(PELKA_FACTORIES)
