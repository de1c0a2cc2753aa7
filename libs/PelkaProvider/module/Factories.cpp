// The 17 exported CMPI factories. The object manager finds each by its plain
// name, "<Class>Provider_Create_InstanceMI" or "..._Create_AssociationMI";
// nothing else leaves the module (see exports.map).
#include <cmpi/cmpift.h>

#include "module/ExportTables.h"
#include "module/MIFactory.h"
#include "module/ProviderBases.h"

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

// Exported with C linkage and default visibility; the module is otherwise
// built with hidden symbols.
#define PELKA_FACTORY extern "C" __attribute__((visibility("default")))

namespace pelka = zeda::pelka;

PELKA_FACTORY CMPIAssociationMI* ZEDA_AssociatedComponentExtent_PrimordialProvider_Create_AssociationMI(
    const CMPIBroker* broker, const CMPIContext* ctx, CMPIStatus* rc) {
  return pelka::CreateMI<pelka::ZEDA_AssociatedComponentExtent_Primordial>(
      pelka::exportTable::ZEDA_AssociatedComponentExtent_Primordial_Association,
      pelka::providerBase::ZEDA_AssociatedComponentExtent_Primordial, broker, ctx, rc);
}

PELKA_FACTORY CMPIInstanceMI* ZEDA_ConcreteComponent_PrimordialProvider_Create_InstanceMI(
    const CMPIBroker* broker, const CMPIContext* ctx, CMPIStatus* rc) {
  return pelka::CreateMI<pelka::ZEDA_ConcreteComponent_Primordial>(
      pelka::exportTable::ZEDA_ConcreteComponent_Primordial_Instance,
      pelka::providerBase::ZEDA_ConcreteComponent_Primordial, broker, ctx, rc);
}

PELKA_FACTORY CMPIAssociationMI* ZEDA_ConcreteComponent_PrimordialProvider_Create_AssociationMI(
    const CMPIBroker* broker, const CMPIContext* ctx, CMPIStatus* rc) {
  return pelka::CreateMI<pelka::ZEDA_ConcreteComponent_Primordial>(
      pelka::exportTable::ZEDA_ConcreteComponent_Primordial_Association,
      pelka::providerBase::ZEDA_ConcreteComponent_Primordial, broker, ctx, rc);
}

PELKA_FACTORY CMPIInstanceMI* ZEDA_DiskDriveProvider_Create_InstanceMI(
    const CMPIBroker* broker, const CMPIContext* ctx, CMPIStatus* rc) {
  return pelka::CreateMI<pelka::ZEDA_DiskDrive>(
      pelka::exportTable::ZEDA_DiskDrive_Instance,
      pelka::providerBase::ZEDA_DiskDrive, broker, ctx, rc);
}

PELKA_FACTORY CMPIInstanceMI* ZEDA_ElementSoftwareIdentity_DiskProvider_Create_InstanceMI(
    const CMPIBroker* broker, const CMPIContext* ctx, CMPIStatus* rc) {
  return pelka::CreateMI<pelka::ZEDA_ElementSoftwareIdentity_Disk>(
      pelka::exportTable::ZEDA_ElementSoftwareIdentity_Disk_Instance,
      pelka::providerBase::ZEDA_ElementSoftwareIdentity_Disk, broker, ctx, rc);
}

PELKA_FACTORY CMPIAssociationMI* ZEDA_ElementSoftwareIdentity_DiskProvider_Create_AssociationMI(
    const CMPIBroker* broker, const CMPIContext* ctx, CMPIStatus* rc) {
  return pelka::CreateMI<pelka::ZEDA_ElementSoftwareIdentity_Disk>(
      pelka::exportTable::ZEDA_ElementSoftwareIdentity_Disk_Association,
      pelka::providerBase::ZEDA_ElementSoftwareIdentity_Disk, broker, ctx, rc);
}

PELKA_FACTORY CMPIInstanceMI* ZEDA_MediaPresentProvider_Create_InstanceMI(
    const CMPIBroker* broker, const CMPIContext* ctx, CMPIStatus* rc) {
  return pelka::CreateMI<pelka::ZEDA_MediaPresent>(
      pelka::exportTable::ZEDA_MediaPresent_Instance,
      pelka::providerBase::ZEDA_MediaPresent, broker, ctx, rc);
}

PELKA_FACTORY CMPIAssociationMI* ZEDA_MediaPresentProvider_Create_AssociationMI(
    const CMPIBroker* broker, const CMPIContext* ctx, CMPIStatus* rc) {
  return pelka::CreateMI<pelka::ZEDA_MediaPresent>(
      pelka::exportTable::ZEDA_MediaPresent_Association,
      pelka::providerBase::ZEDA_MediaPresent, broker, ctx, rc);
}

