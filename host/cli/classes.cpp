#include "classes.hpp"

#include <map>

#include "literal.hpp"
#include "zeda/host/format.hpp"

namespace zeda::cim {

namespace {
bool stripSuffix(std::string& s, const std::string& suffix) {
  if (s.size() <= suffix.size() || s.compare(s.size() - suffix.size(), suffix.size(), suffix) != 0)
    return false;
  s.erase(s.size() - suffix.size());
  return true;
}

}  // namespace

std::vector<ServedClass> servedClasses(const std::vector<std::string>& factories) {
  std::map<std::string, ServedClass> byProvider;
  for (const auto& f : factories) {
    std::string provider = f;
    bool known = false;
    for (const char* kind : {"_Create_InstanceMI", "_Create_AssociationMI", "_Create_MethodMI",
                             "_Create_IndicationMI"}) {
      if (stripSuffix(provider, kind)) {
        known = true;
        break;
      }
    }
    if (!known) continue;
    ServedClass& c = byProvider[provider];
    c.provider = provider;
    c.className = provider;
    stripSuffix(c.className, "Provider");
    c.factories.push_back(f);
  }
  std::vector<ServedClass> out;
  for (auto& [name, c] : byProvider) out.push_back(std::move(c));
  return out;
}

void printClasses(std::ostream& out, Format format, const std::vector<std::string>& factories) {
  const auto classes = servedClasses(factories);
  switch (format) {
    case Format::Mof:
      for (const auto& c : classes) {
        out << c.className << ":";
        for (const auto& f : c.factories) out << " " << f;
        out << "\n";
      }
      break;
    case Format::Json: {
      std::string text =
          "{\n  \"operation\": \"classes\",\n  \"status\": {\"code\": 0, \"message\": null},\n"
          "  \"done\": true,\n  \"results\": [";
      bool first = true;
      for (const auto& c : classes) {
        text += first ? "\n    " : ",\n    ";
        first = false;
        text += "{\"classname\":" + host::jsonQuote(c.className) +
                ",\"provider\":" + host::jsonQuote(c.provider) + ",\"factories\":[";
        for (std::size_t n = 0; n < c.factories.size(); ++n) {
          text += (n ? "," : "") + host::jsonQuote(c.factories[n]);
        }
        text += "]}";
      }
      text += first ? "]\n}\n" : "\n  ]\n}\n";
      out << text;
      break;
    }
    case Format::Xml:
      out << "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<IRETURNVALUE>\n";
      for (const auto& c : classes)
        out << "<CLASSNAME NAME=\"" << zeda::host::detail::xmlEscape(c.className) << "\"/>\n";
      out << "</IRETURNVALUE>\n";
      break;
    case Format::Table: {
      std::vector<std::vector<std::string>> rows;
      for (const auto& c : classes) {
        std::string factories;
        for (const auto& f : c.factories) factories += (factories.empty() ? "" : " ") + f;
        rows.push_back({c.className, c.provider, factories});
      }
      out << "Classes\n" << host::textTable({"Class", "Provider", "Factories"}, rows);
      break;
    }
  }
}

}  // namespace zeda::cim
