// Names of the functions a shared object exports, read from its ELF dynamic
// symbol table.
#pragma once

#include <string>
#include <vector>

namespace zeda::host::detail {

// Defined, global or weak function symbols of .dynsym. Throws
// std::runtime_error when the file cannot be read or is not ELF.
std::vector<std::string> exportedFunctions(const std::string& path);

}  // namespace zeda::host::detail
