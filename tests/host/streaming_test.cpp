// Results handed to a sink one by one as the provider returns them, and the
// instance the broker holds handed over as it is.
#include <gtest/gtest.h>
#include <malloc.h>

#include <string>
#include <vector>

#include "host_fixture.hpp"
#include "zeda/host/format.hpp"

namespace zeda::test {

using namespace zeda::host;

namespace {

constexpr unsigned kItems = 500;  // what ZEDA_HostMany enumerates

const char* manyProvider() { return ZEDA_TEST_CONCURRENT_PROVIDER; }

ObjectPath manyClass(const std::string& tag) {
  return ObjectPath("root/cimv2", "ZEDA_HostMany", {{"Tag", Value::string(tag)}});
}

// Records each result with the number of results seen before it.
class Recorder final : public ResultSink {
 public:
  void instance(const Instance& i) override { instances.push_back(i); }
  void path(const ObjectPath& p) override { paths.push_back(p); }
  void value(const Value& v) override { values.push_back(v); }
  std::vector<Instance> instances;
  std::vector<ObjectPath> paths;
  std::vector<Value> values;
};

// Fails the provider's returnInstance after a number of results: proves the
// sink runs inside the provider's call, not after it returned.
class Refuser final : public ResultSink {
 public:
  explicit Refuser(unsigned after) : after_(after) {}
  void instance(const Instance&) override {
    if (++seen_ > after_) throw std::runtime_error("enough");
  }
  void path(const ObjectPath&) override {}
  void value(const Value&) override {}
  unsigned seen() const { return seen_; }

 private:
  unsigned after_;
  unsigned seen_ = 0;
};

}  // namespace

TEST(Streaming, EveryResultGoesToTheSinkInOrderAndNoneIntoTheOutcome) {
  Host h(manyProvider());
  Recorder sink;
  const Outcome out =
      h.enumerateInstances("ZEDA_HostManyProvider", manyClass("s"), std::nullopt, sink);
  ASSERT_TRUE(out.ok()) << out.status.code;
  EXPECT_TRUE(out.done);
  EXPECT_TRUE(out.results.empty());
  ASSERT_EQ(sink.instances.size(), kItems);
  for (unsigned i = 0; i < kItems; ++i) {
    const Instance& inst = sink.instances[i];
    EXPECT_EQ(inst.property("Index").u(), i);
    EXPECT_EQ(inst.property("Name").str(), "item-" + std::to_string(i));
    EXPECT_EQ(inst.property("Tag").str(), "s");
    EXPECT_EQ(inst.path().key("Name").str(), "item-" + std::to_string(i));
  }
}

TEST(Streaming, TheSinkRunsWhileTheProviderIsStillReturning) {
  Host h(manyProvider());
  Refuser sink(3);
  const Outcome out =
      h.enumerateInstances("ZEDA_HostManyProvider", manyClass("r"), std::nullopt, sink);
  // The provider stops at the first failed returnInstance and answers it.
  EXPECT_EQ(out.status.code, CMPI_RC_ERR_FAILED);
  EXPECT_FALSE(out.done);
  EXPECT_EQ(sink.seen(), 4u);
}

TEST(Streaming, CollectedAndStreamedResultsAreTheSame) {
  Host h(testProvider());
  const ObjectPath cls("root/cimv2", kTestClass);
  const Outcome collected = h.enumerateInstances(kTestProvider, cls);
  Recorder sink;
  const Outcome streamed = h.enumerateInstances(kTestProvider, cls, std::nullopt, sink);
  ASSERT_TRUE(collected.ok());
  ASSERT_TRUE(streamed.ok());
  EXPECT_EQ(collected.instances(), sink.instances);
  EXPECT_EQ(collected.done, streamed.done);

  const Outcome names = h.enumerateInstanceNames(kTestProvider, cls);
  Recorder pathSink;
  h.enumerateInstanceNames(kTestProvider, cls, pathSink);
  EXPECT_EQ(names.paths(), pathSink.paths);
  ASSERT_FALSE(pathSink.paths.empty());
}

TEST(Streaming, AFilteredInstanceIsHandedOverWithTheFilterApplied) {
  // The broker's own instance is handed over without reading it back through
  // the function table: what the filter dropped stays dropped, the key stays.
  Host h(testProvider());
  Recorder sink;
  const Outcome out =
      h.getInstance(kTestProvider, testPath("1"), std::vector<std::string>{"U16"}, sink);
  ASSERT_TRUE(out.ok());
  ASSERT_EQ(sink.instances.size(), 1u);
  EXPECT_EQ(sink.instances[0].names(), (std::vector<std::string>{"InstanceID", "U16"}));
  EXPECT_EQ(sink.instances[0].property("U16").u(), 65535u);
}

// Heap in use now, in bytes.
std::size_t heapInUse() { return mallinfo2().uordblks; }

// Notes the heap in use at two results of the enumeration.
class HeapProbe final : public ResultSink {
 public:
  void instance(const Instance&) override {
    ++seen;
    if (seen == 100) atFirst = heapInUse();
    if (seen == kItems) atLast = heapInUse();
  }
  void path(const ObjectPath&) override {}
  void value(const Value&) override {}
  double bytesPerResult() const {
    return (static_cast<double>(atLast) - static_cast<double>(atFirst)) / (kItems - 100);
  }
  unsigned seen = 0;
  std::size_t atFirst = 0;
  std::size_t atLast = 0;
};

TEST(Streaming, WhatAProviderReleasesIsFreedAtOnce) {
  // A released object is freed at once; only its face (two pointers) stays
  // until the request ends, so a provider that releases what it returned
  // runs in far less memory than one that keeps everything to the end of
  // the call.
  Host h(manyProvider());
  HeapProbe keep;
  ASSERT_TRUE(
      h.enumerateInstances("ZEDA_HostManyProvider", manyClass("keep"), std::nullopt, keep).ok());
  HeapProbe released;
  ASSERT_TRUE(
      h.enumerateInstances("ZEDA_HostManyProvider", manyClass("release"), std::nullopt, released)
          .ok());
  ASSERT_EQ(released.seen, kItems);
  if (keep.bytesPerResult() <= 0) {
    GTEST_SKIP()
        << "no heap statistics here (a sanitizer's allocator answers mallinfo2 with zeros)";
  }
  EXPECT_LT(released.bytesPerResult(), 0.1 * keep.bytesPerResult())
      << "released " << released.bytesPerResult() << " B/result, kept " << keep.bytesPerResult()
      << " B/result";
}

TEST(Streaming, ObjectsOfARequestAreFreedWhenItEnds) {
  Host h(manyProvider());
  Recorder sink;
  h.enumerateInstances("ZEDA_HostManyProvider", manyClass("f"), std::nullopt, sink);
  // Nothing of the request outlives it: no clone, and the next request still
  // works on a fresh store.
  EXPECT_EQ(h.liveClones(), 0u);
  Recorder again;
  EXPECT_TRUE(
      h.enumerateInstances("ZEDA_HostManyProvider", manyClass("g"), std::nullopt, again).ok());
  EXPECT_EQ(again.instances.size(), kItems);
}

}  // namespace zeda::test