PELKA_FACTORY CMPIInstanceMI* ZEDA_PhysicalPackage_DiskProvider_Create_InstanceMI(
    const CMPIBroker* broker, const CMPIContext* ctx, CMPIStatus* rc) {
  return pelka::CreateMI<pelka::ZEDA_PhysicalPackage_Disk>(
      pelka::exportTable::ZEDA_PhysicalPackage_Disk_Instance,
      pelka::providerBase::ZEDA_PhysicalPackage_Disk, broker, ctx, rc);
}

PELKA_FACTORY CMPIInstanceMI* ZEDA_Realizes_DiskProvider_Create_InstanceMI(
    const CMPIBroker* broker, const CMPIContext* ctx, CMPIStatus* rc) {
  return pelka::CreateMI<pelka::ZEDA_Realizes_Disk>(
      pelka::exportTable::ZEDA_Realizes_Disk_Instance,
      pelka::providerBase::ZEDA_Realizes_Disk, broker, ctx, rc);
}

PELKA_FACTORY CMPIAssociationMI* ZEDA_Realizes_DiskProvider_Create_AssociationMI(
    const CMPIBroker* broker, const CMPIContext* ctx, CMPIStatus* rc) {
  return pelka::CreateMI<pelka::ZEDA_Realizes_Disk>(
      pelka::exportTable::ZEDA_Realizes_Disk_Association,
      pelka::providerBase::ZEDA_Realizes_Disk, broker, ctx, rc);
}

PELKA_FACTORY CMPIInstanceMI* ZEDA_SoftwareIdentity_DiskProvider_Create_InstanceMI(
    const CMPIBroker* broker, const CMPIContext* ctx, CMPIStatus* rc) {
  return pelka::CreateMI<pelka::ZEDA_SoftwareIdentity_Disk>(
      pelka::exportTable::ZEDA_SoftwareIdentity_Disk_Instance,
      pelka::providerBase::ZEDA_SoftwareIdentity_Disk, broker, ctx, rc);
}

PELKA_FACTORY CMPIInstanceMI* ZEDA_StorageExtent_DiskProvider_Create_InstanceMI(
    const CMPIBroker* broker, const CMPIContext* ctx, CMPIStatus* rc) {
  return pelka::CreateMI<pelka::ZEDA_StorageExtent_Disk>(
      pelka::exportTable::ZEDA_StorageExtent_Disk_Instance,
      pelka::providerBase::ZEDA_StorageExtent_Disk, broker, ctx, rc);
}

PELKA_FACTORY CMPIInstanceMI* ZEDA_SystemDevice_DiskDriveProvider_Create_InstanceMI(
    const CMPIBroker* broker, const CMPIContext* ctx, CMPIStatus* rc) {
  return pelka::CreateMI<pelka::ZEDA_SystemDevice_DiskDrive>(
      pelka::exportTable::ZEDA_SystemDevice_DiskDrive_Instance,
      pelka::providerBase::ZEDA_SystemDevice_DiskDrive, broker, ctx, rc);
}

PELKA_FACTORY CMPIAssociationMI* ZEDA_SystemDevice_DiskDriveProvider_Create_AssociationMI(
    const CMPIBroker* broker, const CMPIContext* ctx, CMPIStatus* rc) {
  return pelka::CreateMI<pelka::ZEDA_SystemDevice_DiskDrive>(
      pelka::exportTable::ZEDA_SystemDevice_DiskDrive_Association,
      pelka::providerBase::ZEDA_SystemDevice_DiskDrive, broker, ctx, rc);
}

PELKA_FACTORY CMPIInstanceMI* ZEDA_SystemDevice_StorageExtent_DiskProvider_Create_InstanceMI(
    const CMPIBroker* broker, const CMPIContext* ctx, CMPIStatus* rc) {
  return pelka::CreateMI<pelka::ZEDA_SystemDevice_StorageExtent_Disk>(
      pelka::exportTable::ZEDA_SystemDevice_StorageExtent_Disk_Instance,
      pelka::providerBase::ZEDA_SystemDevice_StorageExtent_Disk, broker, ctx, rc);
}

PELKA_FACTORY CMPIAssociationMI* ZEDA_SystemDevice_StorageExtent_DiskProvider_Create_AssociationMI(
    const CMPIBroker* broker, const CMPIContext* ctx, CMPIStatus* rc) {
  return pelka::CreateMI<pelka::ZEDA_SystemDevice_StorageExtent_Disk>(
      pelka::exportTable::ZEDA_SystemDevice_StorageExtent_Disk_Association,
      pelka::providerBase::ZEDA_SystemDevice_StorageExtent_Disk, broker, ctx, rc);
}
