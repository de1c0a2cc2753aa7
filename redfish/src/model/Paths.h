// The paths of the inventory resources. Segments come from SegmentOf
// (Ids.h), so a path never needs escaping, in a URL or in JSON text.
#pragma once

#include <string>
#include <string_view>

namespace zeda::redfish::model {

inline constexpr char kServiceRootPath[] = "/redfish/v1";
inline constexpr char kSystemsPath[] = "/redfish/v1/Systems";
// The Id of the one Storage of every NAS.
inline constexpr char kStorageId[] = "1";

std::string SystemPath(std::string_view nas);
std::string StorageCollectionPath(std::string_view nas);
std::string StoragePath(std::string_view nas);
std::string DrivePath(std::string_view nas, std::string_view disk);
std::string PoolCollectionPath(std::string_view nas);
std::string PoolPath(std::string_view nas, std::string_view pool);
// The one capacity source of a pool (Id "1": its disks) and its drives.
std::string CapacitySourcePath(std::string_view nas, std::string_view pool);
std::string ProvidingDrivesPath(std::string_view nas, std::string_view pool);

}  // namespace zeda::redfish::model
