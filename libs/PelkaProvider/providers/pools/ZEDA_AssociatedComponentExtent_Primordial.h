// Provider of the CIM class ZEDA_AssociatedComponentExtent_Primordial.
#ifndef ZEDA_PELKA_ZEDA_ASSOCIATEDCOMPONENTEXTENT_PRIMORDIAL_H
#define ZEDA_PELKA_ZEDA_ASSOCIATEDCOMPONENTEXTENT_PRIMORDIAL_H

#include "PelkaProvider.h"

namespace zeda::pelka {

class ZEDA_AssociatedComponentExtent_Primordial : public PelkaProvider {
 public:
  ZEDA_AssociatedComponentExtent_Primordial(const CmpiBroker& broker, const CmpiContext& ctx);
};

}  // namespace zeda::pelka

#endif
