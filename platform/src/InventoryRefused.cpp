#include "InventoryRefused.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include <nlohmann/json.hpp>

#include "Basics.h"
#include "InventoryWalker.h"

namespace zeda::pelka::platform {

namespace {

using nlohmann::json;

// InventoryWalker's view of an nlohmann document. Non-negative integers are
// unsigned there; every number_integer is negative (or "-0").
struct NlohmannDocument {
  using Value = const json*;

  static Kind KindOf(Value value) {
    switch (value->type()) {
      case json::value_t::object:
        return Kind::Object;
      case json::value_t::array:
        return Kind::Array;
      case json::value_t::string:
        return Kind::String;
      case json::value_t::boolean:
        return Kind::Boolean;
      case json::value_t::number_unsigned:
        return Kind::Unsigned;
      case json::value_t::number_integer:
        return Kind::Negative;
      case json::value_t::number_float:
        return Kind::Real;
      default:
        return Kind::Null;  // null; the parser makes no other kind
    }
  }

  template <typename F>
  static void ForEachMember(Value object, F&& f) {
    for (const auto& item : object->items()) {
      f(std::string_view(item.key()), &item.value());
    }
  }

  template <typename F>
  static void ForEachElement(Value array, F&& f) {
    for (const json& element : *array) f(&element);
  }

  static std::size_t Size(Value array) { return array->size(); }
  static std::string_view Text(Value value) { return value->get_ref<const std::string&>(); }
  static bool Boolean(Value value) { return value->get<bool>(); }
  static std::uint64_t Unsigned(Value value) { return value->get<std::uint64_t>(); }
  static double Real(Value value) { return value->get<double>(); }
};

bool StartsNumber(char c) { return c == '-' || (c >= '0' && c <= '9'); }

bool InNumber(char c) {
  return (c >= '0' && c <= '9') || c == '-' || c == '+' || c == '.' || c == 'e' || c == 'E';
}

// `text` with every number outside strings whose value overflows a double
// replaced by 9e99 of the same sign, written with as many zeros in the
// exponent as keep its length, so that lines and columns of any syntax error
// stay where they were.
std::string WithFiniteNumbers(std::string text) {
  bool inString = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (inString) {
      if (c == '\\') {
        ++i;
      } else if (c == '"') {
        inString = false;
      }
      continue;
    }
    if (c == '"') {
      inString = true;
      continue;
    }
    if (!StartsNumber(c)) continue;
    std::size_t end = i;
    while (end < text.size() && InNumber(text[end])) ++end;
    const std::string token = text.substr(i, end - i);
    char* parsedEnd = nullptr;
    const double value = std::strtod(token.c_str(), &parsedEnd);
    const std::size_t parsed = static_cast<std::size_t>(parsedEnd - token.c_str());
    if (std::isinf(value)) {
      // 9e0…099 of the sign, as long as the number: the shortest overflow,
      // 1e309 (or -1e309), leaves room for at least one zero.
      const std::string sign = value < 0 ? "-" : "";
      text.replace(i, parsed, sign + "9e" + std::string(parsed - sign.size() - 4, '0') + "99");
    }
    i = end - 1;
  }
  return text;
}

}  // namespace

Inventory ReadRefusedDocument(const std::string& jsonText) {
  json document;
  try {
    document = json::parse(WithFiniteNumbers(jsonText));
  } catch (const json::parse_error& error) {
    throw SyntaxError{SyntaxProblem(error.what())};
  }
  return InventoryWalker<NlohmannDocument>::Document(&document);
}

}  // namespace zeda::pelka::platform
