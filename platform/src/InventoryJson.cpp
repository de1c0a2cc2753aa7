// ParseInventory: a document in the plain form is read by the quick reading
// (InventoryPlain.h). Any other is read in full: simdjson parses the
// document and the walk of InventoryWalker.h checks it and builds the
// records. A document simdjson refuses is read again by the careful reader
// (InventoryRefused.h), which words the refusal with line and column, or
// with the place of a number out of range; it also accepts what only simdjson
// refuses (a byte order mark). Both full readers walk the document with the
// same code, so they refuse and accept alike.
#include <cstdint>
#include <cstring>
#include <exception>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>

#include <simdjson.h>

#include "InventoryFile.h"
#include "InventoryPlain.h"
#include "InventoryRefused.h"
#include "InventoryWalker.h"
#include "platform/Inventory.h"

namespace zeda::pelka::platform {

namespace {

namespace dom = simdjson::dom;

static_assert(kTextSlack >= simdjson::SIMDJSON_PADDING,
              "a file's text must be parsed where it was read");

// InventoryWalker's view of a simdjson document. Every accessor is called
// only after KindOf has given the matching kind, so no result is unchecked.
struct SimdjsonDocument {
  using Value = dom::element;

  static Kind KindOf(const Value& value) {
    switch (value.type()) {
      case dom::element_type::OBJECT:
        return Kind::Object;
      case dom::element_type::ARRAY:
        return Kind::Array;
      case dom::element_type::STRING:
        return Kind::String;
      case dom::element_type::BOOL:
        return Kind::Boolean;
      case dom::element_type::INT64:
        return value.get_int64().value_unsafe() < 0 ? Kind::Negative : Kind::Unsigned;
      case dom::element_type::UINT64:
        return Kind::Unsigned;
      case dom::element_type::DOUBLE:
        return Kind::Real;
      case dom::element_type::NULL_VALUE:
        return Kind::Null;
    }
    return Kind::Null;
  }

  template <typename F>
  static void ForEachMember(const Value& object, F&& f) {
    const dom::object members = object.get_object().value_unsafe();
    for (const dom::key_value_pair field : members) {
      f(field.key, field.value);
    }
  }

  template <typename F>
  static void ForEachElement(const Value& array, F&& f) {
    const dom::array elements = array.get_array().value_unsafe();
    for (const dom::element element : elements) {
      f(element);
    }
  }

  static std::size_t Size(const Value& array) {
    const dom::array elements = array.get_array().value_unsafe();
    return elements.size();
  }
  static std::string_view Text(const Value& value) {
    const std::string_view text = value.get_string().value_unsafe();
    return text;
  }
  static bool Boolean(const Value& value) { return value.get_bool().value_unsafe(); }
  static double Real(const Value& value) { return value.get_double().value_unsafe(); }

  static std::uint64_t Unsigned(const Value& value) {
    if (value.type() == dom::element_type::INT64) {
      return static_cast<std::uint64_t>(value.get_int64().value_unsafe());
    }
    return value.get_uint64().value_unsafe();
  }
};

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

// Whether `text` may hold the integer -0: a "-0" where a value may start
// (at the beginning, or after ':', ',' or '[' and blanks) and not followed
// by a digit, a point or an exponent. simdjson reads it as 0, while the
// inventory has always refused it where a number is read ("number is
// negative"); such a document goes to the careful reader. A string that
// happens to look like that ("a: -0") only costs the detour.
bool MayHoldMinusZero(const std::string& text) {
  const char* const begin = text.data();
  const char* const end = begin + text.size();
  for (const char* at = begin;
       (at = static_cast<const char*>(std::memchr(at, '-', static_cast<std::size_t>(end - at)))) !=
       nullptr;
       ++at) {
    if (end - at < 2 || at[1] != '0') continue;
    if (end - at > 2) {
      const char next = at[2];
      if ((next >= '0' && next <= '9') || next == '.' || next == 'e' || next == 'E') continue;
    }
    const char* before = at;
    while (before != begin && IsBlank(before[-1])) --before;
    if (before == begin || before[-1] == ':' || before[-1] == ',' || before[-1] == '[') return true;
  }
  return false;
}

}  // namespace

Inventory ReadWholeInventory(const std::string& jsonText) {
  dom::parser parser;
  dom::element document;
  if (MayHoldMinusZero(jsonText) || parser.parse(jsonText).get(document) != simdjson::SUCCESS) {
    return ReadRefusedDocument(jsonText);
  }
  return InventoryWalker<SimdjsonDocument>::Document(document);
}

Inventory ParseInventory(const std::string& jsonText, const std::string& fileName) {
  const auto refusal = [&fileName](const std::string& what) {
    return std::runtime_error("Bad inventory file " + fileName + ": " + what);
  };
  try {
    // simdjson reads -0 as 0: such a text takes the careful way at once.
    if (!MayHoldMinusZero(jsonText)) {
      if (std::optional<Inventory> plain = ReadPlainInventory(jsonText)) return std::move(*plain);
    }
    return ReadWholeInventory(jsonText);
  } catch (const Problem& problem) {
    throw refusal(problem.place + ": " + problem.text);
  } catch (const SyntaxError& error) {
    throw refusal(error.text);
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& error) {
    // Not expected from either reader; still one message naming the file.
    throw refusal(std::string("top level: ") + error.what());
  }
}

}  // namespace zeda::pelka::platform
