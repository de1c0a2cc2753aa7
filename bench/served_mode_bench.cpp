// The cost of a request in configuration mode beside file mode, through the
// in-process object manager: the same inventory file (BenchServedFile.h)
// served once through a configuration file with one file source and once
// named directly, in one run.
//
//   BM_ServedGetExtent/<mode>: getInstance of one extent (the last disk of
//     the last NAS) at 1,000 disks in NAS devices of 500 and at 1,000,000 in
//     one NAS: a request's cost must not grow with the inventory;
//   BM_ServedEnum/<class>/<mode>: the enumeration of each of the ten instance
//     classes at 100,000 disks in one NAS, reported per disk;
//   BM_ServedGetExtentPaired (1,000 disks), BM_ServedEnumPaired/<class>: the
//     same requests alternating between the modes, with the median ratio of
//     the pairs as a counter.
//
// File and configuration mode of one class and size run next to each other,
// so that a busy machine weighs on both alike; bench/ratios.py prints
// configuration / file mode. The first request of each benchmark is untimed:
// on it the library reads the served file (in configuration mode, its
// refresher thread does and the request waits for it).
#include <benchmark/benchmark.h>

#include <time.h>
#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "BenchHost.h"
#include "BenchInventory.h"
#include "BenchServedFile.h"
#include "zeda/host/all.hpp"

