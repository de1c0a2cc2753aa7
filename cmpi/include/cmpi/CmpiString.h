// CmpiString: an object-manager string: a view of one the object manager
// handed in, or the owner of one made through the broker (see CmpiOwner.h).
#ifndef ZEDA_CMPI_CMPISTRING_H
#define ZEDA_CMPI_CMPISTRING_H

#include <utility>

#include "CmpiOwner.h"
#include "cmpift.h"

class CmpiString {
 public:
  CmpiString() = default;
  // A view: the string is never released by the binding.
  explicit CmpiString(const CMPIString* enc) : enc_(enc) {}
  // Creates a new string through the broker of the current call; the last
  // copy releases it.
  CmpiString(const char* text);  // NOLINT(google-explicit-constructor): mirrors the C usage

  // The characters; nullptr for a null string.
  const char* charPtr() const;
  bool isNull() const { return enc_ == nullptr; }
  bool equals(const char* other) const;
  bool equalsIgnoreCase(const char* other) const;
  CMPIString* getEnc() const { return const_cast<CMPIString*>(enc_); }

 private:
  friend class CmpiData;
  CmpiString(const CMPIString* enc, CmpiOwner owner) : enc_(enc), owner_(std::move(owner)) {}

  const CMPIString* enc_ = nullptr;
  CmpiOwner owner_;
};

#endif
