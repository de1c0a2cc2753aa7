#include "LinuxSource.h"

#include "LinuxNasRecord.h"
#include "MachineDisks.h"

namespace zeda::pelka::platform {

LinuxSource::LinuxSource(LinuxSourceConfig config)
    : config_(std::move(config)),
      smart_(SmartSettings{config_.smartctl, config_.smartTtl, config_.smartTimeout}) {}

NasRecord LinuxSource::Read(std::chrono::milliseconds smartWait, bool askSmartAgain) {
  const MachineView machine = LookAtMachine(config_.root);
  problems_.Report(machine.problems);
  const std::map<std::string, SmartReport> smart =
      smart_.Reports(SmartNodes(machine), smartWait, askSmartAgain);
  return BuildNasRecord(config_.nas, machine, smart);
}

}  // namespace zeda::pelka::platform
