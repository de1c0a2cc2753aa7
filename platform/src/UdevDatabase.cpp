#include "UdevDatabase.h"

#include <cctype>
#include <filesystem>
#include <optional>

#include "BoundedFile.h"

namespace zeda::pelka::platform {

namespace {

constexpr std::size_t kEntryLimit = 1024 * 1024;
constexpr std::size_t kLineLimit = 64 * 1024;

// What is wrong with one line of an entry, if anything.
std::optional<std::string> LineProblem(const std::string& line) {
  if (line.size() > kLineLimit) {
    return "longer than " + std::to_string(kLineLimit) + " bytes";
  }
  for (const char c : line) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte < 0x20 && c != '\t') || byte == 0x7f) return std::string("binary data");
  }
  if (line.empty()) return std::nullopt;
  if (line.size() < 2 || !std::isalpha(static_cast<unsigned char>(line[0])) || line[1] != ':') {
    return std::string("not a udev database line");
  }
  if (line[0] == 'E') {
    const std::string::size_type equals = line.find('=');
    if (equals == std::string::npos) return std::string("property without \"=\"");
    if (equals == 2) return std::string("property without a name");
  }
  return std::nullopt;
}

}  // namespace

UdevEntry ReadUdevEntry(const std::string& root, const std::string& devNumbers,
                        const std::string& deviceName, std::vector<MachineProblem>& problems) {
  if (devNumbers.empty()) return UdevEntry{};
  const std::string path =
      (std::filesystem::path(root) / "run/udev/data" / ("b" + devNumbers)).string();
  const auto refuse = [&](const std::string& problem) {
    problems.push_back({path, "Bad udev database entry " + path + ": " + problem + " (" +
                                  deviceName + " is served without its udev properties)"});
    return UdevEntry{};
  };
  const BoundedRead read = ReadBounded(path, kEntryLimit);
  switch (read.outcome) {
    case BoundedRead::Outcome::Missing:
      return UdevEntry{};
    case BoundedRead::Outcome::Unreadable:
      return refuse("cannot be read: " + read.problem);
    case BoundedRead::Outcome::TooLarge:
      return refuse(read.problem);
    case BoundedRead::Outcome::Read:
      break;
  }
  std::string problem;
  UdevEntry entry = ParseUdevEntry(read.text, problem);
  return entry.found ? entry : refuse(problem);
}

UdevEntry ParseUdevEntry(const std::string& text, std::string& problem) {
  UdevEntry entry;
  std::size_t number = 0;
  for (std::string::size_type start = 0; start < text.size();) {
    std::string::size_type end = text.find('\n', start);
    if (end == std::string::npos) end = text.size();
    const std::string line = text.substr(start, end - start);
    start = end + 1;
    ++number;
    if (const auto lineProblem = LineProblem(line)) {
      problem = "line " + std::to_string(number) + ": " + *lineProblem;
      return UdevEntry{};
    }
    if (line.rfind("E:", 0) == 0) {
      const std::string::size_type equals = line.find('=');
      entry.properties[line.substr(2, equals - 2)] = line.substr(equals + 1);
    }
  }
  entry.found = true;
  return entry;
}

}  // namespace zeda::pelka::platform
