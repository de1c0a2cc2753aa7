// Every test of this binary runs as on a machine without a configuration
// file: the machine's own /etc/pelka/pelka.json (there wherever the package
// is installed) must not change what the tests see. A test that wants a
// machine configuration names a file of its own.
#include <gtest/gtest.h>

#include "TempDir.h"
#include "platform/Inventory.h"

namespace zeda::test {
namespace {

class NoMachineConfiguration : public ::testing::Environment {
 public:
  void SetUp() override {
    zeda::pelka::platform::UseMachineConfigFile(dir_.file("no-machine-configuration.json"));
  }

 private:
  TempDir dir_;
};

// Owned and deleted by GoogleTest.
[[maybe_unused]] ::testing::Environment* const kNoMachineConfiguration =
    ::testing::AddGlobalTestEnvironment(new NoMachineConfiguration);

}  // namespace
}  // namespace zeda::test
