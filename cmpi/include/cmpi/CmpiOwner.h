// CmpiOwner: shared ownership of an object the binding made through the
// broker (newString, newObjectPath, newInstance, newArray, newArgs,
// newDateTime...). The CMPI standard lets a provider release such an object
// once it no longer uses it, and the object manager may then free it at once:
// a provider that returns many results then runs in memory that does not grow
// with them. The last copy of an owner releases the object, exactly once.
//
// Objects the object manager hands to the provider (call arguments, values
// read from its objects, results of up-calls) are never owned: the object
// manager frees them itself and a release by the provider would be an error.
//
// Releasing is safe only where every object manager copies what it is given.
// Where one of them keeps the provider's object instead (an encapsulated
// value given to CMPIArrayFT.setElementAt is kept by pointer in both sfcb
// and OpenPegasus, see docs/OBJECT_MANAGERS.md), the object is handed over:
// no owner releases it, and the object manager frees it when the provider
// call ends. An owned object must not outlive the provider call that made
// it: the object manager frees what is left of a call when it ends.
#ifndef ZEDA_CMPI_CMPIOWNER_H
#define ZEDA_CMPI_CMPIOWNER_H

#include <memory>

#include "CmpiOwnerBlocks.h"
#include "cmpift.h"

class CmpiOwner {
 public:
  CmpiOwner() = default;  // owns nothing

  // Takes over `enc`, made by the broker for this provider; a null `enc`
  // gives an owner of nothing.
  template <class Enc>
  static CmpiOwner of(const Enc* enc) {
    CmpiOwner owner;
    if (enc != nullptr) {
      owner.ref_ =
          std::shared_ptr<const void>(static_cast<const void*>(enc), Releaser{&release<Enc>},
                                      cmpi_detail::OwnerBlockAllocator<char>());
    }
    return owner;
  }

  // Leaves the object to the object manager, which may keep it: neither
  // this owner nor any copy of it releases it; the object manager frees it
  // when the provider call ends.
  void handOver() const noexcept;

 private:
  // The deleter of the shared state: releases the object unless it was
  // handed over.
  struct Releaser {
    void (*release)(const void* enc) noexcept;
    bool handedOver = false;
    void operator()(const void* enc) const noexcept {
      if (!handedOver) {
        release(enc);
      }
    }
  };

  // A failed release leaves the object to the object manager, which frees it
  // with the call; there is nothing better to do from a destructor.
  template <class Enc>
  static void release(const void* object) noexcept {
    const auto* enc = static_cast<const Enc*>(object);
    if (enc->ft != nullptr && enc->ft->release != nullptr) {
      enc->ft->release(const_cast<Enc*>(enc));
    }
  }

  std::shared_ptr<const void> ref_;
};

#endif
