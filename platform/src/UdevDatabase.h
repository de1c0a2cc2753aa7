// The udev database entry of a block device, read from the file libudev
// itself reads (libudev cannot be pointed at another root, and the tests give
// one): <root>/run/udev/data/b<major>:<minor>, lines "<letter>:<text>", the
// properties as "E:KEY=value".
//
// An entry is used whole or not at all. It is refused, with one
// MachineProblem, when it cannot be read, is larger than 1 MiB, or has a line
// that is not udev's: longer than 64 KiB, holding a control character other
// than a tab, not starting with a letter and ":", or a property ("E:") without
// "=" or without a name. A refused entry counts as no entry: the disk is
// described from sysfs and smartctl alone, and is not free (LinuxSource.h).
#pragma once

#include <map>
#include <string>
#include <vector>

#include "MachineProblems.h"

namespace zeda::pelka::platform {

struct UdevEntry {
  bool found = false;  // udev has a usable entry for the device
  std::map<std::string, std::string> properties;
};

// The text of an entry checked and parsed: `found` and its properties, or
// not found with `problem` saying what is wrong ("line 3: binary data").
UdevEntry ParseUdevEntry(const std::string& text, std::string& problem);

// The entry of the device `devNumbers` ("major:minor"), known to the rest of
// the source as `deviceName`, which the problem names.
UdevEntry ReadUdevEntry(const std::string& root, const std::string& devNumbers,
                        const std::string& deviceName, std::vector<MachineProblem>& problems);

}  // namespace zeda::pelka::platform
