// zeda-cim --format table: the exact tables of the test provider and of the
// real module on a small inventory, and what goes with them (status line,
// empty answers, the classes operation).
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "InventoryJson.h"
#include "ZedaCim.h"
#include "host_fixture.hpp"

namespace zeda::test {

namespace {

std::vector<std::string> withModule(std::vector<std::string> args) {
  args.insert(args.begin(), {"--module", testProvider()});
  return args;
}

// The first `n` lines of text.
std::string head(const std::string& text, int n) {
  std::size_t end = 0;
  for (int i = 0; i < n && end != std::string::npos; ++i) end = text.find('\n', end + 1);
  return text.substr(0, end == std::string::npos ? text.size() : end + 1);
}

}  // namespace

TEST(ZedaCimTable, InstancesOfDifferentPropertySetsShareTheColumns) {
  // Instance 2 has none of the listed properties but its key.
  const CliRun r = RunZedaCim(
      withModule({"--format", "table", "--property", "Name", "--property", "Ref", "--property",
                  "U16A", "--property", "NullStr", "ei", "ZEDA_HostTest"}));
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.err, "");
  EXPECT_EQ(r.out,
            "Instances of root/cimv2:ZEDA_HostTest\n"
            "+------------+---------------------------+----------------------------------------"
            "-+-----------+---------+\n"
            "| InstanceID | Name                      | Ref                                     "
            "| U16A      | NullStr |\n"
            "+------------+---------------------------+----------------------------------------"
            "-+-----------+---------+\n"
            "| \"1\"        | \"Disk \\\"one\\\" <&> \\\\ end\" | "
            "root/cimv2:ZEDA_HostTest.InstanceID=\"2\" | {1, 2, 3} | NULL    |\n"
            "| \"2\"        |                           |                                         "
            "|           |         |\n"
            "+------------+---------------------------+----------------------------------------"
            "-+-----------+---------+\n");
}

TEST(ZedaCimTable, InstanceNamesHaveAColumnPerKey) {
  const CliRun r = RunZedaCim(withModule({"--format", "table", "ein", "ZEDA_HostTest"}));
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out,
            "Instance names of root/cimv2:ZEDA_HostTest\n"
            "+------------+\n"
            "| InstanceID |\n"
            "+------------+\n"
            "| \"1\"        |\n"
            "| \"2\"        |\n"
            "+------------+\n");
}

TEST(ZedaCimTable, AFailedEmptyAnswerPrintsNothingButTheStatusLine) {
  const CliRun r =
      RunZedaCim(withModule({"--format", "table", "gi", "ZEDA_HostTest.InstanceID=\"9\""}));
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.out, "");
  EXPECT_EQ(r.err, "zeda-cim: CMPI_RC_ERR_NOT_FOUND (6): no such instance\n");
}

TEST(ZedaCimTable, ResultsBeforeAFailureAreStillPrinted) {
  const CliRun r =
      RunZedaCim(withModule({"--format", "table", "rin", "ZEDA_HostTest.InstanceID=\"1\"",
                             "--provider", "ZEDA_HostTest"}));
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.out,
            "Instance names of root/cimv2:ZEDA_HostTest\n"
            "+------------+\n"
            "| InstanceID |\n"
            "+------------+\n"
            "| \"1\"        |\n"
            "+------------+\n");
  EXPECT_EQ(r.err, "zeda-cim: CMPI_RC_ERR_NOT_FOUND (6): reference names: nothing more\n");
}

TEST(ZedaCimTable, ClassesAreOneTable) {
  const CliRun r = RunZedaCim(withModule({"--format", "table", "classes"}));
  ASSERT_EQ(r.status, 0) << r.err;
  const std::string rule =
      "+-----------------+-------------------------+" + std::string(164, '-') + "+\n";
  const std::string all =
      "ZEDA_HostTestProvider_Create_AssociationMI ZEDA_HostTestProvider_Create_IndicationMI "
      "ZEDA_HostTestProvider_Create_InstanceMI ZEDA_HostTestProvider_Create_MethodMI";
  EXPECT_EQ(r.out, "Classes\n" + rule + "| Class           | Provider                | Factories" +
                       std::string(153, ' ') + " |\n" + rule +
                       "| ZEDA_HostHalf   | ZEDA_HostHalfProvider   | "
                       "ZEDA_HostHalfProvider_Create_InstanceMI" +
                       std::string(123, ' ') + " |\n" +
                       "| ZEDA_HostRefuse | ZEDA_HostRefuseProvider | "
                       "ZEDA_HostRefuseProvider_Create_InstanceMI" +
                       std::string(121, ' ') + " |\n" +
                       "| ZEDA_HostTest   | ZEDA_HostTestProvider   | " + all + " |\n" + rule);
}

// The real module on one NAS with two disks.
class ZedaCimTableOnModule : public ::testing::Test {
 protected:
  TempDir dir_;
  std::string inventory_ = dir_.file("inventory.json");

  void SetUp() override {
    WriteFile(inventory_,
              InventoryJson({NasJson("nas1", {DiskJson("0:1"), Ssd(DiskJson("0:2"))})}));
  }

