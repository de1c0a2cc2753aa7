#include "providers/common/CimValues.h"

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

CmpiArray StringArray(const char* value) {
  CmpiArray array(1, CMPI_string);
  array.setElementAt(0, CmpiData(value));
  return array;
}

CmpiObjectPath ComputerSystemPath(const std::string& nameSpace, const std::string& name) {
  CmpiObjectPath path(nameSpace.c_str(), "ZEDA_ComputerSystem");
  path.setKey("CreationClassName", CmpiData("ZEDA_ComputerSystem"));
  path.setKey("Name", CmpiData(name));
  return path;
}

CmpiObjectPath DevicePath(const std::string& nameSpace, const char* className,
                          const std::string& systemCreationClassName,
                          const std::string& systemName,
                          const std::string& creationClassName, const std::string& deviceId) {
  CmpiObjectPath path(nameSpace.c_str(), className);
  path.setKey("SystemCreationClassName", CmpiData(systemCreationClassName));
  path.setKey("SystemName", CmpiData(systemName));
  path.setKey("CreationClassName", CmpiData(creationClassName));
  path.setKey("DeviceID", CmpiData(deviceId));
  return path;
}

CmpiObjectPath PlaceholderDevicePath(const std::string& nameSpace, const char* className) {
  return DevicePath(nameSpace, className, "ZEDA_SystemCreationClassName", "ZEDA_SystemName",
                    "ZEDA_CreationClassName", "ZEDA_DeviceID");
}

CmpiInstance AssociationInstance(const std::string& nameSpace, const char* className,
                                 const char* firstRole, const CmpiObjectPath& first,
                                 const char* secondRole, const CmpiObjectPath& second) {
  CmpiInstance instance(CmpiObjectPath(nameSpace.c_str(), className));
  instance.setProperty(firstRole, CmpiData(first));
  instance.setProperty(secondRole, CmpiData(second));
  return instance;
}

}  // namespace zeda::pelka
