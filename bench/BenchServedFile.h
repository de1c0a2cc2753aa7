// The inventory of BenchInventory.h served the two ways a deployment serves
// a file: named directly by PELKA_INVENTORY (file mode), or as the one file
// source of a configuration file named by PELKA_CONFIG (configuration mode,
// read by the library's refresher thread). Both modes serve the same file, so
// the figures of one run differ only by the way the inventory reaches a
// request.
//
// The file of a size is written once per process, on first use, into a
// private temporary folder removed when the process ends; writing it, and
// reading it back to check that it holds exactly MakeInventory's records, is
// reported once on standard error with the time it took.
#ifndef ZEDA_BENCH_BENCHSERVEDFILE_H
#define ZEDA_BENCH_BENCHSERVEDFILE_H

#include <unistd.h>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>

#include "BenchInventory.h"
#include "platform/Inventory.h"

namespace zeda::bench {

enum class ServeMode { File, Config };

inline const char* ModeName(ServeMode mode) { return mode == ServeMode::File ? "file" : "config"; }

// The inventory as JSON in its plain form. The bench inventory's texts are
// plain ASCII without quotes or backslashes, so they go in unescaped.
inline std::string InventoryText(const pelka::platform::Inventory& inventory) {
  std::string text;
  const auto quoted = [&text](const std::string& value) {
    text += '"';
    text += value;
    text += '"';
  };
  const auto flag = [&text](const char* name, bool value) {
    text += ", \"";
    text += name;
    text += value ? "\": true" : "\": false";
  };
  const auto list = [&text, &quoted](const char* name, const std::vector<std::string>& ids) {
    text += '"';
    text += name;
    text += "\": [";
    for (std::size_t i = 0; i < ids.size(); ++i) {
      if (i != 0) text += ", ";
      quoted(ids[i]);
    }
    text += ']';
  };
  text += "{\"nas\": [";
  for (std::size_t n = 0; n < inventory.nas.size(); ++n) {
    const pelka::platform::NasRecord& nas = inventory.nas[n];
    if (n != 0) text += ",\n";
    text += "{\"name\": ";
    quoted(nas.name);
    text += ", \"disks\": [\n";
    for (std::size_t d = 0; d < nas.disks.size(); ++d) {
      const pelka::platform::DiskRecord& record = nas.disks[d];
      if (record.disk.status != zeda::orvi::Ok) {
        throw std::invalid_argument("the bench inventory's disks are all \"ok\"");
      }
      if (d != 0) text += ",\n";
      text += "{\"id\": ";
      quoted(record.disk.id);
      text += ", \"status\": \"ok\"";
      flag("isFree", record.disk.isFree);
      flag("isSpare", record.disk.isSpare);
      flag("isSsd", record.disk.isSsd);
      text += ", \"interfaceType\": ";
      quoted(record.disk.interfaceType);
      text += ", \"firmwareVersion\": ";
      quoted(record.disk.firmwareVersion);
      text += ", \"capacity\": " + std::to_string(record.disk.capacity);
      text += ", \"rpm\": " + std::to_string(record.disk.rpm);
      text += ", \"health\": {\"status\": " + std::to_string(record.health.healthStatus);
      text += ", \"message\": ";
      quoted(record.health.message);
      text += "}, \"identity\": {\"product\": ";
      quoted(record.identity.product);
      text += ", \"model\": ";
      quoted(record.identity.model);
      text += ", \"serial\": ";
      quoted(record.identity.serial);
      text += "}}";
    }
    text += "],\n\"groups\": [";
    for (std::size_t g = 0; g < nas.groups.size(); ++g) {
      if (g != 0) text += ",\n";
      text += '{';
      list("dataDisks", nas.groups[g].dataDisks);
      text += ", ";
      list("spareDisks", nas.groups[g].spareDisks);
      text += '}';
    }
    text += "]}";
  }
  text += "]}\n";
  return text;
}

// The files of one size: the inventory and a configuration naming it as its
// only source.
struct ServedFiles {
  std::string inventory;
  std::string config;
};

class ServedFileFolder {
 public:
  static ServedFileFolder& Instance() {
    static ServedFileFolder folder;
    return folder;
  }

  const ServedFiles& FilesOf(const Size& size) {
    const auto key = std::make_pair(size.disks, size.perNas);
    const auto found = files_.find(key);
    if (found != files_.end()) return found->second;
    return files_.emplace(key, Write(size)).first->second;
  }

  ~ServedFileFolder() {
    std::error_code ignored;
    if (!directory_.empty()) std::filesystem::remove_all(directory_, ignored);
  }
  ServedFileFolder(const ServedFileFolder&) = delete;
  ServedFileFolder& operator=(const ServedFileFolder&) = delete;

 private:
  ServedFileFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "zeda-served-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) {
      throw std::runtime_error("cannot create a folder for the served inventories");
    }
    directory_ = pattern;
  }

  ServedFiles Write(const Size& size) const {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    const pelka::platform::Inventory inventory = MakeInventory(size.disks, size.perNas);
    const std::string text = InventoryText(inventory);
    const std::string stem =
        "inventory-" + std::to_string(size.disks) + "-" + std::to_string(size.perNas);
    ServedFiles files{(directory_ / (stem + ".json")).string(),
                      (directory_ / (stem + ".pelka.json")).string()};
    WriteFile(files.inventory, text);
    WriteFile(files.config,
              R"({"sources": [{"type": "file", "path": ")" + files.inventory + "\"}]}\n");
    const Clock::time_point written = Clock::now();
    if (pelka::platform::LoadInventoryFile(files.inventory) != inventory) {
      throw std::runtime_error("the written inventory " + files.inventory +
                               " does not read back as the bench inventory");
    }
    const Clock::time_point checked = Clock::now();
    const auto seconds = [](Clock::duration d) { return std::chrono::duration<double>(d).count(); };
    std::fprintf(stderr,
                 "served inventory of %d disks in NAS devices of %d: %.1f MB, "
                 "generated and written in %.2f s, read back and checked in %.2f s\n",
                 size.disks, size.perNas, static_cast<double>(text.size()) / 1e6,
                 seconds(written - start), seconds(checked - written));
    return files;
  }

  static void WriteFile(const std::string& path, const std::string& text) {
    std::ofstream out(path, std::ios::binary);
    out << text;
    out.close();
    if (!out) throw std::runtime_error("cannot write " + path);
  }

  std::filesystem::path directory_;
  std::map<std::pair<int, int>, ServedFiles> files_;
};

// Serves the file of `size` in `mode` for one benchmark; afterwards neither
// variable is set and the library reads its source afresh at the next call.
class ServedFile {
 public:
  ServedFile(ServeMode mode, const Size& size) {
    const ServedFiles& files = ServedFileFolder::Instance().FilesOf(size);
    if (mode == ServeMode::File) {
      ::unsetenv("PELKA_CONFIG");
      ::setenv("PELKA_INVENTORY", files.inventory.c_str(), 1);
    } else {
      ::unsetenv("PELKA_INVENTORY");
      ::setenv("PELKA_CONFIG", files.config.c_str(), 1);
    }
    pelka::platform::UseFileInventory();
  }
  ~ServedFile() {
    ::unsetenv("PELKA_CONFIG");
    ::unsetenv("PELKA_INVENTORY");
    pelka::platform::UseFileInventory();
  }
  ServedFile(const ServedFile&) = delete;
  ServedFile& operator=(const ServedFile&) = delete;
};

}  // namespace zeda::bench

#endif
