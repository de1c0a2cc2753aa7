// Association dispatch of the classes that use AssociatorsDelegate, through
// the real module: the association class check, the source class check, the
// statuses and the ERROR log lines they produce.
#include <cctype>
#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Fixtures.h"

namespace zeda::test {
namespace {

using zeda::host::ObjectPath;
using zeda::host::OptString;
using zeda::host::Outcome;

struct DispatchingClass {
  std::string className;
  std::string firstEndpoint;
  std::string secondEndpoint;
  std::string provider() const { return className + "Provider"; }
};

std::vector<DispatchingClass> DispatchingClasses() {
  return {
      {"ZEDA_Realizes_Disk", "ZEDA_DiskDrive", "ZEDA_PhysicalPackage_Disk"},
      {"ZEDA_ConcreteComponent_Primordial", "ZEDA_StorageExtent_Disk",
       "ZEDA_StoragePool_Primordial"},
      {"ZEDA_AssociatedComponentExtent_Primordial", "ZEDA_StorageExtent_Disk",
       "ZEDA_StoragePool_Primordial"},
  };
}

Outcome Associators(const DispatchingClass& c, const std::string& sourceClass,
                    const OptString& assocClass) {
  return ModuleHost().associators(c.provider(), ObjectPath(kNamespace, sourceClass), assocClass,
                                  std::nullopt, std::nullopt, std::nullopt);
}

void PrintTo(const DispatchingClass& c, std::ostream* os) { *os << c.className; }

// The log lines of the ERROR log, without the header glog writes at the top
// of a new file: a log line starts with its severity letter and the date.
std::vector<std::string> ErrorLines() {
  std::vector<std::string> lines;
  for (const std::string& line : ErrorLogLines()) {
    if (line.size() > 1 && std::string("IWEF").find(line[0]) != std::string::npos &&
        std::isdigit(static_cast<unsigned char>(line[1]))) {
      lines.push_back(line);
    }
  }
  return lines;
}

// The ERROR log lines written since `before` lines were there.
std::vector<std::string> NewErrorLines(size_t before) {
  const std::vector<std::string> all = ErrorLines();
  if (all.size() <= before) return {};
  return std::vector<std::string>(all.begin() + static_cast<std::ptrdiff_t>(before), all.end());
}

bool EndsWith(const std::string& text, const std::string& tail) {
  return text.size() >= tail.size() &&
         text.compare(text.size() - tail.size(), tail.size(), tail) == 0;
}

void ExpectRefused(const Outcome& outcome, const std::string& message) {
  EXPECT_EQ(outcome.code(), CMPI_RC_ERR_INVALID_PARAMETER);
  ASSERT_TRUE(outcome.status.message.has_value());
  EXPECT_EQ(*outcome.status.message, message);
  EXPECT_FALSE(outcome.done);
  EXPECT_TRUE(outcome.results.empty());
}

void ExpectOneErrorLine(size_t before, const std::string& text) {
  const std::vector<std::string> lines = NewErrorLines(before);
  ASSERT_EQ(lines.size(), 1u) << "in " << LogDir();
  EXPECT_EQ(lines[0].front(), 'E') << lines[0];
  EXPECT_TRUE(EndsWith(lines[0], "pelka_provider:129] " + text)) << lines[0];
}

class EachDispatchingClass : public ::testing::TestWithParam<DispatchingClass> {};

TEST_P(EachDispatchingClass, MissingAssociationClassIsRefusedAndLogged) {
  const DispatchingClass& c = GetParam();
  const size_t before = ErrorLines().size();
  const std::string message = "Wrong association class name: ; Expected: " + c.className;
  ExpectRefused(Associators(c, c.firstEndpoint, std::nullopt), message);
  ExpectOneErrorLine(before, c.className + ": " + message + " (RC=4)");
}

TEST_P(EachDispatchingClass, EmptyAssociationClassIsRefused) {
  const DispatchingClass& c = GetParam();
  ExpectRefused(Associators(c, c.secondEndpoint, std::string()),
                "Wrong association class name: ; Expected: " + c.className);
}

TEST_P(EachDispatchingClass, AssociationClassInOtherLetterCaseIsRefused) {
  const DispatchingClass& c = GetParam();
  std::string upper = c.className;
  for (char& ch : upper) ch = static_cast<char>(std::toupper(static_cast<unsigned char>(ch)));
  ExpectRefused(Associators(c, c.firstEndpoint, upper),
                "Wrong association class name: " + upper + "; Expected: " + c.className);
}

TEST_P(EachDispatchingClass, SubclassOfAnEndpointIsAnUnknownClassName) {
  const DispatchingClass& c = GetParam();
  const std::string subclass = c.firstEndpoint + "_Special";
  const size_t before = ErrorLines().size();
  ExpectRefused(Associators(c, subclass, c.className), "Unknown class name: " + subclass);
  ExpectOneErrorLine(before, c.className + ": Unknown class name: " + subclass + " (RC=4)");
}

TEST_P(EachDispatchingClass, UnrelatedSourceClassIsAnUnknownClassName) {
  const DispatchingClass& c = GetParam();
  ExpectRefused(Associators(c, "ZEDA_ComputerSystem", c.className),
                "Unknown class name: ZEDA_ComputerSystem");
}

INSTANTIATE_TEST_SUITE_P(Module, EachDispatchingClass, ::testing::ValuesIn(DispatchingClasses()),
                         [](const ::testing::TestParamInfo<DispatchingClass>& info) {
                           return info.param.className;
                         });

}  // namespace
}  // namespace zeda::test
