// Text the machine reports about a disk (model, serial, vendor, firmware),
// made safe for every answer that carries it: firmware and udev's \xNN
// escapes can yield control characters and bytes that are not UTF-8, which
// CIM-XML cannot carry.
#pragma once

#include <string>

namespace zeda::pelka::platform {

// `text` with every control character (below 0x20, and 0x7f) and every byte
// that is not part of a well-formed UTF-8 sequence replaced by "?".
std::string PrintableText(const std::string& text);

}  // namespace zeda::pelka::platform
