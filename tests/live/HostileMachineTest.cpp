// What sysfs and the udev database should never show, on a copy of the
// recorded NAS machine: a disk directory that cannot be read, attributes
// missing or unreadable, udev entries with garbage. Each is one ERROR line
// (again only when it changes or comes back), and the rest of the machine is
// served.
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "ErrorLines.h"
#include "Fixtures.h"
#include "LinuxSource.h"
#include "MachineCopy.h"
#include "PrintableText.h"

namespace zeda::test {
namespace {

namespace fs = std::filesystem;
using pelka::platform::DiskRecord;
using pelka::platform::LinuxSource;
using Lines = std::vector<std::string>;

constexpr std::size_t kNasDisks = 9;
const char* const kSsd = "wwn-0x5002538e45555555";      // sde, blank and free
const char* const kOld = "sata-OLDDISK_160_OD7777777";  // sdg, blank and free

void WriteBytes(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

// A copy of the NAS machine and a source reading it, with the ERROR lines
// written since the last look.
class HostileMachine : public ::testing::Test {
 protected:
  HostileMachine() : machine_(ZEDA_LINUX_FIXTURE), source_(machine_.Config()) {}

  std::map<std::string, DiskRecord> Read() { return DisksById(source_.Read()); }

  // The lines written since the last call.
  Lines NewLines() {
    const Lines all = errors_.Lines();
    Lines fresh(all.begin() + static_cast<std::ptrdiff_t>(seen_), all.end());
    seen_ = all.size();
    return fresh;
  }

  // The sysfs directory of a disk (the target of its /sys/block link).
  std::string DiskDirectory(const std::string& name) const {
    return fs::canonical(machine_.Path("sys/block/" + name)).string();
  }

  const MachineCopy machine_;
  LinuxSource source_;
  const ErrorLines errors_;
  std::size_t seen_ = 0;
};

TEST_F(HostileMachine, AnUnreadableDiskDirectoryLeavesThatDiskOut) {
  const std::string link = machine_.Path("sys/block/sde");
  const fs::path target = fs::read_symlink(link);
  fs::remove(link);
  fs::create_directory_symlink("sde", link);  // a link to itself
  auto disks = Read();
  EXPECT_EQ(disks.size(), kNasDisks - 1);
  EXPECT_EQ(disks.count(kSsd), 0u);
  EXPECT_EQ(disks.at(kOld).disk.isFree, true);  // the others are as before
  EXPECT_EQ(NewLines(),
            Lines{"Cannot read " + link + ": Too many levels of symbolic links (sde is left out)"});
  Read();
  EXPECT_EQ(NewLines(), Lines{});  // once, not at every read

  fs::remove(link);
  fs::create_directory_symlink(target, link);
  EXPECT_EQ(Read().size(), kNasDisks);
  EXPECT_EQ(NewLines(), Lines{});

  fs::remove(link);
  fs::create_directory_symlink("../nowhere/sde", link);  // back, another way
  EXPECT_EQ(Read().size(), kNasDisks - 1);
  EXPECT_EQ(NewLines(),
            Lines{"Cannot read " + link + ": No such file or directory (sde is left out)"});
}

TEST_F(HostileMachine, MissingAttributesAreServedWithoutWhatTheyGive) {
  const std::string sdg = DiskDirectory("sdg");
  fs::remove(sdg + "/size");
  fs::remove(sdg + "/dev");
  const auto disks = Read();
  ASSERT_EQ(disks.size(), kNasDisks);
  // Without dev there is no udev entry: the identity comes from sysfs and
  // smartctl, and a disk whose contents udev does not show is not free.
  const DiskRecord& old = disks.at("sata-OLDDISK_160_OD7777777");
  EXPECT_EQ(old.disk.capacity, 0u);
  EXPECT_FALSE(old.disk.isFree);
  EXPECT_EQ(old.paths, std::vector<std::string>{"sdg"});
  EXPECT_TRUE(disks.at(kSsd).disk.isFree);
  EXPECT_EQ(NewLines(), (Lines{"Bad sysfs attribute " + machine_.Path("sys/block/sdg/dev") +
                                   ": missing (sdg is served without its udev properties)",
                               "Bad sysfs attribute " + machine_.Path("sys/block/sdg/size") +
                                   ": missing (capacity of sdg unknown)"}));
  Read();
  EXPECT_EQ(NewLines(), Lines{});
}

TEST_F(HostileMachine, AttributesThatAreNotWhatTheKernelWrites) {
  const std::string sdg = DiskDirectory("sdg");
  fs::remove(sdg + "/size");
  fs::create_directory(sdg + "/size");
  WriteBytes(sdg + "/dev", "eight:ninety-six\n");
  WriteBytes(DiskDirectory("sdd") + "/size", std::string(5000, '7'));
  WriteBytes(DiskDirectory("sdc") + "/size", "99999999999999999999\n");
  const auto disks = Read();
  ASSERT_EQ(disks.size(), kNasDisks);
  EXPECT_EQ(disks.at(kOld).disk.capacity, 0u);
  EXPECT_EQ(disks.at("wwn-0x5000c500c3333333").disk.capacity, 0u);                   // sdc
  EXPECT_EQ(disks.at("wwn-0x50014ee2b1111111").disk.capacity, 7814037168ull * 512);  // sda
  EXPECT_EQ(NewLines(),
            (Lines{"Bad sysfs attribute " + machine_.Path("sys/block/sdc/size") +
                       ": \"99999999999999999999\" is not a number of sectors (capacity of sdc "
                       "unknown)",
                   "Bad sysfs attribute " + machine_.Path("sys/block/sdd/size") +
                       ": larger than 4096 bytes (capacity of sdd unknown)",
                   "Bad sysfs attribute " + machine_.Path("sys/block/sdg/dev") +
                       ": \"eight:ninety-six\" is not major:minor (sdg is served without its udev "
                       "properties)",
                   "Bad sysfs attribute " + machine_.Path("sys/block/sdg/size") +
                       ": cannot be read: Is a directory (capacity of sdg unknown)"}));
  Read();
  EXPECT_EQ(NewLines(), Lines{});
}

// The udev entry of sde (8:64) replaced by `bytes`: sde is served from sysfs
// and smartctl alone, not free, and the problem is one line.
class SpoiledUdevEntry : public HostileMachine {
 protected:
  std::string Entry() const { return machine_.Path("run/udev/data/b8:64"); }

  void ExpectRefused(const std::string& bytes, const std::string& problem) {
    WriteBytes(Entry(), bytes);
    const auto disks = Read();
    ASSERT_EQ(disks.size(), kNasDisks);
    EXPECT_EQ(disks.count(kSsd), 0u);  // its WWN comes from udev: gone with the entry
    for (const auto& [id, disk] : disks) {
      if (disk.paths == std::vector<std::string>{"sde"}) {
        EXPECT_FALSE(disk.disk.isFree) << id;
        EXPECT_EQ(disk.identity.model, "Samsung SSD 860") << id;  // sysfs's
        EXPECT_EQ(disk.disk.capacity, 976773168ull * 512) << id;
      }
    }
    EXPECT_TRUE(disks.at(kOld).disk.isFree);
    EXPECT_EQ(NewLines(), Lines{"Bad udev database entry " + Entry() + ": " + problem +
                                " (sde is served without its udev properties)"});
    Read();
    EXPECT_EQ(NewLines(), Lines{});
  }
};

TEST_F(SpoiledUdevEntry, BinaryData) {
  const char bytes[] =
      "E:ID_BUS=ata\n\x7f"
      "ELF\x02\x01\x01\0\0\0";
  ExpectRefused(std::string(bytes, sizeof bytes - 1), "line 2: binary data");
}

TEST_F(SpoiledUdevEntry, AHugeLine) {
  ExpectRefused("E:ID_BUS=ata\nE:ID_MODEL=" + std::string(100000, 'x') + "\n",
                "line 2: longer than 65536 bytes");
}

TEST_F(SpoiledUdevEntry, APropertyWithoutEquals) {
  ExpectRefused("E:ID_BUS=ata\nE:ID_FS_TYPE\nG:systemd\n", "line 2: property without \"=\"");
}

TEST_F(SpoiledUdevEntry, ALineOfNoKnownForm) {
  ExpectRefused("E:ID_BUS=ata\nID_FS_TYPE=ext4\n", "line 2: not a udev database line");
}

TEST_F(SpoiledUdevEntry, AnEntryOfManyMegabytes) {
  std::string entry;
  while (entry.size() <= 3 * 1024 * 1024) entry += "E:ID_PATH_TAG=" + std::string(1000, 'p') + "\n";
  ExpectRefused(entry, "larger than 1048576 bytes");
}

TEST_F(SpoiledUdevEntry, ADirectory) {
  fs::remove(Entry());
  fs::create_directory(Entry());
  const auto disks = Read();
  EXPECT_EQ(disks.size(), kNasDisks);
  EXPECT_EQ(NewLines(), Lines{"Bad udev database entry " + Entry() +
                              ": cannot be read: Is a directory (sde is served without its udev "
                              "properties)"});
}

TEST_F(SpoiledUdevEntry, AFifoDoesNotHoldTheRead) {
  fs::remove(Entry());
  ASSERT_EQ(::mkfifo(Entry().c_str(), 0600), 0);
  EXPECT_EQ(Read().size(), kNasDisks);
  EXPECT_EQ(NewLines(), Lines{"Bad udev database entry " + Entry() +
                              ": cannot be read: not a regular file (sde is served without its "
                              "udev properties)"});
}

TEST_F(SpoiledUdevEntry, OneLinePerProblemUntilItChanges) {
  const std::string good = [this] {
    std::ifstream in(Entry());
    return std::string(std::istreambuf_iterator<char>(in), {});
  }();
  WriteBytes(Entry(), "E:ID_FS_TYPE\n");
  Read();
  Read();
  EXPECT_EQ(NewLines().size(), 1u);
  WriteBytes(Entry(), "garbage\n");  // another problem: another line
  Read();
  EXPECT_EQ(NewLines().size(), 1u);
  WriteBytes(Entry(), good);  // mended: no line, and sde is free again
  EXPECT_TRUE(Read().at(kSsd).disk.isFree);
  EXPECT_EQ(NewLines(), Lines{});
  WriteBytes(Entry(), "garbage\n");  // back: logged again
  Read();
  EXPECT_EQ(NewLines().size(), 1u);
}

TEST_F(HostileMachine, TextThatCimCannotCarryBecomesQuestionMarks) {
  // udev's escapes for a control character, a byte that is not UTF-8 and a
  // well-formed euro sign.
  WriteBytes(machine_.Path("run/udev/data/b8:96"),
             "E:ID_BUS=ata\nE:ID_MODEL_ENC=Bad\\x01Model\\xff\\xe2\\x82\\xac\n"
             "E:ID_SERIAL_SHORT=OD7777777\n");
  for (const auto& [id, disk] : Read()) {
    if (disk.paths != std::vector<std::string>{"sdg"}) continue;
    EXPECT_EQ(disk.identity.model, "Bad?Model?\xe2\x82\xac");
    EXPECT_EQ(disk.identity.product, "Bad?Model?\xe2\x82\xac");
    EXPECT_EQ(id, "sata-Bad_Model_____OD7777777");
  }
  EXPECT_EQ(NewLines(), Lines{});
}

TEST(PrintableText, KeepsUtf8AndMarksEverythingElse) {
  using pelka::platform::PrintableText;
  EXPECT_EQ(PrintableText("WDC WD40EFRX-68N32N0"), "WDC WD40EFRX-68N32N0");
  EXPECT_EQ(PrintableText("tab\there\x7f"), "tab?here?");
  EXPECT_EQ(PrintableText("\xc3\xa9\xe2\x82\xac\xf0\x9f\x92\xbe"),
            "\xc3\xa9\xe2\x82\xac\xf0\x9f\x92\xbe");
  EXPECT_EQ(PrintableText("\xc0\xaf"), "??");            // overlong "/"
  EXPECT_EQ(PrintableText("\xed\xa0\x80"), "???");       // a surrogate
  EXPECT_EQ(PrintableText("\xf4\x90\x80\x80"), "????");  // past U+10FFFF
  EXPECT_EQ(PrintableText("end\xe2\x82"), "end??");      // cut short
  EXPECT_EQ(PrintableText(std::string("a\0b", 3)), "a?b");
}

TEST_F(HostileMachine, AnUnreadableMountTableMakesNoDiskFree) {
  const std::string mounts = machine_.Path("proc/mounts");
  fs::remove(mounts);
  fs::create_directory(mounts);
  const std::string swaps = machine_.Path("proc/swaps");
  fs::remove(swaps);
  ASSERT_EQ(::mkfifo(swaps.c_str(), 0600), 0);  // never read: mounts comes first
  const auto disks = Read();
  ASSERT_EQ(disks.size(), kNasDisks);
  for (const auto& [id, disk] : disks) EXPECT_FALSE(disk.disk.isFree) << id;
  EXPECT_EQ(NewLines(),
            Lines{"Cannot read " + mounts + ": Is a directory (no disk counts as free)"});

  fs::remove(mounts);
  std::ofstream(mounts) << "/dev/nvme0n1p1 / ext4 rw 0 0\n";
  EXPECT_FALSE(Read().at(kSsd).disk.isFree);  // now the swap table is the problem
  EXPECT_EQ(NewLines(),
            Lines{"Cannot read " + swaps + ": not a regular file (no disk counts as free)"});
  fs::remove(swaps);  // no swap table at all: nothing is swap
  EXPECT_TRUE(Read().at(kSsd).disk.isFree);
  EXPECT_EQ(NewLines(), Lines{});
}

TEST(HostileMultipathMachine, AMapWhoseDevIsNotMajorMinor) {
  const MachineCopy machine(ZEDA_MULTIPATH_FIXTURE);
  const std::string dev = fs::canonical(machine.Path("sys/block/dm-0")).string() + "/dev";
  std::ofstream(dev) << "../../../etc/passwd\n";
  const ErrorLines errors;
  LinuxSource source(machine.Config());
  const auto disks = DisksById(source.Read());
  EXPECT_EQ(disks.size(), 13u);
  // The map's udev entry is not found: the disk is not free.
  EXPECT_FALSE(disks.at("wwn-0x5000c500d0000001").disk.isFree);
  EXPECT_EQ(errors.Lines(), Lines{"Bad sysfs attribute " + machine.Path("sys/block/dm-0/dev") +
                                  ": \"../../../etc/passwd\" is not major:minor (dm-0 is served "
                                  "without its udev properties)"});
}

TEST_F(HostileMachine, NoUdevDatabaseAtAllMeansNoDiskIsFree) {
  fs::remove_all(machine_.Path("run/udev"));
  const auto disks = Read();
  ASSERT_EQ(disks.size(), kNasDisks);
  for (const auto& [id, disk] : disks) EXPECT_FALSE(disk.disk.isFree) << id;
  EXPECT_EQ(NewLines(), Lines{});  // no udev is not a fault
}

}  // namespace
}  // namespace zeda::test
