// Helper programs never hold their caller: a child that ignores SIGTERM, one
// whose grandchild keeps the output pipe open, one reaped by someone else,
// and what a child may see of the caller's descriptors.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>
#include <chrono>
#include <csignal>
#include <string>
#include <thread>

#include "ChildProcess.h"

namespace zeda::test {
namespace {

using pelka::platform::AbandonedChildren;
using pelka::platform::ChildOutcome;
using pelka::platform::ReapAbandoned;
using pelka::platform::RunAll;
using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

ChildOutcome RunScript(const std::string& script, std::chrono::milliseconds limit) {
  return RunAll({{"/bin/sh", "-c", script}}, limit).at(0);
}

TEST(ChildProcess, AChildThatIgnoresTermIsGivenUpAtItsDeadline) {
  const auto start = Clock::now();
  const ChildOutcome outcome =
      RunScript("trap '' TERM HUP INT; echo partial; exec sleep 30", 300ms);
  const auto took = Clock::now() - start;
  EXPECT_EQ(outcome.end, ChildOutcome::End::TimedOut);
  EXPECT_LT(took, 600ms);
  EXPECT_GE(took, 300ms);
  // Killed with its process group; reaped once it has died.
  for (int i = 0; i < 200 && AbandonedChildren() > 0; ++i) {
    std::this_thread::sleep_for(10ms);
    ReapAbandoned();
  }
  EXPECT_EQ(AbandonedChildren(), 0u);
}

TEST(ChildProcess, AGrandchildHoldingTheOutputPipeIsNotWaitedFor) {
  const auto start = Clock::now();
  const ChildOutcome outcome = RunScript("sleep 30 & echo answered; exit 3", 5000ms);
  EXPECT_LT(Clock::now() - start, 1000ms);
  EXPECT_EQ(outcome.end, ChildOutcome::End::Exited);
  EXPECT_EQ(outcome.exitStatus, 3);
  EXPECT_EQ(outcome.output, "answered\n");
}

TEST(ChildProcess, AChildReapedByTheHostProcessIsLostNotExitedZero) {
  // An object manager that ignores SIGCHLD has its children reaped by the
  // kernel: their exit status cannot be had.
  struct sigaction ignore {};
  ignore.sa_handler = SIG_IGN;
  struct sigaction before {};
  ASSERT_EQ(::sigaction(SIGCHLD, &ignore, &before), 0);
  const ChildOutcome outcome = RunScript("echo hello; exit 0", 5000ms);
  ::sigaction(SIGCHLD, &before, nullptr);
  EXPECT_EQ(outcome.end, ChildOutcome::End::Lost);
}

TEST(ChildProcess, AChildSeesOnlyStandardInputOutputAndError) {
  const int opened = ::open("/dev/null", O_RDONLY);
  ASSERT_GE(opened, 0);
  const int inherited = ::fcntl(opened, F_DUPFD, 57);  // no close-on-exec
  ::close(opened);
  ASSERT_GE(inherited, 57);
  const ChildOutcome outcome =
      RunScript("cd /proc/self/fd && for fd in *; do echo $fd; done", 5000ms);
  ::close(inherited);
  ASSERT_EQ(outcome.end, ChildOutcome::End::Exited);
  // The shell's own listing may open one more descriptor for the directory;
  // nothing of the caller's is there.
  EXPECT_EQ(outcome.output.find(std::to_string(inherited) + "\n"), std::string::npos)
      << outcome.output;
  EXPECT_EQ(outcome.output.substr(0, 6), "0\n1\n2\n");
}

TEST(ChildProcess, OutputBeyondTheLimitIsCutAndSaidSo) {
  const ChildOutcome outcome = RunScript("head -c 20000000 /dev/zero", 10000ms);
  ASSERT_EQ(outcome.end, ChildOutcome::End::Exited);
  EXPECT_TRUE(outcome.outputCut);
  EXPECT_EQ(outcome.output.size(), pelka::platform::kChildOutputLimit);
}

TEST(ChildProcess, AMissingProgramIsNotStarted) {
  const ChildOutcome outcome = RunAll({{"/nonexistent/program"}}, 1000ms).at(0);
  EXPECT_EQ(outcome.end, ChildOutcome::End::NotStarted);
  EXPECT_EQ(outcome.startError, ENOENT);
}

}  // namespace
}  // namespace zeda::test
