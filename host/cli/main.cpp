// zeda-cim: runs one CIM operation against a provider module through the
// in-process object manager and prints the answer as MOF, JSON, CIM-XML or
// text tables.
//
// Exit status: 0 when the operation's status code is 0, 1 for any other
// code, 2 for a usage error (one line on stderr).
//
// Standard error carries zeda-cim's own one line and nothing else: while the
// module is loaded and runs, file descriptor 2 points to /dev/null, so that
// what the module's libraries print there (the logging library's complaints
// about its log directory, ...) never mixes with it.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "classes.hpp"
#include "options.hpp"
#include "printer.hpp"
#include "zeda/host/format.hpp"
#include "zeda/host/host.hpp"
#include "zeda/host/wbem_uri.hpp"

namespace zeda::cim {

namespace {

using host::Outcome;

std::string rcName(int code) {
  switch (code) {
    case 0:
      return "CMPI_RC_OK";
    case 1:
      return "CMPI_RC_ERR_FAILED";
    case 2:
      return "CMPI_RC_ERR_ACCESS_DENIED";
    case 3:
      return "CMPI_RC_ERR_INVALID_NAMESPACE";
    case 4:
      return "CMPI_RC_ERR_INVALID_PARAMETER";
    case 5:
      return "CMPI_RC_ERR_INVALID_CLASS";
    case 6:
      return "CMPI_RC_ERR_NOT_FOUND";
    case 7:
      return "CMPI_RC_ERR_NOT_SUPPORTED";
    case 12:
      return "CMPI_RC_ERR_NO_SUCH_PROPERTY";
    case 13:
      return "CMPI_RC_ERR_TYPE_MISMATCH";
    case 60:
      return "CMPI_RC_ERR_INVALID_HANDLE";
    case 61:
      return "CMPI_RC_ERR_INVALID_DATA_TYPE";
    case 100:
      return "CMPI_RC_ERROR_SYSTEM";
    case 200:
      return "CMPI_RC_ERROR";
    default:
      return "CMPI status";
  }
}

// An installed zeda-cim finds the installed module at a fixed place relative
// to its own directory (ZEDA_INSTALLED_MODULE, e.g.
// "../lib/x86_64-linux-gnu/cmpi/libZEDA_DiskDriveLite.so"), wherever the
// installation was put; empty when that file is not there (a build tree).
std::string installedModule() {
#ifdef ZEDA_INSTALLED_MODULE
  std::string self(4096, '\0');
  const ssize_t n = readlink("/proc/self/exe", self.data(), self.size());
  if (n <= 0 || static_cast<size_t>(n) >= self.size()) return {};
  self.resize(static_cast<size_t>(n));
  const std::string candidate = self.substr(0, self.rfind('/') + 1) + ZEDA_INSTALLED_MODULE;
  struct stat st {};
  if (stat(candidate.c_str(), &st) != 0 || !S_ISREG(st.st_mode)) return {};
  const std::unique_ptr<char, decltype(&std::free)> resolved(realpath(candidate.c_str(), nullptr),
                                                             &std::free);
  if (resolved) return resolved.get();
#endif
  return {};
}

std::string modulePath(const Options& o) {
  if (o.module) return *o.module;
  if (std::string installed = installedModule(); !installed.empty()) return installed;
#ifdef ZEDA_DEFAULT_MODULE
  return ZEDA_DEFAULT_MODULE;
#else
  throw UsageError("no module: give --module PATH");
#endif
}

void exportEnvironment(const Options& o) {
  if (o.config) setenv("PELKA_CONFIG", o.config->c_str(), 1);
  if (o.inventory) setenv("PELKA_INVENTORY", o.inventory->c_str(), 1);
  if (o.programData) setenv("PELKA_PROGRAM_DATA", o.programData->c_str(), 1);
  if (o.nasTrace) setenv("PELKA_NAS_TRACE", o.nasTrace->c_str(), 1);
}

host::ObjectPath parseTarget(const Options& o) {
  const std::string ns = o.nameSpace.value_or(host::kDefaultNameSpace);
  try {
    host::ObjectPath p = host::parseObjectPath(o.target, ns);
    if ((o.operation == "ei" || o.operation == "ein") && !p.keys().empty()) {
      throw UsageError("CLASS " + o.target + " must be a class name without keys");
    }
    return p;
  } catch (const host::UriError& e) {
    throw UsageError(e.what());
  }
}

// Each result is printed as the provider returns it.
Outcome runOperation(host::Host& h, const Options& o, StreamPrinter& printer) {
  const host::ObjectPath path = parseTarget(o);
  const std::string& op = o.operation;
  if (op == "ei")
    return h.enumerateInstances(path.className() + "Provider", path, o.properties, printer);
  if (op == "ein") return h.enumerateInstanceNames(path.className() + "Provider", path, printer);
  if (op == "gi") return h.getInstance(path.className() + "Provider", path, o.properties, printer);
  // Association operations: the provider of --provider, else of --assoc-class.
  const std::string provider = (o.provider ? *o.provider : *o.assocClass) + "Provider";
  if (op == "ai") {
    return h.associators(provider, path, o.assocClass, o.resultClass, o.role, o.resultRole,
                         o.properties, printer);
  }
  if (op == "ain") {
    return h.associatorNames(provider, path, o.assocClass, o.resultClass, o.role, o.resultRole,
                             printer);
  }
  if (op == "ri") return h.references(provider, path, o.resultClass, o.role, o.properties, printer);
  return h.referenceNames(provider, path, o.resultClass, o.role, printer);
}

// The text with its control characters written as escapes (\n, \t, \xNN)
// and each byte that is not UTF-8 as \xNN: whatever the user typed or a
// provider answered, a message stays one line of valid UTF-8.
std::string oneLine(const std::string& text) {
  static const char kHex[] = "0123456789abcdef";
  std::string out;
  for (std::size_t i = 0; i < text.size();) {
    const char c = text[i];
    const auto byte = static_cast<unsigned char>(c);
    const std::size_t length = host::utf8Length(text, i);
    if (byte >= 0x80 && length > 0) {
      out.append(text, i, length);
      i += length;
      continue;
    }
    if (c == '\n') {
      out += "\\n";
    } else if (c == '\r') {
      out += "\\r";
    } else if (c == '\t') {
      out += "\\t";
    } else if (byte < 0x20 || byte >= 0x7f) {
      out += "\\x";
      out += kHex[byte >> 4];
      out += kHex[byte & 0xf];
    } else {
      out += c;
    }
    ++i;
  }
  return out;
}

// Where zeda-cim's own messages go, and /dev/null on descriptor 2 meanwhile.
class Stderr {
 public:
  Stderr() : own_(::dup(STDERR_FILENO)) {
    if (own_ < 0) return;  // no standard error at all: nothing to keep apart
    const int null = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (null >= 0) {
      ::dup2(null, STDERR_FILENO);
      ::close(null);
    }
  }
  // Descriptor 2 stays on /dev/null to the end: libraries of the module may
  // still print from their exit handlers.
  ~Stderr() = default;
  Stderr(const Stderr&) = delete;
  Stderr& operator=(const Stderr&) = delete;

