// Test main of the framework tests. The framework forms its log directory
// from PELKA_PROGRAM_DATA once, when the process starts, so the variable must
// be set before this process begins: when it is not the test directory, the
// process starts itself again with it set.
#include <cstdlib>
#include <string>

#include <unistd.h>

#include <gtest/gtest.h>

#include "TestHost.h"

namespace zeda::test {

const std::string& StartupProgramData() {
  static const std::string path = PELKA_TEST_PROGRAM_DATA;
  return path;
}

}  // namespace zeda::test

int main(int argc, char** argv) {
  const std::string& wanted = zeda::test::StartupProgramData();
  const char* current = std::getenv("PELKA_PROGRAM_DATA");
  if (current == nullptr || wanted != current) {
    setenv("PELKA_PROGRAM_DATA", wanted.c_str(), 1);
    execv("/proc/self/exe", argv);
    return 127;  // could not start again
  }
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
