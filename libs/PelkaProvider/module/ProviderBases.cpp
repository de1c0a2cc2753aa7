#include "module/ProviderBases.h"

namespace zeda::pelka::providerBase {

#define PELKA_DEFINE_PROVIDER_BASE(Class, Interfaces) CmpiProviderBase Class;
PELKA_SERVED_CLASSES(PELKA_DEFINE_PROVIDER_BASE)
#undef PELKA_DEFINE_PROVIDER_BASE

}  // namespace zeda::pelka::providerBase
