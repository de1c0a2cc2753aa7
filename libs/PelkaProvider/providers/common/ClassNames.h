// Every CIM class name the providers write or compare, as the schema spells
// it. No other file under libs/ spells a class name: a provider names its own
// class, the classes at the ends of its associations and the placeholder
// words that happen to equal a class name through these constants.
#ifndef ZEDA_PELKA_PROVIDERS_COMMON_CLASSNAMES_H
#define ZEDA_PELKA_PROVIDERS_COMMON_CLASSNAMES_H

namespace zeda::pelka::className {

// Served element classes.
inline constexpr char kDiskDrive[] = "ZEDA_DiskDrive";
inline constexpr char kStorageExtentDisk[] = "ZEDA_StorageExtent_Disk";
inline constexpr char kPhysicalPackageDisk[] = "ZEDA_PhysicalPackage_Disk";
inline constexpr char kSoftwareIdentityDisk[] = "ZEDA_SoftwareIdentity_Disk";

// Served association classes.
inline constexpr char kSystemDeviceDiskDrive[] = "ZEDA_SystemDevice_DiskDrive";
inline constexpr char kSystemDeviceStorageExtentDisk[] = "ZEDA_SystemDevice_StorageExtent_Disk";
inline constexpr char kMediaPresent[] = "ZEDA_MediaPresent";
inline constexpr char kRealizesDisk[] = "ZEDA_Realizes_Disk";
inline constexpr char kElementSoftwareIdentityDisk[] = "ZEDA_ElementSoftwareIdentity_Disk";
inline constexpr char kConcreteComponentPrimordial[] = "ZEDA_ConcreteComponent_Primordial";
inline constexpr char kAssociatedComponentExtentPrimordial[] =
    "ZEDA_AssociatedComponentExtent_Primordial";

// Classes referred to but served elsewhere.
inline constexpr char kComputerSystem[] = "ZEDA_ComputerSystem";
inline constexpr char kStoragePoolPrimordial[] = "ZEDA_StoragePool_Primordial";

// Parent classes named as result classes by the system-device associations.
inline constexpr char kCimComputerSystem[] = "CIM_ComputerSystem";
inline constexpr char kCimDiskDrive[] = "CIM_DiskDrive";
inline constexpr char kCimStoragePool[] = "CIM_StoragePool";
inline constexpr char kCimStorageExtent[] = "CIM_StorageExtent";

}  // namespace zeda::pelka::className

#endif
