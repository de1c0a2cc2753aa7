// The inventory made of the sources of the configuration file (Config.h).
//
// Each Read() checks the configuration file and every source: an unchanged
// configuration or inventory file is not parsed again; a linux source looks
// at the machine every time (its SMART answers are cached). A configuration
// or source that fails leaves the last good one in service and is logged with
// one ERROR line until it changes; with nothing good yet, the read fails.
#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "Config.h"
#include "InventoryFile.h"
#include "LinuxSource.h"
#include "platform/Inventory.h"

namespace zeda::pelka::platform {

struct ConfiguredRead {
  bool configured = false;             // false: no configuration file, serve as without one
  std::optional<Inventory> inventory;  // every source's NAS devices, in source order
  std::string error;                   // why there is no inventory
};

class ConfiguredSources {
 public:
  static ConfiguredSources& Instance();

  ConfiguredRead Read();

  // "programData" of the configuration in service, if it names one.
  std::optional<std::string> ProgramData();

 private:
  // One source of the configuration in service with its last good answer.
  struct Source {
    SourceConfig config;
    std::unique_ptr<LinuxSource> machine;  // linux sources
    std::optional<FileStamp> fileStamp;    // file sources: the stamp of the last read
    std::optional<std::vector<NasRecord>> lastGood;
    std::string lastError;  // logged once
  };

  ConfiguredSources() = default;
  // All below expect mutex_ to be held.
  bool RefreshConfig(std::string& error);
  void Install(Config config);
  std::optional<std::vector<NasRecord>> ReadSource(Source& source, std::string& error);
  void ReadFileSource(Source& source);

  std::mutex mutex_;
  std::optional<FileStamp> configStamp_;
  std::string configPath_;
  std::string configError_;       // of the last read of the configuration file, logged once
  std::optional<Config> config_;  // the configuration in service
  std::vector<Source> sources_;
  std::string duplicateError_;  // a NAS name served by two sources, logged once
};

}  // namespace zeda::pelka::platform
