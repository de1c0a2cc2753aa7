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
  const std::lock_guard<std::mutex> lock(mutex_);
  std::string error;
  RefreshConfig(error);
  return config_ ? config_->programData : std::nullopt;
}

ConfiguredRead ConfiguredSources::Read() {
  const std::lock_guard<std::mutex> lock(mutex_);
  ConfiguredRead read;
  read.configured = RefreshConfig(read.error);
  if (!read.configured || !config_) return read;
  read.error.clear();
  Inventory inventory;
  std::set<std::string> names;
  for (Source& source : sources_) {
    std::string error;
    const std::optional<std::vector<NasRecord>> nasList = ReadSource(source, error);
    if (!nasList) {
      read.error = error;
      return read;
    }
    for (const NasRecord& nas : *nasList) {
      if (!names.insert(nas.name).second) {
        read.error = "Bad configuration file " + configPath_ + ": " + source.config.place +
                     ": duplicate NAS name \"" + nas.name + "\"";
        if (duplicateError_ != read.error) LOG(ERROR) << read.error;
        duplicateError_ = read.error;
        return read;
      }
      inventory.nas.push_back(nas);
    }
  }
  duplicateError_.clear();
  read.inventory = std::move(inventory);
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
  std::vector<Source> sources;
  for (const SourceConfig& entry : config.sources) {
    Source source;
    source.config = entry;
    if (entry.linuxSource) {
      // A linux source whose settings did not change keeps its SMART cache.
      for (Source& old : sources_) {
        if (old.machine && old.machine->Settings() == *entry.linuxSource) {
          source.machine = std::move(old.machine);
          break;
        }
      }
      if (!source.machine) source.machine = std::make_unique<LinuxSource>(*entry.linuxSource);
    }
    sources.push_back(std::move(source));
  }
  sources_ = std::move(sources);
  config_ = std::move(config);
}

std::optional<std::vector<NasRecord>> ConfiguredSources::ReadSource(Source& source,
                                                                    std::string& error) {
  try {
    if (source.machine) {
      source.lastGood = std::vector<NasRecord>{source.machine->Read()};
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
