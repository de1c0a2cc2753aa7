// Parser and printer of the untyped WBEM URI form of object paths.
//
// Grammar (columns in errors are 1-based character positions):
//   path     := [namespace ":"] class ["." binding ("," binding)*]
//   namespace:= 1*(ALNUM | "_" | "/")
//   class    := (ALPHA | "_") *(ALNUM | "_")
//   binding  := name "=" value           name like class
//   value    := DQUOTE *(char | "\" DQUOTE | "\\") DQUOTE
//             | ["-" | "+"] 1*DIGIT | "TRUE" | "FALSE"   (any case)
// A quoted value that itself reads as a path with at least one key is taken
// as a reference; any other quoted value is a string.
#include "zeda/host/wbem_uri.hpp"

#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <limits>
#include <optional>
#include <utility>

#include "literal.hpp"
#include "zeda/host/instance.hpp"

namespace zeda::host {

UriError::UriError(std::size_t column, const std::string& why)
    : std::invalid_argument("malformed object path at column " + std::to_string(column) + ": " +
                            why),
      column_(column) {}

namespace {

bool isIdentStart(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0 || c == '_'; }
bool isIdentChar(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_'; }

class Parser {
 public:
  Parser(std::string_view text, std::string_view defaultNs) : text_(text), defaultNs_(defaultNs) {}

  ObjectPath parse() {
    ObjectPath path;
    // A leading run of namespace characters followed by ':' is the namespace.
    std::size_t end = pos_;
    while (end < text_.size() && (isIdentChar(text_[end]) || text_[end] == '/')) ++end;
    if (end < text_.size() && text_[end] == ':') {
      if (end == pos_) fail(pos_, "empty namespace before ':'");
      path.setNameSpace(std::string(text_.substr(pos_, end - pos_)));
      pos_ = end + 1;
    } else {
      path.setNameSpace(std::string(defaultNs_));
    }
    path.setClassName(identifier("class name"));
    if (atEnd()) return path;
    if (text_[pos_] != '.') fail(pos_, "expected '.' or end of path after the class name");
    ++pos_;
    for (;;) {
      const std::size_t nameAt = pos_;
      std::string name = identifier("key name");
      if (path.hasKey(name)) fail(nameAt, "duplicate key " + name);
      if (atEnd() || text_[pos_] != '=') fail(pos_, "expected '=' after key name " + name);
      ++pos_;
      Value value = keyValue();
      path.addKey(std::move(name), std::move(value));
      if (atEnd()) return path;
      if (text_[pos_] != ',') fail(pos_, "expected ',' or end of path after a key value");
      ++pos_;
    }
  }

 private:
  [[noreturn]] void fail(std::size_t at, const std::string& why) const {
    throw UriError(at + 1, why);
  }
  bool atEnd() const { return pos_ >= text_.size(); }

  std::string identifier(const char* what) {
    if (atEnd() || !isIdentStart(text_[pos_])) fail(pos_, std::string("expected ") + what);
    const std::size_t start = pos_;
    while (!atEnd() && isIdentChar(text_[pos_])) ++pos_;
    return std::string(text_.substr(start, pos_ - start));
  }

  Value keyValue() {
    if (atEnd()) fail(pos_, "expected a key value");
    if (text_[pos_] == '"') return quoted();
    const std::size_t start = pos_;
    while (!atEnd() && text_[pos_] != ',') ++pos_;
    const std::string word(text_.substr(start, pos_ - start));
    if (word.empty()) fail(start, "expected a key value");
    if (namesEqual(word, "TRUE")) return Value::boolean(true);
    if (namesEqual(word, "FALSE")) return Value::boolean(false);
    if (auto v = integer(word)) return *v;
    fail(start, "unquoted key value must be an integer, TRUE or FALSE");
  }

  static std::optional<Value> integer(const std::string& word) {
    std::size_t i = (word[0] == '-' || word[0] == '+') ? 1 : 0;
    if (i == word.size()) return std::nullopt;
    for (std::size_t j = i; j < word.size(); ++j) {
      if (std::isdigit(static_cast<unsigned char>(word[j])) == 0) return std::nullopt;
    }
    errno = 0;
    if (word[0] == '-') {
      const long long v = std::strtoll(word.c_str(), nullptr, 10);
      if (errno == ERANGE) return std::nullopt;
      return Value::sint64(v);
    }
    const unsigned long long v = std::strtoull(word.c_str() + i, nullptr, 10);
    if (errno == ERANGE) return std::nullopt;
    return Value::uint64(v);
  }

  Value quoted() {
    const std::size_t open = pos_++;
    std::string out;
    for (;;) {
      if (atEnd()) fail(open, "unterminated quoted value");
      const char c = text_[pos_];
      if (c == '"') {
        ++pos_;
        break;
      }
      if (c == '\\') {
        if (pos_ + 1 >= text_.size()) fail(pos_, "backslash at end of path");
        const char next = text_[pos_ + 1];
        if (next != '"' && next != '\\') fail(pos_, std::string("invalid escape \\") + next);
        out += next;
        pos_ += 2;
        continue;
      }
      out += c;
      ++pos_;
    }
    // A nested path with keys is a reference.
    try {
      ObjectPath nested = Parser(out, defaultNs_).parse();
      if (!nested.keys().empty()) return Value::reference(std::move(nested));
    } catch (const UriError&) {
    }
    return Value::string(std::move(out));
  }

  std::string_view text_;
  std::string_view defaultNs_;
  std::size_t pos_ = 0;
};

std::string quote(const std::string& s) {
  std::string out = "\"";
  for (const char c : s) {
    if (c == '"' || c == '\\') out += '\\';
    out += c;
  }
  out += '"';
  return out;
}

std::string keyValueText(const Value& v) {
  if (v.isNull()) return "NULL";
  if (v.isArray()) {
    std::string out = "{";
    const auto& e = v.elements();
    for (std::size_t i = 0; i < e.size(); ++i) out += (i ? "," : "") + keyValueText(e[i]);
    return out + "}";
  }
  if (auto bare = detail::bareScalarText(v)) return *bare;
  switch (v.type()) {
    case type::string:
    case type::chars:
      return quote(v.str());
    case type::dateTime:
      return quote(v.dateTimeText());
    case type::ref:
      return quote(formatObjectPath(v.ref()));
    case type::instance:
      return quote("instance of " + v.inst().className());
    default:
      return quote(v.debugString());
  }
}

}  // namespace

ObjectPath parseObjectPath(std::string_view text, std::string_view defaultNameSpace) {
  return Parser(text, defaultNameSpace).parse();
}

std::string formatObjectPath(const ObjectPath& path) {
  std::string out;
  if (!path.nameSpace().empty()) out += path.nameSpace() + ":";
  out += path.className();
  const auto& keys = path.keys();
  for (std::size_t i = 0; i < keys.size(); ++i) {
    out += (i == 0 ? "." : ",");
    out += keys[i].name + "=" + keyValueText(keys[i].value);
  }
  return out;
}

}  // namespace zeda::host
