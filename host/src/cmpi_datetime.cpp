// CMPIDateTime and the CIM datetime text form.
#include <chrono>
#include <cstdio>

#include "objects.hpp"

namespace zeda::host::detail {

namespace {

constexpr std::uint64_t kMicrosPerSecond = 1000000;
constexpr std::uint64_t kSecondsPerDay = 86400;

// Days since 1970-01-01 of a proleptic Gregorian date (civil calendar).
std::int64_t daysFromCivil(std::int64_t y, unsigned m, unsigned d) {
  y -= m <= 2 ? 1 : 0;
  const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
  const auto yoe = static_cast<unsigned>(y - era * 400);
  const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + static_cast<std::int64_t>(doe) - 719468;
}

void civilFromDays(std::int64_t z, std::int64_t& y, unsigned& m, unsigned& d) {
  z += 719468;
  const std::int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const auto doe = static_cast<unsigned>(z - era * 146097);
  const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  y = static_cast<std::int64_t>(yoe) + era * 400;
  const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const unsigned mp = (5 * doy + 2) / 153;
  d = doy - (153 * mp + 2) / 5 + 1;
  m = mp < 10 ? mp + 3 : mp - 9;
  y += m <= 2 ? 1 : 0;
}

bool digits(const std::string& s, std::size_t pos, std::size_t n, std::uint64_t& out) {
  out = 0;
  for (std::size_t i = pos; i < pos + n; ++i) {
    if (s[i] < '0' || s[i] > '9') return false;
    out = out * 10 + static_cast<std::uint64_t>(s[i] - '0');
  }
  return true;
}

}  // namespace

bool parseDateTime(const std::string& text, std::uint64_t& micros, bool& interval) {
  if (text.size() != 25 || text[14] != '.') return false;
  std::uint64_t hh = 0, mm = 0, ss = 0, us = 0, tail = 0;
  if (!digits(text, 8, 2, hh) || !digits(text, 10, 2, mm) || !digits(text, 12, 2, ss) ||
      !digits(text, 15, 6, us) || !digits(text, 22, 3, tail)) {
    return false;
  }
  if (hh > 23 || mm > 59 || ss > 59) return false;
  const std::uint64_t dayMicros = ((hh * 60 + mm) * 60 + ss) * kMicrosPerSecond + us;
  if (text[21] == ':') {
    std::uint64_t days = 0;
    if (!digits(text, 0, 8, days) || tail != 0) return false;
    interval = true;
    micros = days * kSecondsPerDay * kMicrosPerSecond + dayMicros;
    return true;
  }
  if (text[21] != '+' && text[21] != '-') return false;
  std::uint64_t year = 0, month = 0, day = 0;
  if (!digits(text, 0, 4, year) || !digits(text, 4, 2, month) || !digits(text, 6, 2, day))
    return false;
  if (month < 1 || month > 12 || day < 1 || day > 31) return false;
  const std::int64_t days = daysFromCivil(static_cast<std::int64_t>(year),
                                          static_cast<unsigned>(month), static_cast<unsigned>(day));
  // Local time = UTC + offset, so UTC = local - offset.
  const std::int64_t offsetMinutes = (text[21] == '+' ? 1 : -1) * static_cast<std::int64_t>(tail);
  const std::int64_t total = days * static_cast<std::int64_t>(kSecondsPerDay * kMicrosPerSecond) +
                             static_cast<std::int64_t>(dayMicros) -
                             offsetMinutes * 60 * static_cast<std::int64_t>(kMicrosPerSecond);
  if (total < 0) return false;  // before the epoch: not representable in binary form
  interval = false;
  micros = static_cast<std::uint64_t>(total);
  return true;
}

std::string formatDateTime(std::uint64_t micros, bool interval) {
  const std::uint64_t us = micros % kMicrosPerSecond;
  const std::uint64_t totalSeconds = micros / kMicrosPerSecond;
  const std::uint64_t days = totalSeconds / kSecondsPerDay;
  const std::uint64_t secs = totalSeconds % kSecondsPerDay;
  char buf[40];
  if (interval) {
    std::snprintf(buf, sizeof buf, "%08llu%02llu%02llu%02llu.%06llu:000",
                  static_cast<unsigned long long>(days % 100000000),
                  static_cast<unsigned long long>(secs / 3600),
                  static_cast<unsigned long long>(secs / 60 % 60),
                  static_cast<unsigned long long>(secs % 60), static_cast<unsigned long long>(us));
  } else {
    std::int64_t y = 0;
    unsigned m = 0, d = 0;
    civilFromDays(static_cast<std::int64_t>(days), y, m, d);
    std::snprintf(buf, sizeof buf, "%04lld%02u%02u%02llu%02llu%02llu.%06llu+000",
                  static_cast<long long>(y % 10000), m, d,
                  static_cast<unsigned long long>(secs / 3600),
                  static_cast<unsigned long long>(secs / 60 % 60),
                  static_cast<unsigned long long>(secs % 60), static_cast<unsigned long long>(us));
  }
  return buf;
}

DateTimeObj::DateTimeObj(Broker& b, std::uint64_t us, bool iv, std::optional<std::string> t)
    : Enc(b, &b.tables().dateTime), micros(us), interval(iv), text(std::move(t)) {}

DateTimeObj* makeDateTime(Broker& b, std::uint64_t micros, bool interval,
                          std::optional<std::string> text) {
  return b.store().adopt(std::make_unique<DateTimeObj>(b, micros, interval, std::move(text)));
}

namespace {

CMPIStatus release(CMPIDateTime* dt) { return releaseFace<DateTimeObj>(dt); }

CMPIDateTime* clone(const CMPIDateTime* dt, CMPIStatus* rc) {
  return cloneFace<DateTimeObj>(dt, rc, [](const DateTimeObj& o) {
    return std::make_unique<DateTimeObj>(o.broker(), o.micros, o.interval, o.text);
  });
}

CMPIUint64 getBinaryFormat(const CMPIDateTime* dt, CMPIStatus* rc) {
  DateTimeObj* o = unwrap<DateTimeObj>(dt);
  if (o == nullptr) {
    setStatus(rc, CMPI_RC_ERR_INVALID_HANDLE);
    return 0;
  }
  setStatus(rc, CMPI_RC_OK);
  return o->micros;
}

CMPIString* getStringFormat(const CMPIDateTime* dt, CMPIStatus* rc) {
  return guardedValue<CMPIString*>(rc, nullptr, [&]() -> CMPIString* {
    DateTimeObj* o = unwrap<DateTimeObj>(dt);
    if (o == nullptr) throw RcError(CMPI_RC_ERR_INVALID_HANDLE);
    setStatus(rc, CMPI_RC_OK);
    return makeString(o->broker(), o->text ? *o->text : formatDateTime(o->micros, o->interval))
        ->face();
  });
}

CMPIBoolean isInterval(const CMPIDateTime* dt, CMPIStatus* rc) {
  DateTimeObj* o = unwrap<DateTimeObj>(dt);
  if (o == nullptr) {
    setStatus(rc, CMPI_RC_ERR_INVALID_HANDLE);
    return 0;
  }
  setStatus(rc, CMPI_RC_OK);
  return o->interval ? 1 : 0;
}

}  // namespace

void fillDateTimeFT(CMPIDateTimeFT& ft) {
  ft.ftVersion = CMPIVersion200;
  ft.release = release;
  ft.clone = clone;
  ft.getBinaryFormat = getBinaryFormat;
  ft.getStringFormat = getStringFormat;
  ft.isInterval = isInterval;
}

std::uint64_t nowMicros() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return static_cast<std::uint64_t>(
      std::chrono::duration_cast<std::chrono::microseconds>(now).count());
}

}  // namespace zeda::host::detail
