// Mapping of a NAS API health reply (healthStatus: 0 = healthy, anything else
// = unknown) to the CIM properties that report it.
#ifndef ZEDA_PELKA_HEALTH_H
#define ZEDA_PELKA_HEALTH_H

#include <cstdint>

namespace zeda::pelka {

// CIM HealthState: 5 "OK", 0 "Unknown".
constexpr std::uint16_t HealthStateOf(std::uint32_t healthStatus) {
  return healthStatus == 0 ? 5 : 0;
}

// CIM OperationalStatus derived from health alone: 2 "OK", 0 "Unknown".
constexpr std::uint16_t OperationalStatusOf(std::uint32_t healthStatus) {
  return healthStatus == 0 ? 2 : 0;
}

}  // namespace zeda::pelka

#endif
