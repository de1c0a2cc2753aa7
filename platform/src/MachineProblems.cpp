#include "MachineProblems.h"

#include <glog/logging.h>

namespace zeda::pelka::platform {

void ProblemLog::Report(const std::vector<MachineProblem>& problems) {
  std::map<std::string, std::string> current;
  for (const MachineProblem& problem : problems) current.emplace(problem.place, problem.message);
  const std::lock_guard<std::mutex> lock(mutex_);
  for (const auto& [place, message] : current) {
    const auto shown = shown_.find(place);
    if (shown == shown_.end() || shown->second != message) LOG(ERROR) << message;
  }
  shown_ = std::move(current);
}

}  // namespace zeda::pelka::platform
