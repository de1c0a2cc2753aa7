// Object-path readers of the providers, on the CMPI binding.
#pragma once

#include <string>

// The CMPI binding's object path (header <cmpi/CmpiObjectPath.h>).
class CmpiObjectPath;

namespace zeda::pelka::cmpi {

// The string value of the key `key` of `path`. Throws the binding's
// CmpiStatus when the key is absent or not a string.
std::string GetString(const CmpiObjectPath& path, const char* key);

// The class name of `path`.
std::string GetClassName(const CmpiObjectPath& path);

}  // namespace zeda::pelka::cmpi
