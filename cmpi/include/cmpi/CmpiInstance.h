// CmpiInstance: a non-owning view of an object-manager instance.
#ifndef ZEDA_CMPI_CMPIINSTANCE_H
#define ZEDA_CMPI_CMPIINSTANCE_H

#include "CmpiData.h"
#include "CmpiObjectPath.h"

class CmpiInstance {
 public:
  CmpiInstance() = default;  // a null instance; every operation on it throws
  explicit CmpiInstance(const CMPIInstance* enc) : enc_(enc) {}
  // Creates an instance on `path` through the broker of the current call.
  explicit CmpiInstance(const CmpiObjectPath& path);

  CmpiData getProperty(const char* name) const;
  CmpiData getProperty(unsigned int index, CmpiString* name = nullptr) const;
  unsigned int getPropertyCount() const;
  void setProperty(const char* name, const CmpiData& value);

  CmpiObjectPath getObjectPath() const;
  void setObjectPath(const CmpiObjectPath& path);
  // After this, properties that are neither in `properties` nor in `keys` are
  // dropped silently by setProperty. Both lists are null-terminated.
  void setPropertyFilter(const char** properties, const char** keys);

  bool isNull() const { return enc_ == nullptr; }
  CMPIInstance* getEnc() const { return const_cast<CMPIInstance*>(enc_); }

 private:
  const CMPIInstance* enc_ = nullptr;
};

#endif
