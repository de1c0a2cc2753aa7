// One provider base per served class. It keeps the class's one provider
// object, shared by the class's instance and association factories, and
// counts the MI records handed out for it. Built when the module is loaded,
// destroyed when it is unloaded.
#ifndef ZEDA_PELKA_MODULE_PROVIDERBASES_H
#define ZEDA_PELKA_MODULE_PROVIDERBASES_H

#include <cmpi/CmpiProviderBase.h>

#include "module/ServedClasses.h"

namespace zeda::pelka::providerBase {

#define PELKA_DECLARE_PROVIDER_BASE(Class, Interfaces) extern CmpiProviderBase Class;
PELKA_SERVED_CLASSES(PELKA_DECLARE_PROVIDER_BASE)
#undef PELKA_DECLARE_PROVIDER_BASE

}  // namespace zeda::pelka::providerBase

#endif
