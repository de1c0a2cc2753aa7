// CmpiArray: an object-manager array: a view of one the object manager handed
// in, or the owner of one made through the broker (see CmpiOwner.h).
#ifndef ZEDA_CMPI_CMPIARRAY_H
#define ZEDA_CMPI_CMPIARRAY_H

#include <utility>

#include "CmpiData.h"
#include "CmpiOwner.h"

class CmpiArray {
 public:
  CmpiArray() = default;
  // A view: the array is never released by the binding.
  explicit CmpiArray(const CMPIArray* enc) : enc_(enc) {}
  // Creates an array of `size` elements of `elementType` (a simple type code,
  // without CMPI_ARRAY) through the broker of the current call; the last copy
  // releases it.
  CmpiArray(CMPICount size, CMPIType elementType);

  CMPICount size() const;
  CMPIType getSimpleType() const;
  CmpiData getElementAt(CMPICount index) const;
  void setElementAt(CMPICount index, const CmpiData& value);
  CMPIArray* getEnc() const { return const_cast<CMPIArray*>(enc_); }

 private:
  friend class CmpiData;
  CmpiArray(const CMPIArray* enc, CmpiOwner owner) : enc_(enc), owner_(std::move(owner)) {}

  const CMPIArray* enc_ = nullptr;
  CmpiOwner owner_;
};

#endif
