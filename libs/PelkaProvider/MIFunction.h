// MIFunction: root of every delegate, the function object that serves one
// CMPI operation of one provider class.
#ifndef ZEDA_PELKA_MIFUNCTION_H
#define ZEDA_PELKA_MIFUNCTION_H

namespace zeda::pelka {

class PelkaProvider;

class MIFunction {
 public:
  MIFunction() = default;
  virtual ~MIFunction();
  MIFunction(const MIFunction&) = delete;
  MIFunction& operator=(const MIFunction&) = delete;

  // The provider whose delegate table holds this delegate (non-owning).
  PelkaProvider* owner() const { return owner_; }
  void setOwner(PelkaProvider* owner) { owner_ = owner; }

 private:
  PelkaProvider* owner_ = nullptr;
};

}  // namespace zeda::pelka

#endif
