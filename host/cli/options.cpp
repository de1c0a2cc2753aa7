#include "options.hpp"

#include <map>

namespace zeda::cim {

namespace {

const std::map<std::string, std::string>& operations() {
  static const std::map<std::string, std::string> ops{
      {"ei", "ei"},          {"enumerate-instances", "ei"},
      {"ein", "ein"},        {"enumerate-instance-names", "ein"},
      {"gi", "gi"},          {"get-instance", "gi"},
      {"ai", "ai"},          {"associators", "ai"},
      {"ain", "ain"},        {"associator-names", "ain"},
      {"ri", "ri"},          {"references", "ri"},
      {"rin", "rin"},        {"reference-names", "rin"},
      {"classes", "classes"}};
  return ops;
}

bool isAssociation(const std::string& op) {
  return op == "ai" || op == "ain" || op == "ri" || op == "rin";
}

Format parseFormat(const std::string& f) {
  if (f == "mof") return Format::Mof;
  if (f == "json") return Format::Json;
  if (f == "xml") return Format::Xml;
  if (f == "table") return Format::Table;
  throw UsageError("unknown format " + f + " (mof, json, xml or table)");
}

using TextOption = std::optional<std::string> Options::*;

// The options that take one text, those of association operations apart.
const std::map<std::string, TextOption>& textOptions() {
  static const std::map<std::string, TextOption> options{
      {"--module", &Options::module},       {"--config", &Options::config},
      {"--inventory", &Options::inventory}, {"--program-data", &Options::programData},
      {"--nas-trace", &Options::nasTrace},  {"--namespace", &Options::nameSpace}};
  return options;
}

const std::map<std::string, TextOption>& assocOptions() {
  static const std::map<std::string, TextOption> options{{"--assoc-class", &Options::assocClass},
                                                         {"--provider", &Options::provider},
                                                         {"--result-class", &Options::resultClass},
                                                         {"--role", &Options::role},
                                                         {"--result-role", &Options::resultRole}};
  return options;
}

// Sets the option `name` (spelled with its "--") from `value()`, which takes
// the option's value; notes the association options in `assocOptionsSeen`.
// An unknown name is refused before any value is taken.
template <class Value>
void setOption(Options& o, const std::string& name, const Value& value,
               std::vector<std::string>& assocOptionsSeen) {
  if (const auto text = textOptions().find(name); text != textOptions().end()) {
    o.*(text->second) = value();
  } else if (name == "--format") {
    o.format = parseFormat(value());
  } else if (name == "--property") {
    if (!o.properties) o.properties.emplace();
    o.properties->push_back(value());
  } else if (const auto assoc = assocOptions().find(name); assoc != assocOptions().end()) {
    o.*(assoc->second) = value();
    assocOptionsSeen.push_back(name);
  } else {
    throw UsageError("unknown option " + name);
  }
}

// The operation and its target from the operands, checked against the
// association options given.
void setOperation(Options& o, const std::vector<std::string>& operands,
                  const std::vector<std::string>& assocOptionsSeen) {
  if (operands.empty()) throw UsageError("no operation given");
  const auto op = operations().find(operands[0]);
  if (op == operations().end()) throw UsageError("unknown operation " + operands[0]);
  o.operation = op->second;
  const std::size_t wanted = o.operation == "classes" ? 1 : 2;
  if (operands.size() < wanted) {
    throw UsageError(operands[0] + " needs " +
                     (o.operation == "ei" || o.operation == "ein" ? "a CLASS" : "a PATH"));
  }
  if (operands.size() > wanted) throw UsageError("unexpected argument " + operands[wanted]);
  if (wanted == 2) o.target = operands[1];
  if (!isAssociation(o.operation) && !assocOptionsSeen.empty()) {
    throw UsageError("option " + assocOptionsSeen.front() +
                     " applies to association operations only");
  }
  if ((o.operation == "ri" || o.operation == "rin") && o.resultRole) {
    throw UsageError("option --result-role does not apply to " + operands[0]);
  }
  if (isAssociation(o.operation) && !o.provider && !o.assocClass) {
    throw UsageError(operands[0] + " needs --assoc-class or --provider");
  }
}

}  // namespace

std::string usageText() {
  return "usage: zeda-cim [--module PATH] [--config FILE] [--inventory FILE] [--program-data DIR] "
         "[--nas-trace FILE]\n"
         "                [--namespace NS] [--format mof|json|xml|table] [--property NAME]... "
         "OPERATION ARGS\n"
         "  ei  | enumerate-instances CLASS          ein | enumerate-instance-names CLASS\n"
         "  gi  | get-instance PATH\n"
         "  ai  | associators PATH [--assoc-class C] [--provider P] [--result-class C] [--role R] "
         "[--result-role R]\n"
         "  ain | associator-names PATH  (same options)\n"
         "  ri  | references PATH [--assoc-class C] [--provider P] [--result-class C] [--role R]\n"
         "  rin | reference-names PATH   (same options)\n"
         "  classes                                 the classes the module serves, with their "
         "factories\n"
         "PATH: [NAMESPACE:]Class.Key=\"value\",Key2=\"value\" or a bare Class (\\\" and \\\\ "
         "escape).\n"
         "Association operations go to the provider of --provider P, else of --assoc-class C.\n";
}

Options parseOptions(const std::vector<std::string>& args) {
  Options o;
  std::vector<std::string> operands;
  std::vector<std::string> assocOptionsSeen;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    if (arg == "--help" || arg == "-h") {
      o.help = true;
      continue;
    }
    if (arg.size() < 2 || arg.compare(0, 2, "--") != 0 || arg == "--") {
      if (!arg.empty() && arg[0] == '-' && arg != "-") throw UsageError("unknown option " + arg);
      operands.push_back(arg);
      continue;
    }
    std::string name = arg;
    std::optional<std::string> inlineValue;
    if (const auto eq = arg.find('='); eq != std::string::npos) {
      name = arg.substr(0, eq);
      inlineValue = arg.substr(eq + 1);
    }
    const auto value = [&]() -> std::string {
      if (inlineValue) return *inlineValue;
      if (i + 1 >= args.size()) throw UsageError("option " + name + " needs a value");
      return args[++i];
    };
    setOption(o, name, value, assocOptionsSeen);
  }
  if (o.help) return o;
  setOperation(o, operands, assocOptionsSeen);
  return o;
}

}  // namespace zeda::cim
