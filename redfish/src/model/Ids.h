// How NAS names and disk identifiers become one segment of a resource path
// and the Id property of a resource, and back.
//
// A name made only of the characters A-Z a-z 0-9 - . _ : ~ that does not
// start with "~" (and is not "." or "..") is its own segment: "nas1", "0:3",
// "wwn-0x5000c500a1b2c3d4", "sata-X_Y~2". Any other name, the empty one
// included, becomes "~" followed by the lower-case hexadecimal of its bytes:
// "disk 7" gives "~6469736b2037", "a/b" gives "~612f62". Both forms need no percent-encoding, so
// the segment reaches the service unchanged whatever a client does to it, and every name has
// exactly one segment: a "~" segment that decodes to a plain name is refused.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zeda::redfish::model {

// The segment (and Id) of `name`.
std::string SegmentOf(std::string_view name);

// The name of a segment, or nothing when no name has that segment.
std::optional<std::string> NameOfSegment(std::string_view segment);

}  // namespace zeda::redfish::model
