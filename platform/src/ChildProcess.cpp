#include "ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <memory>
#include <mutex>

extern char** environ;

namespace zeda::pelka::platform {

namespace {

using Clock = std::chrono::steady_clock;

// A child that has ended but whose pipe a grandchild still holds, or one
// that never closes its output, is noticed within this slice.
constexpr std::chrono::milliseconds kPollSlice{10};

// Children killed and given up, reaped once they have died.
class Abandoned {
 public:
  // Never destroyed: children are given up until the very end of the
  // process, also by destructors of other objects of static duration.
  static Abandoned& Instance() {
    static Abandoned* const abandoned = new Abandoned;
    return *abandoned;
  }
  void Add(pid_t pid) {
    const std::lock_guard<std::mutex> lock(mutex_);
    pids_.push_back(pid);
  }
  void Reap() {
    const std::lock_guard<std::mutex> lock(mutex_);
    pids_.erase(std::remove_if(pids_.begin(), pids_.end(),
                               [](pid_t pid) {
                                 int status = 0;
                                 const pid_t reaped = ::waitpid(pid, &status, WNOHANG);
                                 // Reaped, or no longer ours to reap (ECHILD).
                                 return reaped == pid || (reaped < 0 && errno != EINTR);
                               }),
                pids_.end());
  }
  std::size_t Count() {
    const std::lock_guard<std::mutex> lock(mutex_);
    return pids_.size();
  }

 private:
  std::mutex mutex_;
  std::vector<pid_t> pids_;
};

// Spawn attributes and file actions, destroyed with the object.
class SpawnSetup {
 public:
  explicit SpawnSetup(int outputWriteEnd) {
    posix_spawn_file_actions_init(&actions_);
    posix_spawnattr_init(&attributes_);
    posix_spawn_file_actions_addopen(&actions_, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions_, outputWriteEnd, 1);
    posix_spawn_file_actions_addopen(&actions_, 2, "/dev/null", O_WRONLY, 0);
    // Only standard input, output and error stay open in the child, whatever
    // the host process has open without close-on-exec.
    posix_spawn_file_actions_addclosefrom_np(&actions_, 3);
    // The child starts with default signal dispositions whatever the host
    // process (an object manager) has set up, in a process group of its own
    // so that a kill reaches whatever it has started.
    sigset_t all;
    sigfillset(&all);
    posix_spawnattr_setsigdefault(&attributes_, &all);
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&attributes_, &none);
    posix_spawnattr_setpgroup(&attributes_, 0);
    posix_spawnattr_setflags(
        &attributes_, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETPGROUP);
  }
  ~SpawnSetup() {
    posix_spawn_file_actions_destroy(&actions_);
    posix_spawnattr_destroy(&attributes_);
  }
  SpawnSetup(const SpawnSetup&) = delete;
  SpawnSetup& operator=(const SpawnSetup&) = delete;
  const posix_spawn_file_actions_t* actions() const { return &actions_; }
  const posix_spawnattr_t* attributes() const { return &attributes_; }

 private:
  posix_spawn_file_actions_t actions_;
  posix_spawnattr_t attributes_;
};

}  // namespace

RunningChild::RunningChild(const std::vector<std::string>& command) {
  int pipeEnds[2];
  if (command.empty() || ::pipe2(pipeEnds, O_CLOEXEC) != 0) {
    outcome_.startError = command.empty() ? EINVAL : errno;
    done_ = true;
    return;
  }
  std::vector<char*> argv;
  for (const std::string& word : command) argv.push_back(const_cast<char*>(word.c_str()));
  argv.push_back(nullptr);
  int error = 0;
  {
    const SpawnSetup setup(pipeEnds[1]);
    error =
        ::posix_spawnp(&pid_, argv[0], setup.actions(), setup.attributes(), argv.data(), environ);
  }
  ::close(pipeEnds[1]);
  if (error != 0) {
    ::close(pipeEnds[0]);
    pid_ = -1;
    outcome_.startError = error;
    done_ = true;
    return;
  }
  output_ = pipeEnds[0];
  ::fcntl(output_, F_SETFL, ::fcntl(output_, F_GETFL) | O_NONBLOCK);
}