  // One line "zeda-cim: text", the text made one line of valid UTF-8.
  void say(const std::string& text) const {
    try {
      writeAll(own_ < 0 ? STDERR_FILENO : own_, "zeda-cim: " + oneLine(text) + "\n");
    } catch (const std::exception&) {
      // Standard error is gone: nowhere left to say it.
    }
  }

 private:
  int own_;
};

int run(const std::vector<std::string>& args, const Stderr& err) {
  const Options o = parseOptions(args);
  if (o.help) {
    std::cout << usageText();
    return 0;
  }
  const std::string module = modulePath(o);
  struct stat st {};
  if (stat(module.c_str(), &st) != 0) throw UsageError("module not found: " + module);
  if (o.operation != "classes") parseTarget(o);  // report a malformed PATH before loading anything
  exportEnvironment(o);
  host::Host h(module);
  const std::vector<std::string> factories = h.exportedFactories();
  if (factories.empty())
    throw UsageError("module " + module + " exports no provider factory (*_Create_*MI)");
  if (o.operation == "classes") {
    printClasses(std::cout, o.format, factories);
    return 0;
  }
  StreamPrinter printer(o.format, o.operation, STDOUT_FILENO);
  const Outcome out = runOperation(h, o, printer);
  printer.finish(out);
  if (o.format != Format::Json && !out.ok()) {
    err.say(rcName(out.status.code) + " (" + std::to_string(out.status.code) + ")" +
            (out.status.message ? ": " + *out.status.message : std::string()));
  }
  return out.ok() ? 0 : 1;
}

}  // namespace
}  // namespace zeda::cim

int main(int argc, char** argv) {
  const std::vector<std::string> args(argv + 1, argv + argc);
  const zeda::cim::Stderr err;
  try {
    return zeda::cim::run(args, err);
  } catch (const zeda::cim::UsageError& e) {
    err.say(e.what());
    return 2;
  } catch (const zeda::host::FactoryMissing& e) {
    err.say(std::string("factory missing: ") + e.what());
    return 2;
  } catch (const zeda::host::LoadError& e) {
    err.say(e.what());
    return 2;
  } catch (const std::exception& e) {
    err.say(std::string("error: ") + e.what());
    return 1;
  } catch (...) {
    // Nothing in the host throws anything else; a stray non-standard
    // exception still ends with a message, not with std::terminate.
    err.say("error: unknown exception");
    return 1;
  }
}
