// The live inventory file: re-read on change only, last good inventory kept,
// references stable across reloads.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "InventoryRefusal.h"
#include "TempDir.h"
#include "inventory/Library.h"
#include "platform/Inventory.h"

namespace zeda::test {
namespace {

using namespace zeda::pelka;

using ::testing::HasSubstr;

std::vector<std::string> Names(const std::list<Nas>& list) {
  std::vector<std::string> names;
  for (const Nas& nas : list) names.push_back(nas.name);
  return names;
}

// An inventory whose NAS devices are `names`, each with one disk "1".
std::string Document(const std::vector<std::string>& names) {
  std::string text = R"({"nas": [)";
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (i != 0) text += ", ";
    text +=
        R"({"name": ")" + names[i] + R"(", "disks": [{"id": "1", "identity": {"serial": "x"}}]})";
  }
  return text + "]}";
}

class FileInventory : public ::testing::Test {
 protected:
  FileInventory() { platform::UseFileInventory(); }
  ~FileInventory() override { platform::UseFileInventory(); }

  TempDir directory_;
  const std::string path_ = directory_.file("inventory.json");
  const ScopedEnv setting_{"PELKA_INVENTORY", path_};
};

const char kOneNas[] = R"({"nas": [{"name": "nas1", "disks": [{"id": "0:1", "capacity": 100}]}]})";
const char kTwoNas[] =
    R"({"nas": [{"name": "nas2", "disks": [{"id": "0:2", "capacity": 200}]}, {"name": "nas3"}]})";

TEST_F(FileInventory, ChangedFileIsReadAgain) {
  ReplaceFile(path_, kOneNas);
  EXPECT_EQ(Names(GetNasList()), (std::vector<std::string>{"nas1"}));
  ReplaceFile(path_, kTwoNas);
  EXPECT_EQ(Names(GetNasList()), (std::vector<std::string>{"nas2", "nas3"}));
  EXPECT_EQ(GetOrvi(Nas::Get("nas2")).GetDiskList().disks.at(0).capacity, 200u);
  EXPECT_EQ(Thrown([] { Nas::Get("nas1"); }), "NAS not found: nas1");
}

TEST_F(FileInventory, FileRewrittenInPlaceIsReadAgain) {
  ReplaceFile(path_, kOneNas);
  EXPECT_EQ(Names(GetNasList()), (std::vector<std::string>{"nas1"}));
  {
    std::ofstream out(path_, std::ios::binary | std::ios::trunc);  // same inode, other size
    out << kTwoNas;
  }
  EXPECT_EQ(Names(GetNasList()), (std::vector<std::string>{"nas2", "nas3"}));
}

TEST_F(FileInventory, EachLookupChecksTheFile) {
  ReplaceFile(path_, kOneNas);
  EXPECT_EQ(Nas::Get("nas1").name, "nas1");
  ReplaceFile(path_, kTwoNas);
  EXPECT_EQ(Nas::Get("nas3").name, "nas3");
  ReplaceFile(path_, kOneNas);
  EXPECT_EQ(util::GetNas("nas1").name, "nas1");
}

TEST_F(FileInventory, UnchangedFileIsNotParsedAgain) {
  ReplaceFile(path_, kOneNas);
  const std::uint64_t before = platform::InventoryParseCount();
  const std::list<Nas>& first = GetNasList();
  EXPECT_EQ(platform::InventoryParseCount(), before + 1);
  for (int i = 0; i < 10; ++i) {
    EXPECT_EQ(&GetNasList(), &first);
    EXPECT_EQ(Nas::Get("nas1").name, "nas1");
    EXPECT_EQ(util::GetNas("nas1").name, "nas1");
    GetOrvi(Nas::Get("nas1")).GetDiskList();
  }
  EXPECT_EQ(platform::InventoryParseCount(), before + 1);
  ReplaceFile(path_, kTwoNas);
  GetNasList();
  EXPECT_EQ(platform::InventoryParseCount(), before + 2);
}

TEST_F(FileInventory, IdenticalRewriteKeepsTheInventoryInService) {
  ReplaceFile(path_, kOneNas);
  const std::list<Nas>& first = GetNasList();
  const std::uint64_t before = platform::InventoryParseCount();
  ReplaceFile(path_, kOneNas);
  EXPECT_EQ(&GetNasList(), &first);
  EXPECT_EQ(platform::InventoryParseCount(), before + 1);  // read, found equal
  platform::ForgetInventoryFileState();
  EXPECT_EQ(&GetNasList(), &first);
  EXPECT_EQ(platform::InventoryParseCount(), before + 2);
}

TEST_F(FileInventory, MissingFileIsAnErrorNamingIt) {
  const std::string expected =
      "Cannot read inventory file " + path_ + ": No such file or directory";
  EXPECT_EQ(Thrown([] { GetNasList(); }), expected);
  EXPECT_EQ(Thrown([] { Nas::Get("nas1"); }), expected);
  EXPECT_EQ(Thrown([] { util::GetNas("nas1"); }), expected);
}

TEST_F(FileInventory, MalformedFileWithoutGoodPredecessorIsThrownEveryCall) {
  ReplaceFile(path_, R"({"nas": [{"name": "nas1", "disks": [{"id": "1", "rpm": -1}]}]})");
  const std::string expected =
      "Bad inventory file " + path_ + ": nas[0].disks[0].rpm: number is negative";
  const std::uint64_t before = platform::InventoryParseCount();
  EXPECT_EQ(Thrown([] { GetNasList(); }), expected);
  EXPECT_EQ(Thrown([] { Nas::Get("nas1"); }), expected);
  EXPECT_EQ(Thrown([] { util::GetNas("nas1"); }), expected);
  EXPECT_EQ(platform::InventoryParseCount(), before + 1);  // refused once, remembered
  ReplaceFile(path_, kOneNas);
  EXPECT_EQ(Names(GetNasList()), (std::vector<std::string>{"nas1"}));
}

TEST_F(FileInventory, MalformedChangeKeepsTheLastGoodInventory) {
  ReplaceFile(path_, kOneNas);
  const std::list<Nas>& good = GetNasList();
  ReplaceFile(path_, R"({"nas": [{"name": "nas1"}, {"name": "nas1"}]})");
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(&GetNasList(), &good);
  EXPECT_EQ(Nas::Get("nas1").name, "nas1");
  EXPECT_EQ(util::GetNas("nas1").name, "nas1");
  const std::string logged = ::testing::internal::GetCapturedStderr();
  const std::string message =
      "Bad inventory file " + path_ + ": nas[1].name: duplicate NAS name \"nas1\" (also at nas[0])";
  const auto at = logged.find(message);
  ASSERT_NE(at, std::string::npos) << logged;
  // Logged once, not once per call, on a line of ERROR severity (glog's "E").
  EXPECT_EQ(at, logged.rfind(message));
  const auto lineStart = logged.rfind('\n', at);
  EXPECT_EQ(logged[lineStart == std::string::npos ? 0 : lineStart + 1], 'E') << logged;
  ReplaceFile(path_, kTwoNas);
  EXPECT_EQ(Names(GetNasList()), (std::vector<std::string>{"nas2", "nas3"}));
}

TEST_F(FileInventory, VanishedFileKeepsTheLastGoodInventory) {
  ReplaceFile(path_, kOneNas);
  const std::list<Nas>& good = GetNasList();
  std::filesystem::remove(path_);
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(&GetNasList(), &good);
  const std::string logged = ::testing::internal::GetCapturedStderr();
  EXPECT_THAT(logged,
              HasSubstr("Cannot read inventory file " + path_ + ": No such file or directory"));
}

TEST_F(FileInventory, InventoryPathIsReadOnEveryCall) {
  ReplaceFile(path_, kOneNas);
  EXPECT_EQ(Names(GetNasList()), (std::vector<std::string>{"nas1"}));
  const std::string other = directory_.file("other.json");
  ReplaceFile(other, kTwoNas);
  const ScopedEnv elsewhere("PELKA_INVENTORY", other);
  EXPECT_EQ(Names(GetNasList()), (std::vector<std::string>{"nas2", "nas3"}));
}

TEST_F(FileInventory, DefaultFileLivesInTheProgramData) {
  const ScopedEnv noFile("PELKA_INVENTORY", "");
  const ScopedEnv data("PELKA_PROGRAM_DATA", directory_.path());
  ReplaceFile(directory_.file("inventory.json"), kTwoNas);
  EXPECT_EQ(Names(GetNasList()), (std::vector<std::string>{"nas2", "nas3"}));
}

TEST_F(FileInventory, ReferencesSurviveAReloadFromAnotherThread) {
  ReplaceFile(path_, kOneNas);
  const std::list<Nas>& list = GetNasList();
  const Nas& nas = Nas::Get("nas1");
  zeda::orvi::Orvi& orvi = GetOrvi(nas);

  std::thread reloader([this] {
    ReplaceFile(path_, kTwoNas);
    EXPECT_EQ(Names(GetNasList()), (std::vector<std::string>{"nas2", "nas3"}));
  });
  reloader.join();

  // The request under way still sees the inventory it started with.
  EXPECT_EQ(Names(list), (std::vector<std::string>{"nas1"}));
  EXPECT_EQ(nas.name, "nas1");
  EXPECT_EQ(&GetOrvi(nas), &orvi);
  const zeda::orvi::OrviDiskList disks = orvi.GetDiskList();
  ASSERT_EQ(disks.disks.size(), 1u);
  EXPECT_EQ(disks.disks[0].id, "0:1");
  EXPECT_EQ(orvi.GetDiskHealth("01").healthStatus, 0u);
  EXPECT_NE(&GetNasList(), &list);
}

// Readers walk the inventory while a writer keeps replacing it. Every version
// has as many NAS devices as its version number, named v<version>-<index>,
// so a reader can tell a consistent view from a torn one.
TEST_F(FileInventory, ConcurrentReadersSeeConsistentSnapshots) {
  const auto version = [](int n) {
    std::vector<std::string> names;
    for (int i = 0; i < n; ++i) names.push_back("v" + std::to_string(n) + "-" + std::to_string(i));
    return Document(names);
  };
  ReplaceFile(path_, version(1));
  GetNasList();
  std::atomic<bool> done{false};
  std::atomic<int> torn{0};
  std::atomic<long> walks{0};
  std::vector<std::thread> readers;
  for (int r = 0; r < 4; ++r) {
    readers.emplace_back([&] {
      while (!done) {
        const std::list<Nas>& list = GetNasList();
        const std::string prefix = "v" + std::to_string(list.size()) + "-";
        int index = 0;
        for (const Nas& nas : list) {
          if (nas.name != prefix + std::to_string(index++)) ++torn;
          if (GetOrvi(nas).GetDiskList().disks.size() != 1) ++torn;
        }
        ++walks;
      }
    });
  }
  for (int n = 2; n <= 40; ++n) {
    ReplaceFile(path_, version(n));
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  done = true;
  for (std::thread& reader : readers) reader.join();
  EXPECT_EQ(torn.load(), 0);
  EXPECT_GT(walks.load(), 0);
  EXPECT_EQ(GetNasList().size(), 40u);
}

}  // namespace
}  // namespace zeda::test
