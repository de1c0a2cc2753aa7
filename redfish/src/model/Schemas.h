// The schema versions of the resources this service answers: one list, used
// for every @odata.type and for the references of $metadata. Versions are
// those of the DMTF Redfish schema bundle 2023.3 (DSP8010) and of SNIA
// Swordfish 1.2.5.
#pragma once

#include <array>

namespace zeda::redfish::model {

struct SchemaUse {
  const char* ns;       // "Drive"
  const char* version;  // "Drive.v1_18_0"; empty for the unversioned collections
  const char* type;     // "#Drive.v1_18_0.Drive"
  const char* uri;      // where its CSDL file is published
};

namespace type {
inline constexpr char kServiceRoot[] = "#ServiceRoot.v1_16_0.ServiceRoot";
inline constexpr char kSystemCollection[] = "#ComputerSystemCollection.ComputerSystemCollection";
inline constexpr char kSystem[] = "#ComputerSystem.v1_22_0.ComputerSystem";
inline constexpr char kStorageCollection[] = "#StorageCollection.StorageCollection";
inline constexpr char kStorage[] = "#Storage.v1_15_0.Storage";
inline constexpr char kDrive[] = "#Drive.v1_18_0.Drive";
inline constexpr char kDriveCollection[] = "#DriveCollection.DriveCollection";
inline constexpr char kPoolCollection[] = "#StoragePoolCollection.StoragePoolCollection";
inline constexpr char kPool[] = "#StoragePool.v1_8_0.StoragePool";
inline constexpr char kCapacitySource[] = "#Capacity.v1_2_0.CapacitySource";
}  // namespace type

// Every schema $metadata references: those of the resources above, those of
// the server's own resources (sessions, accounts, errors) and the common
// ones they build on.
inline constexpr std::array<SchemaUse, 22> kSchemas{{
    {"ServiceRoot", "ServiceRoot.v1_16_0", type::kServiceRoot,
     "http://redfish.dmtf.org/schemas/v1/ServiceRoot_v1.xml"},
    {"ComputerSystemCollection", "", type::kSystemCollection,
     "http://redfish.dmtf.org/schemas/v1/ComputerSystemCollection_v1.xml"},
    {"ComputerSystem", "ComputerSystem.v1_22_0", type::kSystem,
     "http://redfish.dmtf.org/schemas/v1/ComputerSystem_v1.xml"},
    {"StorageCollection", "", type::kStorageCollection,
     "http://redfish.dmtf.org/schemas/v1/StorageCollection_v1.xml"},
    {"Storage", "Storage.v1_15_0", type::kStorage,
     "http://redfish.dmtf.org/schemas/v1/Storage_v1.xml"},
    {"Drive", "Drive.v1_18_0", type::kDrive, "http://redfish.dmtf.org/schemas/v1/Drive_v1.xml"},
    {"DriveCollection", "", type::kDriveCollection,
     "http://redfish.dmtf.org/schemas/v1/DriveCollection_v1.xml"},
    {"StoragePoolCollection", "", type::kPoolCollection,
     "http://redfish.dmtf.org/schemas/swordfish/v1/StoragePoolCollection_v1.xml"},
    {"StoragePool", "StoragePool.v1_8_0", type::kPool,
     "http://redfish.dmtf.org/schemas/swordfish/v1/StoragePool_v1.xml"},
    {"Capacity", "Capacity.v1_2_0", type::kCapacitySource,
     "http://redfish.dmtf.org/schemas/swordfish/v1/Capacity_v1.xml"},
    {"SessionService", "SessionService.v1_1_9", "",
     "http://redfish.dmtf.org/schemas/v1/SessionService_v1.xml"},
    {"SessionCollection", "", "", "http://redfish.dmtf.org/schemas/v1/SessionCollection_v1.xml"},
    {"Session", "Session.v1_7_0", "", "http://redfish.dmtf.org/schemas/v1/Session_v1.xml"},
    {"AccountService", "AccountService.v1_15_0", "",
     "http://redfish.dmtf.org/schemas/v1/AccountService_v1.xml"},
    {"ManagerAccountCollection", "", "",
     "http://redfish.dmtf.org/schemas/v1/ManagerAccountCollection_v1.xml"},
    {"ManagerAccount", "ManagerAccount.v1_12_0", "",
     "http://redfish.dmtf.org/schemas/v1/ManagerAccount_v1.xml"},
    {"RoleCollection", "", "", "http://redfish.dmtf.org/schemas/v1/RoleCollection_v1.xml"},
    {"Role", "Role.v1_3_2", "", "http://redfish.dmtf.org/schemas/v1/Role_v1.xml"},
    {"Message", "Message.v1_1_2", "", "http://redfish.dmtf.org/schemas/v1/Message_v1.xml"},
    {"Resource", "Resource.v1_18_0", "", "http://redfish.dmtf.org/schemas/v1/Resource_v1.xml"},
    {"RedfishError", "RedfishError.v1_0_2", "",
     "http://redfish.dmtf.org/schemas/v1/RedfishError_v1.xml"},
    {"RedfishExtensions", "RedfishExtensions.v1_0_0", "",
     "http://redfish.dmtf.org/schemas/v1/RedfishExtensions_v1.xml"},
}};

}  // namespace zeda::redfish::model
