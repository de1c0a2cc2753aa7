// The inventory made of the sources of the configuration file (Config.h).
//
// Each Read() is one refresh round (run by the Refresher, never by a
// request): it checks the configuration file and every source; an unchanged
// configuration or inventory file is not parsed again; a linux source looks
// at the machine every time and takes the SMART answers that have arrived
// (its first round waits for them a little, later rounds not at all). A
// configuration or source that fails leaves the last good one in service and
// is logged with one ERROR line until it changes; with nothing good yet, the
// read fails.
#pragma once

#include <chrono>
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

// What a round read, for telling cheaply whether another is needed: the
// configuration file named and the stamps of it and of every file source.
struct ReadFiles {
  std::string configPath;  // as ConfigFilePath() named it
  std::vector<FileStamp> stamps;
};

// How long the first round of a linux source waits for SMART answers.
inline constexpr std::chrono::milliseconds kFirstSmartWait{400};

class ConfiguredSources {
 public:
  static ConfiguredSources& Instance();

  // `askSmartAgain` false: linux sources take in the SMART answers that have
  // arrived and start no smartctl.
  ConfiguredRead Read(bool askSmartAgain = true);

  // The files the last round read (empty before the first); shared, so that
  // a look-up takes them without a copy.
  std::shared_ptr<const ReadFiles> Files();

  // Waits until a SMART answer under way arrives for some linux source, at
  // most until `deadline`; returns at once (false) when none is under way.
  bool AwaitSmartAnswers(std::chrono::steady_clock::time_point deadline);
  // Whether SMART answers are under way for some linux source.
  bool SmartAsking();

  // How often the served machines are looked at again: the shortest
  // "rescanSeconds" of the linux sources; none without a linux source.
  std::optional<std::chrono::milliseconds> RescanInterval();

  // "programData" of the configuration in service, if it names one.
  std::optional<std::string> ProgramData();

 private:
  // One source of the configuration in service with its last good answer.
  struct Source {
    SourceConfig config;
    std::shared_ptr<LinuxSource> machine;  // linux sources
    bool smartWaited = false;              // its first round has waited for SMART
    std::optional<FileStamp> fileStamp;    // file sources: the stamp of the last read
    std::optional<std::vector<NasRecord>> lastGood;
    std::string lastError;  // logged once
  };

  ConfiguredSources() = default;
  // Expects configMutex_ to be held.
  bool RefreshConfig(std::string& error);
  void Install(Config config);
  // Expect roundMutex_ to be held.
  std::optional<std::vector<NasRecord>> ReadSource(Source& source, bool askSmartAgain,
                                                   std::string& error);
  void ReadFileSource(Source& source);

  // One round at a time; the configuration is also read, without the
  // sources, for ProgramData while a round runs.
  std::mutex roundMutex_;
  std::mutex configMutex_;
  std::optional<FileStamp> configStamp_;
  std::string configPath_;
  std::string configError_;       // of the last read of the configuration file, logged once
  std::optional<Config> config_;  // the configuration in service
  std::vector<std::shared_ptr<Source>> sources_;
  std::string duplicateError_;  // a NAS name served by two sources, logged once (round)
  std::mutex filesMutex_;
  // Of the last round.
  std::shared_ptr<const ReadFiles> files_ = std::make_shared<const ReadFiles>();
  std::vector<std::shared_ptr<LinuxSource>> machines_;  // of the last round
};

}  // namespace zeda::pelka::platform
