// Helper programs run without a shell, never waited for beyond a deadline.
//
// A child starts in a process group of its own with standard input and error
// on /dev/null, its standard output on a pipe, and no other descriptor of the
// host process (an object manager has sockets and files of its own that a
// helper must not keep open). Nothing here ever blocks on a child: a child
// still running at its deadline is killed with its whole process group and
// given up; a killed child stuck in uninterruptible I/O (a dying disk) is
// reaped later by ReapAbandoned, whenever it finally dies.
#pragma once

#include <sys/types.h>
#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

namespace zeda::pelka::platform {

struct ChildOutcome {
  // Lost: the child ended but its exit status was taken by someone else (an
  // object manager that reaps every child of its process).
  enum class End { Exited, Signalled, TimedOut, NotStarted, Lost };
  End end = End::NotStarted;
  int exitStatus = 0;      // Exited: the exit status; Signalled: the signal
  int startError = 0;      // NotStarted: the errno of the start (ENOENT: no such program)
  std::string output;      // standard output (at most kChildOutputLimit bytes kept)
  bool outputCut = false;  // more than kChildOutputLimit bytes were written
};

inline constexpr std::size_t kChildOutputLimit = 8u << 20;

// One started helper program.
class RunningChild {
 public:
  // Starts `command` (argv[0] is a path or a name looked up in PATH). A
  // child that cannot be started has its outcome (NotStarted) at once.
  explicit RunningChild(const std::vector<std::string>& command);
  // A child still running is given up (Abandon).
  ~RunningChild();
  RunningChild(const RunningChild&) = delete;
  RunningChild& operator=(const RunningChild&) = delete;

  // Reads what the child has written and looks whether it has ended, without
  // waiting. True once its outcome is known. A child that has exited is done
  // even while a grandchild still holds its output pipe open.
  bool Poll();

  // Kills the child's process group and gives it up: its outcome becomes
  // TimedOut. Never waits.
  void Abandon();

  bool Done() const { return done_; }
  // The read end of the output pipe while the child may still write, else -1.
  int OutputDescriptor() const { return output_; }
  const ChildOutcome& Outcome() const { return outcome_; }

 private:
  void Drain();
  void CloseOutput();

  pid_t pid_ = -1;
  int output_ = -1;
  bool done_ = false;
  ChildOutcome outcome_;
};

// Reaps the given-up children that have died since the last call; never
// waits. Called by every run; cheap when there are none.
void ReapAbandoned();

// How many given-up children have not been reaped yet.
std::size_t AbandonedChildren();

// Starts every command at once, collects their outputs until all have ended
// or `limit` has passed since the start, then gives up the ones still running.
// Returns no later than `limit` after the start whatever the children do.
// Outcomes are in command order.
std::vector<ChildOutcome> RunAll(const std::vector<std::vector<std::string>>& commands,
                                 std::chrono::milliseconds limit);

// Waits until one of `children` can be read or has ended, at most until
// `deadline`, and polls every one of them. Returns at once when none is
// running.
void AwaitAny(const std::vector<RunningChild*>& children,
              std::chrono::steady_clock::time_point deadline);

}  // namespace zeda::pelka::platform
