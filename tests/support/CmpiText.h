// The characters of a CMPI string as a std::string.
#ifndef ZEDA_TESTS_SUPPORT_CMPITEXT_H
#define ZEDA_TESTS_SUPPORT_CMPITEXT_H

#include <string>

#include <cmpift.h>

namespace zeda::test {

// "<null>" for a null string, "<null chars>" for one without characters.
inline std::string TextOf(const CMPIString* text) {
  if (text == nullptr) {
    return "<null>";
  }
  const char* chars = text->ft->getCharPtr(text, nullptr);
  return chars != nullptr ? chars : "<null chars>";
}

}  // namespace zeda::test

#endif
