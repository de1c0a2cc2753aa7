#include "module/ProviderBases.h"

namespace zeda::pelka::providerBase {

CmpiProviderBase ZEDA_DiskDrive;
CmpiProviderBase ZEDA_StorageExtent_Disk;
CmpiProviderBase ZEDA_PhysicalPackage_Disk;
CmpiProviderBase ZEDA_SoftwareIdentity_Disk;
CmpiProviderBase ZEDA_SystemDevice_DiskDrive;
CmpiProviderBase ZEDA_SystemDevice_StorageExtent_Disk;
CmpiProviderBase ZEDA_MediaPresent;
CmpiProviderBase ZEDA_Realizes_Disk;
CmpiProviderBase ZEDA_ElementSoftwareIdentity_Disk;
CmpiProviderBase ZEDA_ConcreteComponent_Primordial;
CmpiProviderBase ZEDA_AssociatedComponentExtent_Primordial;

}  // namespace zeda::pelka::providerBase
