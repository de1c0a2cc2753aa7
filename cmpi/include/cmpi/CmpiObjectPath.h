// CmpiObjectPath: an object-manager object path (namespace, host, class name
// and ordered keys): a view of one the object manager handed in, or the owner
// of one made through the broker (see CmpiOwner.h).
#ifndef ZEDA_CMPI_CMPIOBJECTPATH_H
#define ZEDA_CMPI_CMPIOBJECTPATH_H

#include <utility>

#include "CmpiData.h"
#include "CmpiOwner.h"
#include "CmpiString.h"

class CmpiObjectPath {
 public:
  CmpiObjectPath() = default;  // a null path; every operation on it throws
  // A view: the path is never released by the binding.
  explicit CmpiObjectPath(const CMPIObjectPath* enc) : enc_(enc) {}
  // Creates a path with namespace and class name through the broker of the
  // current call; the last copy releases it.
  CmpiObjectPath(const CmpiString& nameSpace, const char* className);
  CmpiObjectPath(const char* nameSpace, const char* className);

  CmpiString getNameSpace() const;
  void setNameSpace(const char* nameSpace);
  CmpiString getHostname() const;
  void setHostname(const char* hostname);
  CmpiString getClassName() const;
  void setClassName(const char* className);

  // The key's value; throws the object manager's status (CMPI_RC_ERR_NOT_FOUND)
  // when the path has no such key.
  CmpiData getKey(const char* name) const;
  CmpiData getKey(unsigned int index, CmpiString* name = nullptr) const;
  unsigned int getKeyCount() const;
  // Adds the key, or replaces the value of an existing one in place.
  void setKey(const char* name, const CmpiData& value);

  CmpiString toString() const;
  bool isNull() const { return enc_ == nullptr; }
  CMPIObjectPath* getEnc() const { return const_cast<CMPIObjectPath*>(enc_); }

 private:
  friend class CmpiData;
  friend class CmpiResult;  // hands a created instance's path over
  CmpiObjectPath(const CMPIObjectPath* enc, CmpiOwner owner)
      : enc_(enc), owner_(std::move(owner)) {}

  const CMPIObjectPath* enc_ = nullptr;
  CmpiOwner owner_;
};

#endif
