// Keeps the inventory of the configured sources fresh from a thread of its
// own, so that look-ups never read, parse, scan or run anything.
//
// The refresher runs a round (ConfiguredSources::Read) and hands its outcome
// to the store:
//   - when a look-up asks for one (Sync): before the first answer of a
//     process, and when the look-up sees that the configuration file or a
//     file source has changed (a stamp check: one open and fstat per file);
//   - every "rescanSeconds" (default 5) while a linux source is served
//     (disks that appear or vanish, udev data, SMART answers past their
//     time to live are asked for again), and as soon as SMART answers under
//     way arrive.
// No round ever waits on a child process: smartctl runs are asynchronous
// (Smart.h), and one that hangs is given up at its timeout.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <thread>

#include "ConfiguredSources.h"

namespace zeda::pelka::platform {

// The longest a look-up that saw a changed file waits for the round that
// reads it; after that it answers from the inventory in service.
inline constexpr std::chrono::milliseconds kChangeWait{500};

class Refresher {
 public:
  // `publish` receives every round's outcome on the refresher's thread,
  // with the reset count the round started under.
  using Publish = std::function<void(ConfiguredRead read, std::uint64_t resets)>;

  explicit Refresher(Publish publish);
  // Stops the thread; never waits for a child process.
  ~Refresher();
  void Stop();
  Refresher(const Refresher&) = delete;
  Refresher& operator=(const Refresher&) = delete;

  // Called by every look-up in configuration mode, without any lock of the
  // store held. Returns at once unless a round is needed: the first of the
  // process (or since Reset) is waited for until it ends; one for a changed
  // file at most kChangeWait.
  void Sync();

  // Forgets what the rounds so far have read: the next look-up waits for a
  // new round, and until a look-up asks, no round runs (the refresher
  // rests). Returns the new reset count. Never waits: the caller may hold
  // the lock that Publish takes.
  std::uint64_t Reset();
  // Waits for the round under way, if any, to end. Called after Reset with
  // no lock of the store held: once it returns, the refresher reads nothing
  // (files, the environment) until the next look-up.
  void AwaitRest();

 private:
  void Run();
  // Whether the files the last round read have changed since.
  static bool FilesChanged();

  const Publish publish_;
  std::mutex mutex_;
  std::condition_variable wake_;  // the refresher: a round is wanted, or stop
  std::condition_variable done_;  // look-ups: a round has ended
  std::uint64_t wanted_ = 0;      // tickets handed out to look-ups
  std::uint64_t finished_ = 0;    // every ticket up to this one is served
  std::uint64_t resets_ = 0;
  std::uint64_t servedResets_ = ~std::uint64_t{0};  // the reset count of the last round
  bool resting_ = false;  // since Reset, until a look-up asks for a round
  bool inRound_ = false;  // a round is running (outside mutex_)
  bool stop_ = false;
  std::thread thread_;  // started at the first Sync
};

}  // namespace zeda::pelka::platform
