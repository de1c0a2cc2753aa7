// Logging start-up of the NAS API client library.
#pragma once

namespace zeda::Logging {

// Starts glog for `programName`, writing log files into `logDirectory`
// (created when missing). Safe to call repeatedly and from any thread; never
// throws and never aborts the process.
void Initialize(const char* programName, const char* logDirectory);

}  // namespace zeda::Logging
