// The module carries its own copy of the C++ binding: loaded into a process
// that already holds a foreign libcmpiCppImpl.so (same library name, same
// symbols, loaded globally, as an object manager's own binding would be), it
// still answers, and none of the foreign functions is ever called (each of
// them aborts).
#include <dlfcn.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "zeda/host/host.hpp"
#include "zeda/host/wbem_uri.hpp"

namespace {

using zeda::host::Host;
using zeda::host::ObjectPath;

constexpr const char* kReturnDone = "_ZN10CmpiResult10returnDoneEv";

class ForeignBinding : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    foreign_ = dlopen(ZEDA_FOREIGN_BINDING, RTLD_NOW | RTLD_GLOBAL);
    ASSERT_NE(foreign_, nullptr) << dlerror();
    setenv("PELKA_INVENTORY", ZEDA_SAMPLE_INVENTORY, 1);
    setenv("PELKA_PROGRAM_DATA", ZEDA_PROGRAM_DATA, 1);
  }
  static void* foreign_;
};

void* ForeignBinding::foreign_ = nullptr;

TEST_F(ForeignBinding, ForeignBindingIsWhatTheProcessResolvesFirst) {
  void* symbol = dlsym(RTLD_DEFAULT, kReturnDone);
  ASSERT_NE(symbol, nullptr);
  Dl_info info{};
  ASSERT_NE(dladdr(symbol, &info), 0);
  EXPECT_EQ(std::string(info.dli_fname), ZEDA_FOREIGN_BINDING);
}

TEST_F(ForeignBinding, ModuleAnswersWithItsOwnBinding) {
  Host host(ZEDA_MODULE_PATH);
  const auto drives =
      host.enumerateInstances("ZEDA_DiskDriveProvider", ObjectPath("root/cimv2", "ZEDA_DiskDrive"));
  EXPECT_TRUE(drives.ok()) << drives.status.code;
  EXPECT_TRUE(drives.done);
  EXPECT_FALSE(drives.results.empty());

  // A walk that reads keys through the module's object-path readers.
  const ObjectPath disk = zeda::host::parseObjectPath(
      R"(ZEDA_DiskDrive.SystemName="ZEDA:nas1",DeviceID="ZEDA:nas1:DISK0:1")", "root/cimv2");
  const auto drive =
      host.associators("ZEDA_MediaPresentProvider", disk, std::string("ZEDA_MediaPresent"),
                       std::nullopt, std::nullopt, std::nullopt);
  EXPECT_TRUE(drive.ok()) << drive.status.code;
  EXPECT_EQ(drive.results.size(), 1u);
}

TEST_F(ForeignBinding, ModuleNeedsNoSeparateBinding) {
  // The loaded module did not pull in a binding library by name: the only
  // libcmpiCppImpl.so in the process is the foreign one.
  Host host(ZEDA_MODULE_PATH);
  void* ours = dlopen("libcmpiCppImpl.so", RTLD_NOW | RTLD_NOLOAD);
  if (ours != nullptr) {
    Dl_info info{};
    ASSERT_NE(dladdr(dlsym(ours, kReturnDone), &info), 0);
    EXPECT_EQ(std::string(info.dli_fname), ZEDA_FOREIGN_BINDING);
    dlclose(ours);
  }
}

}  // namespace
