#include "FailureWrapper.h"

#include <exception>

#include <glog/logging.h>

#include "Exception.h"

namespace zeda::pelka {

namespace {

void LogError(int line, const std::string& text) {
  google::LogMessage(kLogSource, line, google::GLOG_ERROR).stream() << text;
}

// Codes are written as decimal integers, whatever type CMPIrc has.
std::string Code(CMPIrc rc) { return std::to_string(static_cast<long long>(rc)); }

CmpiStatus Convert(const std::string& className, int line) {
  try {
    throw;
  } catch (const ProviderException& e) {
    LogError(line, className + ": " + e.what() + " (RC=" + Code(e.status().rc()) + ")");
    return e.status();
  } catch (const CmpiStatus& status) {
    LogError(line, className + ": CmpiStatus.rc() = " + Code(status.rc()));
    return status;
  } catch (const std::exception& e) {
    // what() of a foreign exception may give no text at all.
    const char* const text = e.what();
    LogError(line, className + ": " + (text != nullptr ? text : ""));
    return CmpiStatus(CMPI_RC_ERROR, text);
  } catch (...) {
    LogError(line, className + ": Unknown error");
    return CmpiStatus(CMPI_RC_ERROR, "Unknown error");
  }
}

}  // namespace

CmpiStatus StatusOfCurrentException(const std::string& className, int line) noexcept {
  try {
    return Convert(className, line);
  } catch (...) {
    // Building the log text or the status ran out of memory: the object
    // manager still gets an answer.
    return CmpiStatus(CMPI_RC_ERROR);
  }
}

}  // namespace zeda::pelka
