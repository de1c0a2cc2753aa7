// The recorded smartctl answers of a machine of tests/fixtures copied to a
// scratch directory, with the wear indicators of two solid-state disks of
// tests/fixtures/linux added: the NVMe disk (nvme0n1) has used 3 % of its
// rated endurance, the SATA SSD (sde) 120 %, told by its ATA device
// statistics. The stand-in smartctl answers from them when ZEDA_SMART_RECORDS
// names path().
#pragma once

#include <filesystem>
#include <fstream>
#include <string>

#include <nlohmann/json.hpp>

#include "TempDir.h"

namespace zeda::test {

class WearRecords {
 public:
  // `fixture`: a directory with smart/, e.g. ZEDA_LINUX_FIXTURE.
  explicit WearRecords(const std::string& fixture) {
    std::filesystem::copy(fixture + "/smart", path(), std::filesystem::copy_options::recursive);
    Amend("nvme0n1", [](nlohmann::json& answer) {
      answer["nvme_smart_health_information_log"] = {
          {"critical_warning", 0}, {"available_spare", 100}, {"percentage_used", 3}};
    });
    Amend("sde", [](nlohmann::json& answer) {
      answer["ata_device_statistics"]["pages"] = nlohmann::json::array(
          {{{"number", 1},
            {"name", "General Statistics"},
            {"table", {{{"offset", 8}, {"name", "Lifetime Power-On Resets"}, {"value", 41}}}}},
           {{"number", 7},
            {"name", "Solid State Device Statistics"},
            {"table",
             {{{"offset", 8},
               {"name", "Percentage Used Endurance Indicator"},
               {"size", 1},
               {"value", 120},
               {"flags", {{"value", 192}, {"valid", true}}}}}}}});
    });
  }

  const std::string& path() const { return dir_.path(); }

  // Changes the answer of the device `name` (sda, nvme0n1 ...).
  template <typename Change>
  void Amend(const std::string& name, Change change) const {
    const std::string file = dir_.file(name + ".json");
    nlohmann::json answer = nlohmann::json::parse(ReadFile(file));
    change(answer);
    std::ofstream(file) << answer.dump(1) << "\n";
  }

 private:
  TempDir dir_;
};

}  // namespace zeda::test
