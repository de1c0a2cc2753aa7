// The classes this module serves: the one list from which the provider
// bases, the export tables and the exported factories are all derived
// (ProviderBases.cpp, Factories.cpp). Adding a class is one include and one
// line of PELKA_SERVED_CLASSES below, plus the provider's own files.
#ifndef ZEDA_PELKA_MODULE_SERVEDCLASSES_H
#define ZEDA_PELKA_MODULE_SERVEDCLASSES_H

#include "providers/associations/ZEDA_ElementSoftwareIdentity_Disk.h"
#include "providers/associations/ZEDA_MediaPresent.h"
#include "providers/associations/ZEDA_Realizes_Disk.h"
#include "providers/associations/ZEDA_SystemDevice_DiskDrive.h"
#include "providers/associations/ZEDA_SystemDevice_StorageExtent_Disk.h"
#include "providers/elements/ZEDA_DiskDrive.h"
#include "providers/elements/ZEDA_PhysicalPackage_Disk.h"
#include "providers/elements/ZEDA_SoftwareIdentity_Disk.h"
#include "providers/elements/ZEDA_StorageExtent_Disk.h"
#include "providers/pools/ZEDA_AssociatedComponentExtent_Primordial.h"
#include "providers/pools/ZEDA_ConcreteComponent_Primordial.h"

// X(ProviderClass, Interfaces): the provider class in zeda::pelka (named
// after the CIM class it serves) and the factories it exports:
//   INSTANCE                   <Class>Provider_Create_InstanceMI
//   ASSOCIATION                <Class>Provider_Create_AssociationMI
//   INSTANCE_AND_ASSOCIATION   both, sharing one provider object
// 11 classes, 17 factories. ZEDA_AssociatedComponentExtent_Primordial has
// no instance interface on purpose (it can only be walked).
#define PELKA_SERVED_CLASSES(X)                                  \
  X(ZEDA_AssociatedComponentExtent_Primordial, ASSOCIATION)      \
  X(ZEDA_ConcreteComponent_Primordial, INSTANCE_AND_ASSOCIATION) \
  X(ZEDA_DiskDrive, INSTANCE)                                    \
  X(ZEDA_ElementSoftwareIdentity_Disk, INSTANCE_AND_ASSOCIATION) \
  X(ZEDA_MediaPresent, INSTANCE_AND_ASSOCIATION)                 \
  X(ZEDA_PhysicalPackage_Disk, INSTANCE)                         \
  X(ZEDA_Realizes_Disk, INSTANCE_AND_ASSOCIATION)                \
  X(ZEDA_SoftwareIdentity_Disk, INSTANCE)                        \
  X(ZEDA_StorageExtent_Disk, INSTANCE)                           \
  X(ZEDA_SystemDevice_DiskDrive, INSTANCE_AND_ASSOCIATION)       \
  X(ZEDA_SystemDevice_StorageExtent_Disk, INSTANCE_AND_ASSOCIATION)

#endif
