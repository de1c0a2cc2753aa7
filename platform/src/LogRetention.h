// How long log files are kept: the log directory holds one file per process
// that logged, and the files that earlier processes left there are removed
// once they are older than the configuration's "logs": {"keepDays": N}.
//
// glog's own cleaner (EnableLogCleaner) does not serve here: in 0.6 it runs
// only while a line is written, looks only at files of that line's severity,
// host and user, and matches nothing when the log directory's name does not
// end in a separator, as ours ("...\logs") never does.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace zeda::pelka::platform {

// Whether `fileName` is a log file of `program` as glog names them:
// <program>.<host>.<user>.log.<severity>.<yyyymmdd>-<hhmmss>.<pid>.
bool IsLogFileName(const std::string& fileName, const std::string& program);

// Removes from `directory` the log files of `program` last written before
// `cutoff`, and the links <program>.<severity> left pointing at no file.
// Nothing else in the directory is touched. Returns one message per entry
// that could not be removed ("Cannot remove old log file <path>: <reason>")
// and for a directory that could not be read.
std::vector<std::string> RemoveOldLogFiles(const std::filesystem::path& directory,
                                           const std::string& program,
                                           std::filesystem::file_time_type cutoff);

// "logs.keepDays" of the configuration file in use (Config.h), or the
// default when there is none or it cannot be read or parsed (the reader of
// the configuration, ConfiguredSources, reports a bad file), or when
// PELKA_PROGRAM_DATA names the program data instead of the configuration.
int ConfiguredKeepDays();

}  // namespace zeda::pelka::platform
