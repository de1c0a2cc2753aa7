// One managed NAS device as the utility library lists it. The library owns
// every Nas; callers hold references and never copy or free one.
#pragma once

#include <string>

namespace zeda::pelka {

struct Nas {
  std::string name;

  // The NAS whose name equals `name` exactly; throws std::runtime_error
  // "NAS not found: <name>" when there is none.
  static const Nas& Get(const std::string& name);
};

}  // namespace zeda::pelka
