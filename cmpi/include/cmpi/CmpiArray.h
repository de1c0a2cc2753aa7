// CmpiArray: a non-owning view of an object-manager array.
#ifndef ZEDA_CMPI_CMPIARRAY_H
#define ZEDA_CMPI_CMPIARRAY_H

#include "CmpiData.h"

class CmpiArray {
 public:
  CmpiArray() = default;
  explicit CmpiArray(const CMPIArray* enc) : enc_(enc) {}
  // Creates an array of `size` elements of `elementType` (a simple type code,
  // without CMPI_ARRAY) through the broker of the current call.
  CmpiArray(CMPICount size, CMPIType elementType);

  CMPICount size() const;
  CMPIType getSimpleType() const;
  CmpiData getElementAt(CMPICount index) const;
  void setElementAt(CMPICount index, const CmpiData& value);
  CMPIArray* getEnc() const { return const_cast<CMPIArray*>(enc_); }

 private:
  const CMPIArray* enc_ = nullptr;
};

#endif
