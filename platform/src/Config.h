// The configuration file of the library: where the product keeps its data and
// which sources the served inventory is made of, in this shape:
//
// {"programData": "/var/lib/pelka",
//  "sources": [{"type": "file", "path": "/var/lib/pelka/inventory.json"},
//              {"type": "linux", "nas": "nas-a", "smartTtlSeconds": 300,
//               "smartTimeoutSeconds": 5, "rescanSeconds": 5}],
//  "logs": {"keepDays": 7}}
//
// A "file" source serves every NAS of an inventory file; a "linux" source
// serves the machine the library runs on as one NAS (see LinuxSource.h).
// "logs" says how long the log files of earlier processes are kept (see
// LogRetention.h).
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace zeda::pelka::platform {

struct FileSourceConfig {
  std::string path;
};

struct LinuxSourceConfig {
  std::string nas;                    // the NAS name; the host name when not configured
  std::string root = "/";             // where sys/, run/udev/ and proc/ are found
  std::string smartctl = "smartctl";  // a name is looked up in PATH, then /usr/sbin and /sbin
  std::chrono::seconds smartTtl{300};
  std::chrono::milliseconds smartTimeout{5000};
  // How often the machine's disks are looked at again (0.1 s at least).
  std::chrono::milliseconds rescan{5000};

  bool operator==(const LinuxSourceConfig& other) const;
};

struct SourceConfig {
  std::string place;  // "sources[1]", for messages
  std::optional<FileSourceConfig> fileSource;
  std::optional<LinuxSourceConfig> linuxSource;
};

// The log files: those last written more than keepDays ago are removed when
// logging starts in a process. A whole number of days, 1 to kMaxKeepDays.
inline constexpr int kDefaultKeepDays = 7;
inline constexpr int kMaxKeepDays = 3650;
struct LogsConfig {
  int keepDays = kDefaultKeepDays;
};

struct Config {
  std::optional<std::string> programData;
  std::vector<SourceConfig> sources;
  LogsConfig logs;
};

// The configuration file in use: PELKA_CONFIG when set, else none when
// PELKA_INVENTORY is set (empty path), else the machine's file
// (/etc/pelka/pelka.json, see UseMachineConfigFile). `named`
// tells which (a missing file named by PELKA_CONFIG is an error; a missing
// default file means "no configuration").
struct ConfigFileName {
  std::string path;
  bool named = false;
};
ConfigFileName ConfigFilePath();

// Parses and checks configuration text. Throws std::runtime_error with one
// message naming the file, the place and the problem, e.g.
//   Bad configuration file /etc/pelka/pelka.json: sources[1].type: unknown source type "nfs"
//   (known: file, linux)
Config ParseConfig(const std::string& jsonText, const std::string& fileName);

// What a linux source without "nas" is named on a machine whose name cannot
// be read; otherwise it bears the machine's name (HostName of Basics.h).
inline constexpr char kUnnamedMachine[] = "localhost";

}  // namespace zeda::pelka::platform
