// CmpiProviderBase: the per-class anchor of a provider module. It remembers
// the one provider object of its class and counts the MI records handed out
// for it; the clean-up driver destroys the object when the count drops to 0.
#ifndef ZEDA_CMPI_CMPIPROVIDERBASE_H
#define ZEDA_CMPI_CMPIPROVIDERBASE_H

#include <memory>

class CmpiBaseMI;

class CmpiProviderBase {
 public:
  CmpiProviderBase();
  ~CmpiProviderBase();
  CmpiProviderBase(const CmpiProviderBase&) = delete;
  CmpiProviderBase& operator=(const CmpiProviderBase&) = delete;

  CmpiBaseMI* getBaseMI() const { return baseMI_.get(); }
  // Takes ownership of `mi` (may be null), destroying the object held before.
  void setBaseMI(CmpiBaseMI* mi);
  // Gives up ownership without destroying the object.
  std::unique_ptr<CmpiBaseMI> releaseBaseMI();

  void incUseCount() { ++useCount_; }
  // Returns the count after decrementing.
  int decUseCount() { return --useCount_; }
  int getUseCount() const { return useCount_; }

 private:
  std::unique_ptr<CmpiBaseMI> baseMI_;
  int useCount_ = 0;
};

#endif
