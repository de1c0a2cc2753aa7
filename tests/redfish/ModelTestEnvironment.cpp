// Every test of this binary runs as on a machine without a configuration
// file, so the machine's own /etc/pelka/pelka.json cannot change what the
// resources serve; the tests put their inventories in memory.
#include <gtest/gtest.h>

#include "TempDir.h"
#include "platform/Inventory.h"

namespace zeda::test {
namespace {

class RedfishModelEnvironment : public ::testing::Environment {
 public:
  void SetUp() override {
    zeda::pelka::platform::UseMachineConfigFile(dir_.file("no-machine-configuration.json"));
  }

 private:
  TempDir dir_;
};

// Owned and deleted by GoogleTest.
[[maybe_unused]] ::testing::Environment* const kRedfishModelEnvironment =
    ::testing::AddGlobalTestEnvironment(new RedfishModelEnvironment);

}  // namespace
}  // namespace zeda::test
