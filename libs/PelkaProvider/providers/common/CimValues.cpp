#include "providers/common/CimValues.h"

#include "providers/common/ClassNames.h"

namespace zeda::pelka {

std::string NameSpaceOf(const CmpiObjectPath& path) {
  const char* ns = path.getNameSpace().charPtr();
  return ns ? ns : "";
}

CmpiArray Uint16Array(CMPIUint16 value) {
  CmpiArray array(1, CMPI_uint16);
  array.setElementAt(0, CmpiData(value));
  return array;
}

CmpiArray StringArray(const std::string& value) {
  CmpiArray array(1, CMPI_string);
  array.setElementAt(0, CmpiData(value));
  return array;
}

CmpiObjectPath ComputerSystemPath(const std::string& nameSpace, const std::string& name) {
  CmpiObjectPath path(nameSpace.c_str(), className::kComputerSystem);
  path.setKey("CreationClassName", CmpiData(className::kComputerSystem));
  path.setKey("Name", CmpiData(name));
  return path;
}

DeviceKeys NasDeviceKeys(const std::string& systemName, const std::string& creationClassName,
                         const std::string& deviceId) {
  DeviceKeys keys;
  keys.systemCreationClassName = className::kComputerSystem;
  keys.systemName = systemName;
  keys.creationClassName = creationClassName;
  keys.deviceId = deviceId;
  return keys;
}

DeviceKeys PlaceholderDeviceKeys() {
  DeviceKeys keys;
  keys.systemCreationClassName = "ZEDA_SystemCreationClassName";
  keys.systemName = "ZEDA_SystemName";
  keys.creationClassName = "ZEDA_CreationClassName";
  keys.deviceId = "ZEDA_DeviceID";
  return keys;
}

CmpiObjectPath DevicePath(const std::string& nameSpace, const std::string& className,
                          const DeviceKeys& keys) {
  CmpiObjectPath path(nameSpace.c_str(), className.c_str());
  path.setKey("SystemCreationClassName", CmpiData(keys.systemCreationClassName));
  path.setKey("SystemName", CmpiData(keys.systemName));
  path.setKey("CreationClassName", CmpiData(keys.creationClassName));
  path.setKey("DeviceID", CmpiData(keys.deviceId));
  return path;
}

CmpiObjectPath PlaceholderDevicePath(const std::string& nameSpace, const std::string& className) {
  return DevicePath(nameSpace, className, PlaceholderDeviceKeys());
}

CmpiInstance MakeAssociationInstance(const AssociationFields& fields) {
  CmpiInstance instance(CmpiObjectPath(fields.nameSpace.c_str(), fields.className.c_str()));
  instance.setProperty(fields.first.role.c_str(), CmpiData(fields.first.path));
  instance.setProperty(fields.second.role.c_str(), CmpiData(fields.second.path));
  return instance;
}

}  // namespace zeda::pelka
