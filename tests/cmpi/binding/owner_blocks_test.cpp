// The per-thread lists of freed owner blocks, and owners whose copies go on
// other threads than the one that made the object.
#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <thread>
#include <vector>

#include "CmpiCpp.h"
#include "CmpiOwnerBlocks.h"
#include "FakeBroker.h"

namespace zeda::test {
namespace {

using cmpi_detail::giveOwnerBlock;
using cmpi_detail::kOwnerBlockBytes;
using cmpi_detail::takeOwnerBlock;

TEST(OwnerBlocks, AFreedBlockIsTakenAgainOnTheSameThread) {
  std::thread([] {
    void* const first = takeOwnerBlock();
    std::memset(first, 0xab, kOwnerBlockBytes);  // the whole block is usable
    giveOwnerBlock(first);
    void* const again = takeOwnerBlock();
    EXPECT_EQ(again, first);
    giveOwnerBlock(again);
  }).join();
}

TEST(OwnerBlocks, AThreadKeepsAFewHundredBlocksAndFreesTheRest) {
  std::thread([] {
    std::vector<void*> taken;
    for (int i = 0; i < 1000; ++i) taken.push_back(takeOwnerBlock());
    EXPECT_EQ(std::set<void*>(taken.begin(), taken.end()).size(), taken.size());
    for (void* block : taken) giveOwnerBlock(block);
    // The list holds the blocks given first, up to its limit; the others
    // went back to the heap. Taken again, they come out last in, first out.
    std::vector<void*> again;
    for (int i = 0; i < 256; ++i) again.push_back(takeOwnerBlock());
    for (int i = 0; i < 256; ++i) EXPECT_EQ(again[i], taken[255 - i]) << "block " << i;
    for (void* block : again) giveOwnerBlock(block);
  }).join();
}

TEST(OwnerBlocks, ABlockMayBeFreedOnAnotherThread) {
  void* const block = takeOwnerBlock();
  void* reused = nullptr;
  std::thread([&] {
    giveOwnerBlock(block);
    reused = takeOwnerBlock();  // from this thread's list now
    giveOwnerBlock(reused);
  }).join();
  EXPECT_EQ(reused, block);
}

TEST(OwnerBlocks, TheLastCopyOfAnOwnerReleasesOnceOnAnyThread) {
  fake::Broker mb;
  const CMPIString* enc = nullptr;
  std::vector<CmpiString> copies;
  {
    const CmpiBrokerScope scope(mb.enc());
    const CmpiString made("shared");
    enc = made.getEnc();
    for (int i = 0; i < 8; ++i) copies.push_back(made);
  }
  std::vector<std::thread> threads;
  for (CmpiString& copy : copies) {
    threads.emplace_back([held = std::move(copy)]() mutable { held = CmpiString(); });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(mb.releasesOf(enc), 1);
  EXPECT_EQ(mb.releasesInAll(), 1);
}

}  // namespace
}  // namespace zeda::test
