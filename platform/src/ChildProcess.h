// Helper programs run without a shell, side by side, within one time limit.
#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace zeda::pelka::platform {

struct ChildOutcome {
  enum class End { Exited, Signalled, TimedOut, NotStarted };
  End end = End::NotStarted;
  int exitStatus = 0;  // Exited: the exit status; Signalled: the signal
  int startError = 0;  // NotStarted: the errno of the start (ENOENT: no such program)
  std::string output;  // standard output (at most 8 MiB); standard error is discarded
};

// Starts every command (argv[0] is a path or a name looked up in PATH) with
// standard input and error on /dev/null, collects standard output until all
// have ended or `limit` has passed since the start, then kills the ones still
// running (SIGKILL) and reaps every child. Outcomes are in command order.
std::vector<ChildOutcome> RunAll(const std::vector<std::vector<std::string>>& commands,
                                 std::chrono::milliseconds limit);

}  // namespace zeda::pelka::platform
