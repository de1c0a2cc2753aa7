// The module-wide log directory: the product's program-data path followed by
// "\logs". The separator is a backslash on every platform, and nothing is
// checked or added: a path that already ends in a backslash gets two.
#ifndef ZEDA_PELKA_LOGDIRECTORY_H
#define ZEDA_PELKA_LOGDIRECTORY_H

#include <string>

namespace zeda::pelka {

// The log directory belonging to `programDataPath`.
std::string LogDirectoryOf(const std::string& programDataPath);

// The directory built from util::GetProgramDataPath() when the module was
// loaded; it does not change afterwards.
const std::string& LogDirectory();

}  // namespace zeda::pelka

#endif
