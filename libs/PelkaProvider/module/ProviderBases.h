// One provider base per provider class. It keeps the class's one provider
// object, shared by the class's instance and association factories, and
// counts the MI records handed out for it. Built when the module is loaded,
// destroyed when it is unloaded.
#ifndef ZEDA_PELKA_MODULE_PROVIDERBASES_H
#define ZEDA_PELKA_MODULE_PROVIDERBASES_H

#include <cmpi/CmpiProviderBase.h>

namespace zeda::pelka::providerBase {

extern CmpiProviderBase ZEDA_DiskDrive;
extern CmpiProviderBase ZEDA_StorageExtent_Disk;
extern CmpiProviderBase ZEDA_PhysicalPackage_Disk;
extern CmpiProviderBase ZEDA_SoftwareIdentity_Disk;
extern CmpiProviderBase ZEDA_SystemDevice_DiskDrive;
extern CmpiProviderBase ZEDA_SystemDevice_StorageExtent_Disk;
extern CmpiProviderBase ZEDA_MediaPresent;
extern CmpiProviderBase ZEDA_Realizes_Disk;
extern CmpiProviderBase ZEDA_ElementSoftwareIdentity_Disk;
extern CmpiProviderBase ZEDA_ConcreteComponent_Primordial;
extern CmpiProviderBase ZEDA_AssociatedComponentExtent_Primordial;

}  // namespace zeda::pelka::providerBase

#endif
