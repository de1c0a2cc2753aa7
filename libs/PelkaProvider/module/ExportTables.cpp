#include "module/ExportTables.h"

namespace zeda::pelka::exportTable {

AssociationExport ZEDA_AssociatedComponentExtent_Primordial_Association(
    "ZEDA_AssociatedComponentExtent_PrimordialProvider");
InstanceExport ZEDA_ConcreteComponent_Primordial_Instance(
    "ZEDA_ConcreteComponent_PrimordialProvider");
AssociationExport ZEDA_ConcreteComponent_Primordial_Association(
    "ZEDA_ConcreteComponent_PrimordialProvider");
InstanceExport ZEDA_DiskDrive_Instance("ZEDA_DiskDriveProvider");
InstanceExport ZEDA_ElementSoftwareIdentity_Disk_Instance(
    "ZEDA_ElementSoftwareIdentity_DiskProvider");
AssociationExport ZEDA_ElementSoftwareIdentity_Disk_Association(
    "ZEDA_ElementSoftwareIdentity_DiskProvider");
InstanceExport ZEDA_MediaPresent_Instance("ZEDA_MediaPresentProvider");
AssociationExport ZEDA_MediaPresent_Association("ZEDA_MediaPresentProvider");
InstanceExport ZEDA_PhysicalPackage_Disk_Instance("ZEDA_PhysicalPackage_DiskProvider");
InstanceExport ZEDA_Realizes_Disk_Instance("ZEDA_Realizes_DiskProvider");
AssociationExport ZEDA_Realizes_Disk_Association("ZEDA_Realizes_DiskProvider");
InstanceExport ZEDA_SoftwareIdentity_Disk_Instance("ZEDA_SoftwareIdentity_DiskProvider");
InstanceExport ZEDA_StorageExtent_Disk_Instance("ZEDA_StorageExtent_DiskProvider");
InstanceExport ZEDA_SystemDevice_DiskDrive_Instance("ZEDA_SystemDevice_DiskDriveProvider");
AssociationExport ZEDA_SystemDevice_DiskDrive_Association(
    "ZEDA_SystemDevice_DiskDriveProvider");
InstanceExport ZEDA_SystemDevice_StorageExtent_Disk_Instance(
    "ZEDA_SystemDevice_StorageExtent_DiskProvider");
AssociationExport ZEDA_SystemDevice_StorageExtent_Disk_Association(
    "ZEDA_SystemDevice_StorageExtent_DiskProvider");

}  // namespace zeda::pelka::exportTable
