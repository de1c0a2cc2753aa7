#include "MIFunction.h"

namespace zeda::pelka {

MIFunction::~MIFunction() = default;

}  // namespace zeda::pelka
