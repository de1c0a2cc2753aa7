#include "LogRetention.h"

#include <array>
#include <cstdlib>
#include <fstream>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <system_error>

#include "Config.h"

namespace zeda::pelka::platform {

namespace fs = std::filesystem;

namespace {

constexpr std::array<const char*, 4> kSeverities = {"INFO", "WARNING", "ERROR", "FATAL"};

// What follows "<program>." in a log file's name.
const std::regex& LogFileTail() {
  static const std::regex tail(R"(.+\.log\.(INFO|WARNING|ERROR|FATAL)\.[0-9]{8}-[0-9]{6}\.[0-9]+)");
  return tail;
}

bool IsLinkName(const std::string& fileName, const std::string& program) {
  for (const char* severity : kSeverities) {
    if (fileName == program + "." + severity) return true;
  }
  return false;
}

bool IsOld(const fs::directory_entry& entry, fs::file_time_type cutoff, std::error_code& error) {
  const fs::file_time_type written = entry.last_write_time(error);
  return !error && written < cutoff;
}

}  // namespace

bool IsLogFileName(const std::string& fileName, const std::string& program) {
  const std::string prefix = program + ".";
  return fileName.size() > prefix.size() && fileName.compare(0, prefix.size(), prefix) == 0 &&
         std::regex_match(fileName.begin() + static_cast<std::ptrdiff_t>(prefix.size()),
                          fileName.end(), LogFileTail());
}

std::vector<std::string> RemoveOldLogFiles(const fs::path& directory, const std::string& program,
                                           fs::file_time_type cutoff) {
  std::vector<std::string> problems;
  const auto removeIf = [&problems](const fs::path& path, bool remove, std::error_code error) {
    if (!error && remove) fs::remove(path, error);
    if (error) {
      problems.push_back("Cannot remove old log file " + path.string() + ": " + error.message());
    }
  };
  std::vector<fs::path> links;
  std::error_code listing;
  for (fs::directory_iterator entry(directory, listing);
       !listing && entry != fs::directory_iterator(); entry.increment(listing)) {
    const std::string name = entry->path().filename().string();
    if (IsLinkName(name, program)) {
      links.push_back(entry->path());
    } else if (IsLogFileName(name, program)) {
      std::error_code error;
      const bool old = entry->is_regular_file(error) && !error && IsOld(*entry, cutoff, error);
      removeIf(entry->path(), old, error);
    }
  }
  if (listing) {
    problems.push_back("Cannot read log directory " + directory.string() + ": " +
                       listing.message());
  }
  // A link glog made to the newest file of a severity stays while that file
  // does; links are looked at once the old files are gone.
  for (const fs::path& link : links) {
    std::error_code error;
    const bool dangling = fs::is_symlink(link, error) && !error && !fs::exists(link, error);
    removeIf(link, dangling, error);
  }
  return problems;
}

int ConfiguredKeepDays() {
  // The logs section is read with the program data (ProgramData.cpp): where
  // the environment names the program data, the configuration does not
  // decide about its logs either, and is not read for them.
  const char* programData = std::getenv("PELKA_PROGRAM_DATA");
  if (programData != nullptr && *programData != '\0') return kDefaultKeepDays;
  const ConfigFileName name = ConfigFilePath();
  if (name.path.empty()) return kDefaultKeepDays;
  std::ifstream file(name.path);
  if (!file) return kDefaultKeepDays;
  std::ostringstream text;
  text << file.rdbuf();
  try {
    return ParseConfig(text.str(), name.path).logs.keepDays;
  } catch (const std::runtime_error&) {
    return kDefaultKeepDays;
  }
}

}  // namespace zeda::pelka::platform
