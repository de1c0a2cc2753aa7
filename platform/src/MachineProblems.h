// What the machine shows that the linux source cannot use as it is: a disk
// directory that cannot be read, a sysfs attribute that is missing or not
// what the kernel writes, a udev database entry that is not udev's format.
// The source serves the rest of the machine and logs each problem once.
#pragma once

#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace zeda::pelka::platform {

struct MachineProblem {
  std::string place;    // the file or directory at fault; one problem per place
  std::string message;  // the whole log line: the place, what is wrong, what the source does
};

// Logs each problem of a round once, at ERROR: a line is written when a place
// shows a message it did not show at the round before. A place without a
// problem in a round is forgotten, so a problem that goes away and comes back
// is logged again. Thread safe.
class ProblemLog {
 public:
  void Report(const std::vector<MachineProblem>& problems);

 private:
  std::mutex mutex_;
  std::map<std::string, std::string> shown_;  // place -> message of the last round
};

}  // namespace zeda::pelka::platform
