// Named values the module's answers are checked against. Status codes are the
// CMPI standard's CMPI_RC_* names (cmpi/cmpidt.h).
#ifndef ZEDA_TESTS_SUPPORT_EXPECTEDVALUES_H
#define ZEDA_TESTS_SUPPORT_EXPECTEDVALUES_H

#include <cstdint>

namespace zeda::test {

// HealthState: 5 "OK", 0 "Unknown".
inline constexpr std::uint16_t kHealthOk = 5;
inline constexpr std::uint16_t kHealthUnknown = 0;

// OperationalStatus: 0 "Unknown", 2 "OK", 3 "Degraded", 10 "Stopped".
inline constexpr std::uint16_t kOperationalStatusUnknown = 0;
inline constexpr std::uint16_t kOperationalStatusOk = 2;
inline constexpr std::uint16_t kOperationalStatusDegraded = 3;
inline constexpr std::uint16_t kOperationalStatusStopped = 10;

// EnabledState: 2 "Enabled".
inline constexpr std::uint16_t kEnabledStateEnabled = 2;

}  // namespace zeda::test

#endif
