// CmpiString: a non-owning view of an object-manager string.
#ifndef ZEDA_CMPI_CMPISTRING_H
#define ZEDA_CMPI_CMPISTRING_H

#include "cmpift.h"

class CmpiString {
 public:
  CmpiString() = default;
  explicit CmpiString(const CMPIString* enc) : enc_(enc) {}
  // Creates a new string through the broker of the current call.
  CmpiString(const char* text);  // NOLINT(google-explicit-constructor): mirrors the C usage

  // The characters; nullptr for a null string.
  const char* charPtr() const;
  bool isNull() const { return enc_ == nullptr; }
  bool equals(const char* other) const;
  bool equalsIgnoreCase(const char* other) const;
  CMPIString* getEnc() const { return const_cast<CMPIString*>(enc_); }

 private:
  const CMPIString* enc_ = nullptr;
};

#endif
