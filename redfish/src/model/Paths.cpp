#include "model/Paths.h"

namespace zeda::redfish::model {

namespace {

std::string Joined(std::initializer_list<std::string_view> parts) {
  std::string path;
  for (const std::string_view part : parts) path += part;
  return path;
}

}  // namespace

std::string SystemPath(std::string_view nas) { return Joined({kSystemsPath, "/", nas}); }

std::string StorageCollectionPath(std::string_view nas) {
  return Joined({kSystemsPath, "/", nas, "/Storage"});
}

std::string StoragePath(std::string_view nas) {
  return Joined({kSystemsPath, "/", nas, "/Storage/", kStorageId});
}

std::string DrivePath(std::string_view nas, std::string_view disk) {
  return Joined({kSystemsPath, "/", nas, "/Storage/", kStorageId, "/Drives/", disk});
}

std::string PoolCollectionPath(std::string_view nas) {
  return Joined({kSystemsPath, "/", nas, "/Storage/", kStorageId, "/StoragePools"});
}

std::string PoolPath(std::string_view nas, std::string_view pool) {
  return Joined({kSystemsPath, "/", nas, "/Storage/", kStorageId, "/StoragePools/", pool});
}

std::string CapacitySourcePath(std::string_view nas, std::string_view pool) {
  return PoolPath(nas, pool) + "/CapacitySources/1";
}

std::string ProvidingDrivesPath(std::string_view nas, std::string_view pool) {
  return CapacitySourcePath(nas, pool) + "/ProvidingDrives";
}

}  // namespace zeda::redfish::model
