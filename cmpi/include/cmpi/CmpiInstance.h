// CmpiInstance: an object-manager instance: a view of one the object manager
// handed in, or the owner of one made through the broker (see CmpiOwner.h).
#ifndef ZEDA_CMPI_CMPIINSTANCE_H
#define ZEDA_CMPI_CMPIINSTANCE_H

#include <utility>

#include "CmpiData.h"
#include "CmpiObjectPath.h"

class CmpiInstance {
 public:
  CmpiInstance() = default;  // a null instance; every operation on it throws
  // A view: the instance is never released by the binding.
  explicit CmpiInstance(const CMPIInstance* enc) : enc_(enc) {}
  // Creates an instance on `path` through the broker of the current call; the
  // last copy releases it.
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
  friend class CmpiData;
  CmpiInstance(const CMPIInstance* enc, CmpiOwner owner) : enc_(enc), owner_(std::move(owner)) {}

  const CMPIInstance* enc_ = nullptr;
  CmpiOwner owner_;
};

#endif
