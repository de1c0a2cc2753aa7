// Taking a pool InstanceID ("ZEDA:nas1:PrimordialPool2") apart again.
#ifndef ZEDA_PELKA_POOLINSTANCEID_H
#define ZEDA_PELKA_POOLINSTANCEID_H

#include <string>

namespace zeda::pelka {

struct PoolInstanceIdParts {
  std::string systemName;  // "ZEDA:nas1"
  std::string nasName;     // "nas1"
  int poolNumber = 0;      // 2; not range-checked
};

// With L the position of the last ":" and F that of the first:
// - system name: the text before L (the whole text when there is no ":");
// - NAS name: the text from F + 1 on, L - F - 1 characters long;
// - pool number: std::stoi of the text from L + 15 on, i.e. after
//   ":PrimordialPool".
// The positions are unsigned and wrap around as such: without ":" the NAS
// name is the whole text and the pool number is read from position 14
// (so "InstanceID_SPP" gives an empty number text); with a single ":" the
// NAS name is everything after it. Failures, all before any NAS look-up:
// std::out_of_range "invalid string position" when L + 15 lies past the end,
// std::invalid_argument "invalid stoi argument" when the number text does not
// start with digits, std::out_of_range "stoi argument out of range" when it
// does not fit an int.
PoolInstanceIdParts ParsePoolInstanceId(const std::string& instanceId);

}  // namespace zeda::pelka

#endif
