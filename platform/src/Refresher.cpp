#include "Refresher.h"

#include <glog/logging.h>

#include "Config.h"
#include "InventoryFile.h"

namespace zeda::pelka::platform {

namespace {

using Clock = std::chrono::steady_clock;

// Without a linux source nothing changes unless a file does, which look-ups
// notice themselves; the refresher then only wakes for them.
constexpr std::chrono::hours kIdle{1};
constexpr std::chrono::milliseconds kSmartSlice{50};

}  // namespace

Refresher::Refresher(Publish publish) : publish_(std::move(publish)) {}

Refresher::~Refresher() { Stop(); }

void Refresher::Stop() {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    stop_ = true;
  }
  wake_.notify_all();
  done_.notify_all();
  if (thread_.joinable()) thread_.join();
}

std::uint64_t Refresher::Reset() {
  const std::lock_guard<std::mutex> lock(mutex_);
  resting_ = true;
  wake_.notify_all();
  return ++resets_;
}

void Refresher::AwaitRest() {
  std::unique_lock<std::mutex> lock(mutex_);
  done_.wait(lock, [&] { return !inRound_ || stop_; });
}

bool Refresher::FilesChanged() {
  const std::shared_ptr<const ReadFiles> files = ConfiguredSources::Instance().Files();
  if (files->configPath != ConfigFilePath().path) return true;
  for (const FileStamp& stamp : files->stamps) {
    if (StampOf(stamp.path) != stamp) return true;
  }
  return false;
}

void Refresher::Sync() {
  std::unique_lock<std::mutex> lock(mutex_);
  if (!thread_.joinable()) thread_ = std::thread([this] { Run(); });
  const bool first = servedResets_ != resets_;
  if (!first) {
    lock.unlock();
    if (!FilesChanged()) return;
    lock.lock();
  }
  const std::uint64_t ticket = ++wanted_;
  resting_ = false;
  wake_.notify_one();
  const auto served = [&] { return finished_ >= ticket || stop_; };
  if (first) {
    // A round takes as long as reading the sources: nothing in it waits on
    // a child process beyond kFirstSmartWait.
    done_.wait(lock, served);
  } else {
    done_.wait_for(lock, kChangeWait, served);
  }
}

void Refresher::Run() {
  std::unique_lock<std::mutex> lock(mutex_);
  bool answersArrived = false;
  while (!stop_) {
    if (resting_ && wanted_ == finished_) {
      wake_.wait(lock, [&] { return stop_ || wanted_ != finished_; });
      continue;
    }
    const std::uint64_t ticket = wanted_;
    const std::uint64_t resets = resets_;
    // A round for arrived SMART answers takes them in; only the others ask
    // again, so that a short time to live cannot keep smartctl running
    // back to back.
    const bool askAgain = !answersArrived || wanted_ != finished_ || resets_ != servedResets_;
    inRound_ = true;
    lock.unlock();
    try {
      publish_(ConfiguredSources::Instance().Read(askAgain), resets);
    } catch (const std::exception& failure) {
      // A round that cannot even be handed over leaves the inventory in
      // service; the next round tries again.
      LOG(ERROR) << "Inventory refresh failed: " << failure.what();
    }
    const std::optional<std::chrono::milliseconds> rescan =
        ConfiguredSources::Instance().RescanInterval();
    const bool machine = rescan.has_value();
    lock.lock();
    inRound_ = false;
    finished_ = std::max(finished_, ticket);
    servedResets_ = resets;
    done_.notify_all();

    const Clock::time_point next =
        Clock::now() + (machine ? Clock::duration(*rescan) : Clock::duration(kIdle));
    const auto wanted = [&] { return stop_ || wanted_ != finished_ || resting_; };
    answersArrived = false;
    while (!wanted() && Clock::now() < next) {
      lock.unlock();
      // SMART answers under way are waited for in short slices, so that a
      // look-up's wish for a round is seen soon too.
      ConfiguredSources& sources = ConfiguredSources::Instance();
      const bool asking = machine && sources.SmartAsking();
      const bool arrived =
          asking && sources.AwaitSmartAnswers(std::min(next, Clock::now() + kSmartSlice));
      lock.lock();
      if (arrived) {
        answersArrived = true;
        break;
      }
      if (!asking) wake_.wait_until(lock, next, wanted);
    }
  }
}

}  // namespace zeda::pelka::platform