RunningChild::~RunningChild() {
  if (!done_) Abandon();
  CloseOutput();
}

void RunningChild::CloseOutput() {
  if (output_ >= 0) ::close(output_);
  output_ = -1;
}

// Reads what is available; closes the pipe at its end.
void RunningChild::Drain() {
  char buffer[65536];
  while (output_ >= 0) {
    const ssize_t count = ::read(output_, buffer, sizeof buffer);
    if (count > 0) {
      const auto room = kChildOutputLimit - outcome_.output.size();
      const auto taken = std::min(room, static_cast<std::size_t>(count));
      outcome_.output.append(buffer, taken);
      if (taken < static_cast<std::size_t>(count)) outcome_.outputCut = true;
      continue;
    }
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) return;
    CloseOutput();  // end of output, or an error reading it
  }
}

bool RunningChild::Poll() {
  if (done_) return true;
  Drain();
  int status = 0;
  pid_t reaped = -1;
  do {
    reaped = ::waitpid(pid_, &status, WNOHANG);
  } while (reaped < 0 && errno == EINTR);
  if (reaped == 0) return false;  // still running
  if (reaped < 0) {
    // ECHILD: the host process reaps its children itself; how this one
    // ended cannot be known.
    outcome_.end = ChildOutcome::End::Lost;
  } else if (WIFEXITED(status)) {
    outcome_.end = ChildOutcome::End::Exited;
    outcome_.exitStatus = WEXITSTATUS(status);
  } else {
    outcome_.end = ChildOutcome::End::Signalled;
    outcome_.exitStatus = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
  }
  // Whatever it wrote before it ended is in the pipe; a grandchild that
  // keeps the pipe open is not waited for.
  Drain();
  CloseOutput();
  pid_ = -1;
  done_ = true;
  return true;
}

void RunningChild::Abandon() {
  if (done_) return;
  ::kill(-pid_, SIGKILL);  // its process group: the child and what it started
  ::kill(pid_, SIGKILL);
  Abandoned::Instance().Add(pid_);
  pid_ = -1;
  CloseOutput();
  outcome_.end = ChildOutcome::End::TimedOut;
  done_ = true;
}

void ReapAbandoned() { Abandoned::Instance().Reap(); }

std::size_t AbandonedChildren() { return Abandoned::Instance().Count(); }

void AwaitAny(const std::vector<RunningChild*>& children, Clock::time_point deadline) {
  std::vector<pollfd> waiting;
  bool running = false;
  for (RunningChild* child : children) {
    if (child->Done()) continue;
    running = true;
    if (child->OutputDescriptor() >= 0)
      waiting.push_back(pollfd{child->OutputDescriptor(), POLLIN, 0});
  }
  if (!running) return;
  const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
  const auto slice = std::max(std::chrono::milliseconds(0), std::min(left, kPollSlice));
  ::poll(waiting.data(), waiting.size(), static_cast<int>(slice.count()));
  for (RunningChild* child : children) child->Poll();
}

std::vector<ChildOutcome> RunAll(const std::vector<std::vector<std::string>>& commands,
                                 std::chrono::milliseconds limit) {
  ReapAbandoned();
  const Clock::time_point deadline = Clock::now() + limit;
  std::vector<std::unique_ptr<RunningChild>> children;
  std::vector<RunningChild*> pointers;
  for (const auto& command : commands) {
    children.push_back(std::make_unique<RunningChild>(command));
    pointers.push_back(children.back().get());
  }
  for (;;) {
    const bool allDone = std::all_of(children.begin(), children.end(),
                                     [](const auto& child) { return child->Poll(); });
    if (allDone || Clock::now() >= deadline) break;
    AwaitAny(pointers, deadline);
  }
  std::vector<ChildOutcome> outcomes;
  for (const auto& child : children) {
    if (!child->Done()) child->Abandon();
    outcomes.push_back(child->Outcome());
  }
  return outcomes;
}

}  // namespace zeda::pelka::platform
