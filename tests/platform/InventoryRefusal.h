// What the inventory reader refuses a document with, for the tests of the
// file format and of hostile documents.
#ifndef ZEDA_TESTS_PLATFORM_INVENTORYREFUSAL_H
#define ZEDA_TESTS_PLATFORM_INVENTORYREFUSAL_H

#include <stdexcept>
#include <string>

#include "platform/Inventory.h"

namespace zeda::test {

// The file name the refusals name.
inline constexpr char kFile[] = "/etc/pelka/inventory.json";

// The message ParseInventory refuses `text` with ("" when it is accepted).
// Anything but a std::runtime_error escapes and fails the test.
inline std::string Refusal(const std::string& text) {
  try {
    zeda::pelka::platform::ParseInventory(text, kFile);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "";
}

// The refusal of kFile with `placeAndProblem`.
inline std::string Expected(const std::string& placeAndProblem) {
  return std::string("Bad inventory file ") + kFile + ": " + placeAndProblem;
}

// A NAS whose third disk is `disk`.
inline std::string WithThirdDisk(const std::string& disk) {
  return R"({"nas": [{"name": "nas1", "disks": [{"id": "0:1"}, {"id": "0:2"}, )" + disk + "]}]}";
}

// The message of what `call` throws as std::runtime_error.
template <typename Call>
std::string Thrown(Call call) {
  try {
    call();
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "(nothing thrown)";
}

}  // namespace zeda::test

#endif  // ZEDA_TESTS_PLATFORM_INVENTORYREFUSAL_H
