#include "ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <cerrno>
#include <csignal>

extern char** environ;

namespace zeda::pelka::platform {

namespace {

constexpr std::size_t kOutputLimit = 8u << 20;

// One started child: its process id and the read end of its output pipe.
struct Running {
  pid_t pid = -1;
  int output = -1;
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
    // The child starts with default signal dispositions whatever the host
    // process (an object manager) has set up.
    sigset_t all;
    sigfillset(&all);
    posix_spawnattr_setsigdefault(&attributes_, &all);
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&attributes_, &none);
    posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
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

Running Start(const std::vector<std::string>& command, ChildOutcome& outcome) {
  int pipeEnds[2];
  if (command.empty() || ::pipe2(pipeEnds, O_CLOEXEC) != 0) {
    outcome.startError = command.empty() ? EINVAL : errno;
    return {};
  }
  std::vector<char*> argv;
  for (const std::string& word : command) argv.push_back(const_cast<char*>(word.c_str()));
  argv.push_back(nullptr);
  pid_t pid = -1;
  int error = 0;
  {
    const SpawnSetup setup(pipeEnds[1]);
    error =
        ::posix_spawnp(&pid, argv[0], setup.actions(), setup.attributes(), argv.data(), environ);
  }
  ::close(pipeEnds[1]);
  if (error != 0) {
    ::close(pipeEnds[0]);
    outcome.startError = error;
    return {};
  }
  ::fcntl(pipeEnds[0], F_SETFL, ::fcntl(pipeEnds[0], F_GETFL) | O_NONBLOCK);
  return Running{pid, pipeEnds[0]};
}

// Reads what is available; closes the pipe at its end.
void Drain(Running& child, ChildOutcome& outcome) {
  char buffer[16384];
  for (;;) {
    const ssize_t count = ::read(child.output, buffer, sizeof buffer);
    if (count > 0) {
      if (outcome.output.size() < kOutputLimit)
        outcome.output.append(buffer, static_cast<std::size_t>(count));
      continue;
    }
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) return;
    ::close(child.output);  // end of output, or an error reading it
    child.output = -1;
    return;
  }
}

}  // namespace

std::vector<ChildOutcome> RunAll(const std::vector<std::vector<std::string>>& commands,
                                 std::chrono::milliseconds limit) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point deadline = Clock::now() + limit;
  std::vector<ChildOutcome> outcomes(commands.size());
  std::vector<Running> children;
  children.reserve(commands.size());
  for (std::size_t i = 0; i < commands.size(); ++i) {
    children.push_back(Start(commands[i], outcomes[i]));
  }
  for (;;) {
    std::vector<pollfd> waiting;
    std::vector<std::size_t> which;
    for (std::size_t i = 0; i < children.size(); ++i) {
      if (children[i].output >= 0) {
        waiting.push_back(pollfd{children[i].output, POLLIN, 0});
        which.push_back(i);
      }
    }
    if (waiting.empty()) break;
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
    if (left.count() <= 0) break;
    const int ready = ::poll(waiting.data(), waiting.size(), static_cast<int>(left.count()));
    if (ready < 0 && errno != EINTR) break;
    for (std::size_t k = 0; k < waiting.size(); ++k) {
      if (waiting[k].revents != 0) Drain(children[which[k]], outcomes[which[k]]);
    }
  }
  for (std::size_t i = 0; i < children.size(); ++i) {
    Running& child = children[i];
    ChildOutcome& outcome = outcomes[i];
    if (child.pid < 0) continue;  // never started: NotStarted with startError
    if (child.output >= 0) {
      // Still writing at the deadline (or its output could not be waited
      // for): it is not waited for any longer.
      ::kill(child.pid, SIGKILL);
      ::close(child.output);
      child.output = -1;
      outcome.end = ChildOutcome::End::TimedOut;
    }

    // Output ended: the child is about to exit, but it gets no more than
    // the time left to do so.
    int status = 0;
    while (outcome.end != ChildOutcome::End::TimedOut) {
      const pid_t reaped = ::waitpid(child.pid, &status, WNOHANG);
      if (reaped == child.pid || (reaped < 0 && errno != EINTR)) break;
      if (Clock::now() >= deadline) {
        ::kill(child.pid, SIGKILL);
        outcome.end = ChildOutcome::End::TimedOut;
        break;
      }
      ::usleep(1000);
    }
    if (outcome.end == ChildOutcome::End::TimedOut) {
      while (::waitpid(child.pid, &status, 0) < 0 && errno == EINTR) {
      }
    }
    if (outcome.end == ChildOutcome::End::TimedOut) continue;
    if (WIFEXITED(status)) {
      outcome.end = ChildOutcome::End::Exited;
      outcome.exitStatus = WEXITSTATUS(status);
    } else {
      outcome.end = ChildOutcome::End::Signalled;
      outcome.exitStatus = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }
  }
  return outcomes;
}

}  // namespace zeda::pelka::platform
