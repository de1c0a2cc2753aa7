// Fixed objects that the disk associations answer instead of looked-up ones.
// Each builder creates a path holding only the namespace and the class name,
// creates the instance on it (assigned to `inst`) and sets the properties in
// the order listed. String values are "ZEDA_" words, not inventory data.
#ifndef ZEDA_PELKA_PLACEHOLDERINSTANCES_H
#define ZEDA_PELKA_PLACEHOLDERINSTANCES_H

#include <cmpi/CmpiInstance.h>

namespace zeda::pelka {

// ZEDA_ComputerSystem: CreationClassName "ZEDA_ComputerSystem", Name
// "ZEDAName", NameFormat "Other", ElementName "ZEDAElementName", Caption and
// Description "ZEDA_ComputerSystem", OperationalStatus {2}, Dedicated
// {3, 15, 16, 21, 24, 25}, HealthState 5.
// With a non-null `properties` list the instance first gets a property filter
// of that list and the system's nine key-like names, so properties outside
// both are dropped. A null list means no filter.
void MakePlaceholderComputerSystemInstance(CmpiInstance& inst, const char* nameSpace,
                                           const char** properties);

// ZEDA_StorageExtent_Disk: the four device keys as "ZEDA_" words,
// ExtentStatus {2}, NumberOfBlocks 1000, ConsumableBlocks 100, BlockSize 512,
// HealthState 5, OperationalStatus {2}, ExtentDiscriminator
// {"SNIA:Pool Component"}. Never filtered.
void MakePlaceholderStorageExtentInstance(CmpiInstance& inst, const char* nameSpace);

// ZEDA_SoftwareIdentity_Disk: InstanceID "ZEDA_InstanceID", VersionString
// "ZEDA_VersionString".
void MakePlaceholderSoftwareIdentityInstance(CmpiInstance& inst, const char* nameSpace);

}  // namespace zeda::pelka

#endif
