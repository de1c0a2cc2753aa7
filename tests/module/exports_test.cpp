// The module's dynamic symbol table holds the 17 CMPI factories and nothing else.
#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Fixtures.h"
#include "ModuleExports.h"

namespace zeda::test {
namespace {

struct Symbol {
  std::string type;
  std::string name;
};

// `nm -D --defined-only` of the module, one entry per line.
std::vector<Symbol> DefinedDynamicSymbols() {
  const std::string command =
      std::string("'") + ZEDA_NM + "' -D --defined-only '" + ModulePath() + "'";
  const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
  if (!pipe) return {};
  std::vector<Symbol> symbols;
  std::array<char, 1024> buffer{};
  while (fgets(buffer.data(), buffer.size(), pipe.get()) != nullptr) {
    std::istringstream line(buffer.data());
    std::string address;
    Symbol symbol;
    line >> address >> symbol.type >> symbol.name;
    if (!symbol.name.empty()) symbols.push_back(symbol);
  }
  return symbols;
}

std::set<std::string> ExpectedSymbols() {
  std::set<std::string> names;
  for (const Export& e : Exports()) names.insert(e.symbol());
  return names;
}

TEST(ModuleExports, SeventeenFactoriesAreExpected) {
  EXPECT_EQ(Exports().size(), 17u);
  EXPECT_EQ(ExpectedSymbols().size(), 17u);
}

TEST(ModuleExports, NmShowsExactlyTheSeventeenFactories) {
  const std::vector<Symbol> symbols = DefinedDynamicSymbols();
  std::set<std::string> names;
  for (const Symbol& s : symbols) {
    names.insert(s.name);
    EXPECT_EQ(s.type, "T") << s.name << " is not an exported function";
  }
  EXPECT_EQ(symbols.size(), 17u);
  EXPECT_EQ(names, ExpectedSymbols());
}

TEST(ModuleExports, HostFindsTheSeventeenFactories) {
  const std::vector<std::string> found = ModuleHost().exportedFactories();
  const std::set<std::string> expected = ExpectedSymbols();
  EXPECT_EQ(found, std::vector<std::string>(expected.begin(), expected.end()));
}

TEST(ModuleExports, ElementClassesHaveNoAssociationFactory) {
  auto& host = ModuleHost();
  for (const char* cls : {"ZEDA_DiskDrive", "ZEDA_StorageExtent_Disk", "ZEDA_PhysicalPackage_Disk",
                          "ZEDA_SoftwareIdentity_Disk"}) {
    const std::string provider = std::string(cls) + "Provider";
    EXPECT_TRUE(host.hasFactory(provider, zeda::host::MIKind::Instance)) << cls;
    EXPECT_FALSE(host.hasFactory(provider, zeda::host::MIKind::Association)) << cls;
  }
}

TEST(ModuleExports, AssociatedComponentExtentHasNoInstanceFactory) {
  auto& host = ModuleHost();
  const std::string provider = "ZEDA_AssociatedComponentExtent_PrimordialProvider";
  EXPECT_FALSE(host.hasFactory(provider, zeda::host::MIKind::Instance));
  EXPECT_TRUE(host.hasFactory(provider, zeda::host::MIKind::Association));
  EXPECT_TRUE(
      host.hasFactory("ZEDA_ConcreteComponent_PrimordialProvider", zeda::host::MIKind::Instance));
}

TEST(ModuleExports, NoMethodOrIndicationFactories) {
  auto& host = ModuleHost();
  for (const ProviderClass& c : ProviderClasses()) {
    EXPECT_FALSE(host.hasFactory(c.provider(), zeda::host::MIKind::Method)) << c.className;
    EXPECT_FALSE(host.hasFactory(c.provider(), zeda::host::MIKind::Indication)) << c.className;
  }
}

}  // namespace
}  // namespace zeda::test
