// The function table and MI record of each of the 17 exported factories,
// named after the provider class and the MI kind.
#ifndef ZEDA_PELKA_MODULE_EXPORTTABLES_H
#define ZEDA_PELKA_MODULE_EXPORTTABLES_H

#include "module/FunctionTables.h"

namespace zeda::pelka::exportTable {

using InstanceExport = MIExport<InstanceKind>;
using AssociationExport = MIExport<AssociationKind>;

extern AssociationExport ZEDA_AssociatedComponentExtent_Primordial_Association;
extern InstanceExport ZEDA_ConcreteComponent_Primordial_Instance;
extern AssociationExport ZEDA_ConcreteComponent_Primordial_Association;
extern InstanceExport ZEDA_DiskDrive_Instance;
extern InstanceExport ZEDA_ElementSoftwareIdentity_Disk_Instance;
extern AssociationExport ZEDA_ElementSoftwareIdentity_Disk_Association;
extern InstanceExport ZEDA_MediaPresent_Instance;
extern AssociationExport ZEDA_MediaPresent_Association;
extern InstanceExport ZEDA_PhysicalPackage_Disk_Instance;
extern InstanceExport ZEDA_Realizes_Disk_Instance;
extern AssociationExport ZEDA_Realizes_Disk_Association;
extern InstanceExport ZEDA_SoftwareIdentity_Disk_Instance;
extern InstanceExport ZEDA_StorageExtent_Disk_Instance;
extern InstanceExport ZEDA_SystemDevice_DiskDrive_Instance;
extern AssociationExport ZEDA_SystemDevice_DiskDrive_Association;
extern InstanceExport ZEDA_SystemDevice_StorageExtent_Disk_Instance;
extern AssociationExport ZEDA_SystemDevice_StorageExtent_Disk_Association;

}  // namespace zeda::pelka::exportTable

#endif
