// The careful reading of an inventory document that simdjson refused.
#pragma once

#include <string>

#include "platform/Inventory.h"

namespace zeda::pelka::platform {

// A document that is not JSON: "line 2, column 19: syntax error while
// parsing object key - unexpected '}'; expected string literal".
struct SyntaxError {
  std::string text;
};

// Reads `jsonText` with nlohmann::json and walks it as ParseInventory does.
// Numbers beyond the range of a double (1e400, -1e400) count as very large
// reals of their sign, so that the walk names their place; integers beyond
// 64 bits are reals already. Throws SyntaxError or the walk's Problem; a
// document that is well-formed after all gives its inventory.
Inventory ReadRefusedDocument(const std::string& jsonText);

}  // namespace zeda::pelka::platform
