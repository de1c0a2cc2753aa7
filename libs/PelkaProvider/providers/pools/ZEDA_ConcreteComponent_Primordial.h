// Provider of the CIM class ZEDA_ConcreteComponent_Primordial.
#ifndef ZEDA_PELKA_ZEDA_CONCRETECOMPONENT_PRIMORDIAL_H
#define ZEDA_PELKA_ZEDA_CONCRETECOMPONENT_PRIMORDIAL_H

#include "PelkaProvider.h"

namespace zeda::pelka {

class ZEDA_ConcreteComponent_Primordial : public PelkaProvider {
 public:
  ZEDA_ConcreteComponent_Primordial(const CmpiBroker& broker, const CmpiContext& ctx);
};

}  // namespace zeda::pelka

#endif
