#include "ConfiguredSources.h"

#include <set>
#include <stdexcept>

#include <glog/logging.h>

namespace zeda::pelka::platform {

namespace {

constexpr const char* kKeptNote = " (the configuration read before stays in service)";

}  // namespace

ConfiguredSources& ConfiguredSources::Instance() {
  static ConfiguredSources sources;
  return sources;
}

std::optional<std::string> ConfiguredSources::ProgramData() {
  const std::lock_guard<std::mutex> lock(configMutex_);
  std::string error;
  RefreshConfig(error);
  return config_ ? config_->programData : std::nullopt;
}

std::shared_ptr<const ReadFiles> ConfiguredSources::Files() {
  const std::lock_guard<std::mutex> lock(filesMutex_);
  return files_;
}

std::optional<std::chrono::milliseconds> ConfiguredSources::RescanInterval() {
  const std::lock_guard<std::mutex> lock(filesMutex_);
  std::optional<std::chrono::milliseconds> shortest;
  for (const auto& machine : machines_) {
    const auto rescan = machine->Settings().rescan;
    if (!shortest || rescan < *shortest) shortest = rescan;
  }
  return shortest;
}

bool ConfiguredSources::SmartAsking() {
  const std::lock_guard<std::mutex> lock(filesMutex_);
  for (const auto& machine : machines_) {
    if (machine->SmartAsking()) return true;
  }
  return false;
}

bool ConfiguredSources::AwaitSmartAnswers(std::chrono::steady_clock::time_point deadline) {
  std::vector<std::shared_ptr<LinuxSource>> machines;
  {
    const std::lock_guard<std::mutex> lock(filesMutex_);
    machines = machines_;
  }
  std::vector<LinuxSource*> asking;
  for (const auto& machine : machines) {
    if (machine->SmartAsking()) asking.push_back(machine.get());
  }
  if (asking.empty()) return false;
  // Each machine in turn for its share, so that none waits on another.
  const auto share = (deadline - std::chrono::steady_clock::now()) / asking.size();
  bool arrived = false;
  for (LinuxSource* machine : asking) {
    arrived = machine->AwaitSmartAnswers(std::chrono::steady_clock::now() + share) || arrived;
  }
  return arrived;
}

ConfiguredRead ConfiguredSources::Read(bool askSmartAgain) {
  const std::lock_guard<std::mutex> round(roundMutex_);
  ConfiguredRead read;
  std::vector<std::shared_ptr<Source>> sources;
  ReadFiles files;
  bool serving = false;  // a configuration is in service
  {
    const std::lock_guard<std::mutex> lock(configMutex_);
    read.configured = RefreshConfig(read.error);
    files.configPath = ConfigFilePath().path;
    if (configStamp_) files.stamps.push_back(*configStamp_);
    serving = read.configured && config_.has_value();
    if (serving) sources = sources_;
  }
  std::vector<std::shared_ptr<LinuxSource>> machines;
  for (const auto& source : sources) {
    if (source->machine) machines.push_back(source->machine);
  }
  const auto publishFiles = [&] {
    const std::lock_guard<std::mutex> lock(filesMutex_);
    files_ = std::make_shared<const ReadFiles>(files);
    machines_ = machines;
  };
  if (!serving) {
    publishFiles();
    return read;
  }
  read.error.clear();
  Inventory inventory;
  std::set<std::string> names;
  for (const auto& sourcePointer : sources) {
    Source& source = *sourcePointer;
    std::string error;
    const std::optional<std::vector<NasRecord>> nasList = ReadSource(source, askSmartAgain, error);
    if (source.fileStamp) files.stamps.push_back(*source.fileStamp);
    if (!nasList) {
      read.error = error;
      publishFiles();
      return read;
    }
    for (const NasRecord& nas : *nasList) {
      if (!names.insert(nas.name).second) {
        read.error = "Bad configuration file " + configPath_ + ": " + source.config.place +
                     ": duplicate NAS name \"" + nas.name + "\"";
        if (duplicateError_ != read.error) LOG(ERROR) << read.error;
        duplicateError_ = read.error;
        publishFiles();
        return read;
      }
      inventory.nas.push_back(nas);
    }
  }
  duplicateError_.clear();
  read.inventory = std::move(inventory);
  publishFiles();
  return read;
}

// Reads the configuration file when it changed. Returns whether a
// configuration applies; `error` is set when none is in service.
bool ConfiguredSources::RefreshConfig(std::string& error) {
  const ConfigFileName name = ConfigFilePath();
  if (name.path.empty()) {
    configStamp_.reset();
    configError_.clear();
    config_.reset();
    sources_.clear();
    return false;
  }
  if (configStamp_ && configStamp_->path != name.path) {
    // Another file named: start afresh.
    configStamp_.reset();
    config_.reset();
    sources_.clear();
  }
  const FileRead read = ReadFileIfChanged(name.path, configStamp_);
  if (configStamp_ && read.stamp == *configStamp_) {
    error = configError_;
    return config_.has_value() || !configError_.empty();
  }
  configStamp_ = read.stamp;
  configPath_ = name.path;
  if (!read.stamp.exists && !name.named) {
    // No configuration file at the default place: as without one.
    configError_.clear();
    config_.reset();
    sources_.clear();
    return false;
  }
  try {
    if (!read.error.empty()) {
      throw std::runtime_error("Cannot read configuration file " + name.path + ": " + read.error);
    }
    Install(ParseConfig(read.text, name.path));
    configError_.clear();
  } catch (const std::runtime_error& failure) {
    configError_ = failure.what();
    LOG(ERROR) << configError_ << (config_ ? kKeptNote : "");
  }
  error = configError_;
  return true;
}

void ConfiguredSources::Install(Config config) {
  std::vector<std::shared_ptr<Source>> sources;
  std::set<const LinuxSource*> taken;
  for (const SourceConfig& entry : config.sources) {
    auto source = std::make_shared<Source>();
    source->config = entry;
    if (entry.linuxSource) {
      // A linux source whose settings did not change keeps its SMART cache.
      for (const auto& old : sources_) {
        if (old->machine && old->machine->Settings() == *entry.linuxSource &&
            taken.insert(old->machine.get()).second) {
          source->machine = old->machine;
          source->smartWaited = old->smartWaited;
          break;
        }
      }
      if (!source->machine) source->machine = std::make_shared<LinuxSource>(*entry.linuxSource);
    }
    sources.push_back(std::move(source));
  }
  sources_ = std::move(sources);
  config_ = std::move(config);
}

std::optional<std::vector<NasRecord>> ConfiguredSources::ReadSource(Source& source,
                                                                    bool askSmartAgain,
                                                                    std::string& error) {
  try {
    if (source.machine) {
      // The first round waits a little for the SMART answers, so that a
      // process's first answer carries them; later rounds take what has
      // arrived and never wait.
      const auto wait = source.smartWaited ? std::chrono::milliseconds(0) : kFirstSmartWait;
      source.smartWaited = true;
      source.lastGood = std::vector<NasRecord>{source.machine->Read(wait, askSmartAgain)};
    } else {
      ReadFileSource(source);
    }
    source.lastError.clear();
  } catch (const std::runtime_error& failure) {
    const std::string message = source.machine ? source.config.place + " (linux): " + failure.what()
                                               : std::string(failure.what());
    if (source.lastError != message) {
      LOG(ERROR) << message
                 << (source.lastGood ? " (its inventory read before stays in service)" : "");
      source.lastError = message;
    }
    if (!source.lastGood) error = message;
  }
  return source.lastGood;
}

void ConfiguredSources::ReadFileSource(Source& source) {
  const std::string& path = source.config.fileSource->path;
  FileRead read = ReadFileIfChanged(path, source.fileStamp);
  if (source.fileStamp && read.stamp == *source.fileStamp) {
    // Unchanged since the last read: its outcome stands.
    if (!source.lastError.empty()) throw std::runtime_error(source.lastError);
    return;
  }
  source.fileStamp = read.stamp;
  if (!read.error.empty()) {
    throw std::runtime_error("Cannot read inventory file " + path + ": " + read.error);
  }
  Inventory inventory = ParseInventory(read.text, path);
  source.lastGood = std::move(inventory.nas);
}

}  // namespace zeda::pelka::platform
