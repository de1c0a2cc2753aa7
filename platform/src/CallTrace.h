// Call trace of the library and NAS API, for tests and diagnosis. When the
// environment variable PELKA_NAS_TRACE names a file, every call appends one
// line "<nas>\t<call>\t<argument>" ("-" where no NAS is involved, empty
// argument where there is none). The variable is read on every call.
#pragma once

#include <string>

namespace zeda::pelka::platform {

void TraceCall(const std::string& nas, const char* call, const std::string& argument);

}  // namespace zeda::pelka::platform
