// Provider of the CIM class ZEDA_MediaPresent.
#ifndef ZEDA_PELKA_ZEDA_MEDIAPRESENT_H
#define ZEDA_PELKA_ZEDA_MEDIAPRESENT_H

#include "PelkaProvider.h"

namespace zeda::pelka {

class ZEDA_MediaPresent : public PelkaProvider {
 public:
  ZEDA_MediaPresent(const CmpiBroker& broker, const CmpiContext& ctx);
};

}  // namespace zeda::pelka

#endif