  CliRun run(std::vector<std::string> args) {
    args.insert(args.begin(), {"--inventory", inventory_, "--format", "table"});
    return RunZedaCimOnModule(args);
  }
};

TEST_F(ZedaCimTableOnModule, DiskDrives) {
  const CliRun r = run({"ei", "ZEDA_DiskDrive"});
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(
      r.out,
      "Instances of root/cimv2:ZEDA_DiskDrive\n"
      "+-------------------------+-------------+-------------------+---------------------+"
      "-------+--------------+-------------+-------------------+------------------+"
      "----------+------+------------------+\n"
      "| SystemCreationClassName | SystemName  | CreationClassName | DeviceID            |"
      " Name  | EnabledState | HealthState | OperationalStatus | InterconnectType |"
      " DiskType | RPM  | Description      |\n"
      "+-------------------------+-------------+-------------------+---------------------+"
      "-------+--------------+-------------+-------------------+------------------+"
      "----------+------+------------------+\n"
      "| \"ZEDA_ComputerSystem\"   | \"ZEDA:nas1\" | \"ZEDA_DiskDrive\"  | \"ZEDA:nas1:DISK0:1\" |"
      " \"0:1\" | 2            | 5           | {2}               | 4                |"
      " 2        | 7200 | \"ZEDA_DiskDrive\" |\n"
      "| \"ZEDA_ComputerSystem\"   | \"ZEDA:nas1\" | \"ZEDA_DiskDrive\"  | \"ZEDA:nas1:DISK0:2\" |"
      " \"0:2\" | 2            | 5           | {2}               | 4                |"
      " 3        | 7200 | \"ZEDA_DiskDrive\" |\n"
      "+-------------------------+-------------+-------------------+---------------------+"
      "-------+--------------+-------------+-------------------+------------------+"
      "----------+------+------------------+\n");
}

// The placeholder system's path has no keys: the key list the module hands
// setPropertyFilter is ignored, so only the listed property is left.
TEST_F(ZedaCimTableOnModule, AFilteredPlaceholderSystemKeepsOnlyTheListedProperties) {
  const CliRun r = run({"--property", "Caption", "ai",
                        "ZEDA_StorageExtent_Disk.SystemCreationClassName=\"ZEDA_ComputerSystem\","
                        "SystemName=\"ZEDA:nas1\",CreationClassName=\"ZEDA_StorageExtent_Disk\","
                        "DeviceID=\"ZEDA:nas1:DiskExtent0:1\"",
                        "--assoc-class", "ZEDA_SystemDevice_StorageExtent_Disk", "--result-class",
                        "CIM_StoragePool"});
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out,
            "Instances of root/cimv2:ZEDA_ComputerSystem\n"
            "+-----------------------+\n"
            "| Caption               |\n"
            "+-----------------------+\n"
            "| \"ZEDA_ComputerSystem\" |\n"
            "+-----------------------+\n");
}

TEST_F(ZedaCimTableOnModule, AssociationsShowTheirReferencesAsPaths) {
  const CliRun r =
      run({"ri", "ZEDA_DiskDrive.SystemName=\"ZEDA:nas1\",DeviceID=\"ZEDA:nas1:DISK0:1\"",
           "--assoc-class", "ZEDA_MediaPresent"});
  ASSERT_EQ(r.status, 0) << r.err;
  // The far end is the placeholder extent of the association.
  const std::string drive =
      "root/cimv2:ZEDA_DiskDrive.SystemName=\"ZEDA:nas1\",DeviceID=\"ZEDA:nas1:DISK0:1\"";
  const std::string extent =
      "root/cimv2:ZEDA_StorageExtent_Disk.SystemCreationClassName="
      "\"ZEDA_SystemCreationClassName\",SystemName=\"ZEDA_SystemName\","
      "CreationClassName=\"ZEDA_CreationClassName\",DeviceID=\"ZEDA_DeviceID\"";
  const std::string rule =
      "+" + std::string(drive.size() + 2, '-') + "+" + std::string(extent.size() + 2, '-') + "+\n";
  EXPECT_EQ(r.out, "Instances of root/cimv2:ZEDA_MediaPresent\n" + rule + "| Antecedent" +
                       std::string(drive.size() - 10, ' ') + " | Dependent" +
                       std::string(extent.size() - 9, ' ') + " |\n" + rule + "| " + drive + " | " +
                       extent + " |\n" + rule);
}

TEST_F(ZedaCimTableOnModule, TheSampleInventoryStartsWithTheHeader) {
  const CliRun r = RunZedaCimOnModule(
      {"--inventory", SampleInventoryPath(), "--format", "table", "ei", "ZEDA_DiskDrive"});
  ASSERT_EQ(r.status, 0) << r.err;
  const std::string top = head(r.out, 3);
  EXPECT_EQ(top.rfind("Instances of root/cimv2:ZEDA_DiskDrive\n+-", 0), 0u) << top;
  EXPECT_NE(top.find("| DeviceID "), std::string::npos) << top;
}

}  // namespace zeda::test
