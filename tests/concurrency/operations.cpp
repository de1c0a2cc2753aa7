#include "operations.hpp"

#include <map>

#include "inventory_versions.hpp"
#include "zeda/host/wbem_uri.hpp"

namespace zeda::concurrency_test {

using host::Instance;
using host::ObjectPath;
using host::Outcome;
using host::Value;

namespace {

const std::string kNamespace = "root/cimv2";

const char* kindName(Kind k) {
  switch (k) {
    case Kind::EnumerateInstances:
      return "ei";
    case Kind::GetInstance:
      return "gi";
    case Kind::Associators:
      return "ai";
    case Kind::AssociatorNames:
      return "ain";
    case Kind::References:
      return "ri";
    case Kind::ReferenceNames:
      return "rin";
  }
  return "?";
}

// The version an instance carries, if its class carries one (see
// inventoryVersion). Placeholder answers (associators return fixed
// placeholder instances by design) carry none.
std::optional<long> versionOf(const Instance& i) {
  const std::string& cls = i.className();
  const auto above = [](std::uint64_t value, std::uint64_t base) -> std::optional<long> {
    if (value < base) return std::nullopt;
    return static_cast<long>(value - base);
  };
  const auto suffix = [](const std::string& text,
                         const std::string& prefix) -> std::optional<long> {
    if (text.size() <= prefix.size() || text.compare(0, prefix.size(), prefix) != 0)
      return std::nullopt;
    const std::string digits = text.substr(prefix.size());
    if (digits.find_first_not_of("0123456789") != std::string::npos) return std::nullopt;
    return std::stol(digits);
  };
  if (cls == "ZEDA_DiskDrive") return above(i.property("RPM").u(), kBaseRpm);
  if (cls == "ZEDA_PhysicalPackage_Disk") return suffix(i.property("Model").str(), kModelPrefix);
  if (cls == "ZEDA_SoftwareIdentity_Disk")
    return suffix(i.property("VersionString").str(), kFirmwarePrefix);
  return std::nullopt;
}

bool carriesVersion(const std::string& property) {
  for (const char* name : {"RPM", "Model", "VersionString"}) {
    if (host::namesEqual(property, name)) return true;
  }
  return false;
}

std::string identityOf(const Instance& i) {
  std::string out = formatObjectPath(i.path()) + " {";
  for (const auto& p : i.properties()) {
    if (!carriesVersion(p.name)) out += " " + p.name + "=" + p.value.debugString();
  }
  return out + " }";
}

std::vector<std::string> providersOf(host::Host& h, const std::string& tail) {
  std::vector<std::string> out;
  for (const auto& f : h.exportedFactories()) {
    if (f.size() > tail.size() && f.compare(f.size() - tail.size(), tail.size(), tail) == 0) {
      out.push_back(f.substr(0, f.size() - tail.size()));
    }
  }
  return out;
}

std::string classOf(const std::string& provider) {
  return provider.substr(0, provider.size() - 8);
}  // "Provider"

}  // namespace

std::string Operation::label() const {
  return std::string(kindName(kind)) + " " + formatObjectPath(path) +
         (assocClass ? " via " + *assocClass : "");
}

Outcome perform(host::Host& h, const Operation& op) {
  switch (op.kind) {
    case Kind::EnumerateInstances:
      return h.enumerateInstances(op.provider, op.path);
    case Kind::GetInstance:
      return h.getInstance(op.provider, op.path);
    case Kind::Associators:
      return h.associators(op.provider, op.path, op.assocClass, std::nullopt, std::nullopt,
                           std::nullopt);
    case Kind::AssociatorNames:
      return h.associatorNames(op.provider, op.path, op.assocClass, std::nullopt, std::nullopt,
                               std::nullopt);
    case Kind::References:
      return h.references(op.provider, op.path, op.assocClass, std::nullopt);
    case Kind::ReferenceNames:
      return h.referenceNames(op.provider, op.path, op.assocClass, std::nullopt);
  }
  return Outcome{};
}

Answer summarize(const Outcome& out) {
  Answer a;
  a.code = out.status.code;
  try {
    for (const auto& r : out.results) {
      if (r.isInstance()) {
        a.identities.push_back(identityOf(r.instance()));
        if (const auto v = versionOf(r.instance())) a.versions.insert(*v);
      } else if (r.isPath()) {
        a.identities.push_back(formatObjectPath(r.path()));
      } else {
        a.problem = "a plain value among the results";
      }
    }
  } catch (const std::exception& e) {
    a.problem = e.what();
  }
  return a;
}

std::vector<Operation> everyOperation(host::Host& h) {
  std::vector<Operation> ops;
  std::map<std::string, std::vector<ObjectPath>> endpoints;  // by class
  for (const auto& provider : providersOf(h, "_Create_InstanceMI")) {
    const ObjectPath cls(kNamespace, classOf(provider));
    ops.push_back(Operation{Kind::EnumerateInstances, provider, cls, std::nullopt});
    const Outcome all = h.enumerateInstances(provider, cls);
    for (const auto& r : all.results) {
      if (!r.isInstance()) continue;
      for (const auto& p : r.instance().properties()) {
        if (p.value.type() == host::type::ref && !p.value.isNull()) {
          endpoints[p.value.ref().className()].push_back(p.value.ref());
        }
      }
    }
  }
  for (const auto& path : endpoints["ZEDA_StorageExtent_Disk"]) {
    ops.push_back(
        Operation{Kind::GetInstance, "ZEDA_StorageExtent_DiskProvider", path, std::nullopt});
  }
  for (const auto& provider : providersOf(h, "_Create_AssociationMI")) {
    const std::string assoc = classOf(provider);
    for (const auto& [cls, paths] : endpoints) {
      if (paths.empty()) continue;
      for (const ObjectPath& end : {paths.front(), paths.back()}) {
        for (Kind k :
             {Kind::Associators, Kind::AssociatorNames, Kind::References, Kind::ReferenceNames}) {
          ops.push_back(Operation{k, provider, end, assoc});
        }
      }
    }
  }
  return ops;
}

void warmUpDefaults(host::Host& h) {
  for (const auto& provider : providersOf(h, "_Create_InstanceMI")) {
    const ObjectPath cls(kNamespace, classOf(provider));
    h.enumerateInstanceNames(provider, cls);
    h.createInstance(provider, cls, Instance(cls));
    h.modifyInstance(provider, cls, Instance(cls));
    h.deleteInstance(provider, cls);
    h.execQuery(provider, cls, "SELECT * FROM " + cls.className(), "WQL");
  }
}

}  // namespace zeda::concurrency_test