namespace {

namespace host = zeda::host;

using zeda::bench::DiskId;
using zeda::bench::ServedFile;
using zeda::bench::ServeMode;
using zeda::bench::Size;

// Not inlined, so that callgrind can count the timed requests alone
// (bench/callgrind_served_get_extent.sh): the untimed first request does
// not pass through here.
[[gnu::noinline]] host::Outcome TimedGetInstance(host::Host& h, const host::ObjectPath& path,
                                                 host::ResultSink& sink) {
  return h.getInstance("ZEDA_StorageExtent_DiskProvider", path, std::nullopt, sink);
}

// The extent of the last disk of the last NAS.
host::ObjectPath ExtentPath(const Size& size) {
  const int last = size.disks - 1;
  const std::string nas = size.nas(last / size.perNas);
  host::ObjectPath path("root/cimv2", "ZEDA_StorageExtent_Disk");
  path.addKey("SystemName", nas).addKey("DeviceID", nas + ":DiskExtent" + DiskId(last));
  return path;
}

void GetExtent(benchmark::State& state, ServeMode mode) {
  const Size size = zeda::bench::SizeOf(state);
  const host::ObjectPath path = ExtentPath(size);
  const ServedFile served(mode, size);
  host::Host& h = zeda::bench::ModuleHost();
  {
    zeda::bench::CountingSink sink;
    if (!h.getInstance("ZEDA_StorageExtent_DiskProvider", path, std::nullopt, sink).ok() ||
        sink.count() != 1) {
      state.SkipWithError("the served inventory does not answer the extent");
      return;
    }
  }
  for (auto _ : state) {
    zeda::bench::CountingSink sink;
    const host::Outcome outcome = TimedGetInstance(h, path, sink);
    if (!outcome.ok() || sink.count() != 1) {
      state.SkipWithError("unexpected answer from the module");
      break;
    }
  }
}

void Enumerate(benchmark::State& state, ServeMode mode, const std::string& className,
               std::size_t (*perDisk)(int disk)) {
  const Size size = zeda::bench::SizeOf(state);
  std::size_t expected = 0;
  for (int d = 0; d < size.disks; ++d) expected += perDisk(d);
  const ServedFile served(mode, size);
  host::Host& h = zeda::bench::ModuleHost();
  const std::string provider = className + "Provider";
  const host::ObjectPath classPath("root/cimv2", className);
  {
    zeda::bench::CountingSink sink;
    if (!h.enumerateInstances(provider, classPath, std::nullopt, sink).ok() ||
        sink.count() != expected) {
      state.SkipWithError("the served inventory does not answer the enumeration");
      return;
    }
  }
  for (auto _ : state) {
    zeda::bench::CountingSink sink;
    const host::Outcome outcome = h.enumerateInstances(provider, classPath, std::nullopt, sink);
    if (!outcome.ok() || sink.count() != expected) {
      state.SkipWithError("unexpected answer from the module");
      break;
    }
  }
  state.SetItemsProcessed(state.iterations() * size.disks);
}

// The CPU time of this thread, for timing one request within an iteration.
double ThreadCpuSeconds() {
  timespec now{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const std::size_t middle = values.size() / 2;
  return values.size() % 2 != 0 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

// Per iteration, `repeat` requests in file mode and as many in configuration
// mode, each batch after an untimed first request in its mode; reports the
// medians of the CPU time per request of either mode and of the ratio of each
// pair. On a busy machine the load drifts over seconds: a pair taken within
// one second sees nearly the same. `request` answers whether the module's
// answer was the expected one.
template <class Request>
void Paired(benchmark::State& state, int repeat, Request request) {
  const Size size = zeda::bench::SizeOf(state);
  host::Host& h = zeda::bench::ModuleHost();
  std::vector<double> fileSeconds;
  std::vector<double> configSeconds;
  std::vector<double> ratios;
  for (auto _ : state) {
    double seconds[2] = {0, 0};
    for (const ServeMode mode : {ServeMode::File, ServeMode::Config}) {
      state.PauseTiming();
      const ServedFile served(mode, size);
      bool expected = request(h);
      state.ResumeTiming();
      const double start = ThreadCpuSeconds();
      for (int i = 0; i < repeat; ++i) expected = request(h) && expected;
      seconds[mode == ServeMode::File ? 0 : 1] = (ThreadCpuSeconds() - start) / repeat;
      if (!expected) {
        state.SkipWithError("unexpected answer from the module");
        return;
      }
    }
    fileSeconds.push_back(seconds[0]);
    configSeconds.push_back(seconds[1]);
    ratios.push_back(seconds[1] / seconds[0]);
  }
  state.counters["file_us"] = Median(fileSeconds) * 1e6;
  state.counters["config_us"] = Median(configSeconds) * 1e6;
  state.counters["config_to_file"] = Median(ratios);
}

void EnumeratePaired(benchmark::State& state, const std::string& className,
                     std::size_t (*perDisk)(int disk)) {
  const Size size = zeda::bench::SizeOf(state);
  std::size_t expected = 0;
  for (int d = 0; d < size.disks; ++d) expected += perDisk(d);
  const std::string provider = className + "Provider";
  const host::ObjectPath classPath("root/cimv2", className);
  Paired(state, 1, [&](host::Host& h) {
    zeda::bench::CountingSink sink;
    return h.enumerateInstances(provider, classPath, std::nullopt, sink).ok() &&
           sink.count() == expected;
  });
}

// Requests per timed batch of BM_ServedGetExtentPaired: some 30 ms.
constexpr int kGetBatch = 1000;

void GetExtentPaired(benchmark::State& state) {
  const host::ObjectPath path = ExtentPath(zeda::bench::SizeOf(state));
  Paired(state, kGetBatch, [&](host::Host& h) {
    zeda::bench::CountingSink sink;
    return h.getInstance("ZEDA_StorageExtent_DiskProvider", path, std::nullopt, sink).ok() &&
           sink.count() == 1;
  });
}

struct EnumeratedClass {
  const char* name;
  std::size_t (*perDisk)(int disk);
};

constexpr EnumeratedClass kClasses[] = {
    {"ZEDA_DiskDrive", zeda::bench::EveryDisk},
    {"ZEDA_StorageExtent_Disk", zeda::bench::EveryDisk},
    {"ZEDA_PhysicalPackage_Disk", zeda::bench::EveryDisk},
    {"ZEDA_SoftwareIdentity_Disk", zeda::bench::EveryDisk},
    {"ZEDA_SystemDevice_DiskDrive", zeda::bench::EveryDisk},
    {"ZEDA_SystemDevice_StorageExtent_Disk", zeda::bench::EveryDisk},
    {"ZEDA_MediaPresent", zeda::bench::EveryDisk},
    {"ZEDA_Realizes_Disk", zeda::bench::EveryDisk},
    {"ZEDA_ElementSoftwareIdentity_Disk", zeda::bench::EveryDisk},
    {"ZEDA_ConcreteComponent_Primordial", zeda::bench::EnumeratedInAPool},
};

constexpr ServeMode kModes[] = {ServeMode::File, ServeMode::Config};

// Pairs of enumerations per BM_ServedEnumPaired run.
constexpr benchmark::IterationCount kPairs = 7;

// ZEDA_BENCH_REQUESTS=N runs each BM_ServedGetExtent exactly N timed
// requests, in one run, so that a count of instructions divides by N.
std::optional<benchmark::IterationCount> FixedRequests() {
  const char* text = std::getenv("ZEDA_BENCH_REQUESTS");
  if (text == nullptr || *text == '\0') return std::nullopt;
  char* end = nullptr;
  const long long count = std::strtoll(text, &end, 10);
  if (*end != '\0' || count <= 0) {
    std::fprintf(stderr, "ZEDA_BENCH_REQUESTS: not a positive number: %s\n", text);
    std::exit(2);
  }
  return static_cast<benchmark::IterationCount>(count);
}

bool Register() {
  const std::optional<benchmark::IterationCount> requests = FixedRequests();
  for (const int disks : {1000, 1000000}) {
    for (const ServeMode mode : kModes) {
      const std::string name = std::string("BM_ServedGetExtent/") + zeda::bench::ModeName(mode);
      benchmark::internal::Benchmark* b =
          benchmark::RegisterBenchmark(name.c_str(),
                                       [mode](benchmark::State& state) { GetExtent(state, mode); })
              ->ArgNames({"disks", "perNas"})
              ->Args({disks, disks == 1000 ? 500 : disks})
              ->Unit(benchmark::kMicrosecond);
      if (requests) {
        b->Iterations(*requests);
      } else {
        b->MinTime(zeda::bench::kMinSeconds);
      }
    }
  }
  for (const EnumeratedClass& enumerated : kClasses) {
    for (const ServeMode mode : kModes) {
      const std::string name =
          std::string("BM_ServedEnum/") + enumerated.name + "/" + zeda::bench::ModeName(mode);
      benchmark::RegisterBenchmark(name.c_str(),
                                   [mode, enumerated](benchmark::State& state) {
                                     Enumerate(state, mode, enumerated.name, enumerated.perDisk);
                                   })
          ->ArgNames({"disks", "perNas"})
          ->Args({100000, 100000})
          ->MinTime(zeda::bench::kMinSeconds)
          ->Unit(benchmark::kMillisecond);
    }
  }
  benchmark::RegisterBenchmark("BM_ServedGetExtentPaired", GetExtentPaired)
      ->ArgNames({"disks", "perNas"})
      ->Args({1000, 500})
      ->Iterations(kPairs)
      ->Unit(benchmark::kMillisecond);
  for (const EnumeratedClass& enumerated : kClasses) {
    const std::string name = std::string("BM_ServedEnumPaired/") + enumerated.name;
    benchmark::RegisterBenchmark(name.c_str(),
                                 [enumerated](benchmark::State& state) {
                                   EnumeratePaired(state, enumerated.name, enumerated.perDisk);
                                 })
        ->ArgNames({"disks", "perNas"})
        ->Args({100000, 100000})
        ->Iterations(kPairs)
        ->Unit(benchmark::kMillisecond);
  }
  return true;
}

[[maybe_unused]] const bool registered = Register();

}  // namespace
