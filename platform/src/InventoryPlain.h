// The quick reading of an inventory document in its plain form, the form
// every inventory writer produces: each member known and named once, each
// value of its type and range, strings without NUL, known status words,
// distinct NAS names, nothing after the top-level object.
//
// It reads the text once, front to back (simdjson On Demand), and builds the
// records as it goes, without a document tree in between: the tree of a
// large inventory is two to three times the size of its text, all of it
// fresh memory at every reload.
//
// It never words a refusal. Whatever is not in the plain form, including
// every malformed document, is left to the full reading (InventoryJson.cpp),
// which checks the whole document and words the first problem. So a
// document it accepts is one the full reading accepts with the same records.
#pragma once

#include <optional>
#include <string>

#include "platform/Inventory.h"

namespace zeda::pelka::platform {

// The inventory of `jsonText`, or nothing when the text is not in the plain
// form. The text is read in place when followed by at least the parser's
// padding of spare capacity (SIMDJSON_PADDING), else from a padded copy.
std::optional<Inventory> ReadPlainInventory(const std::string& jsonText);

// The full reading of any document (InventoryJson.cpp): its inventory, or
// the first problem thrown as Problem or SyntaxError.
Inventory ReadWholeInventory(const std::string& jsonText);

}  // namespace zeda::pelka::platform
