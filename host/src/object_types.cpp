// Telling which encapsulated type a void* is, for toString / isOfType /
// getType: every face starts with {hdl, ft}, and the ft of a broker's own
// objects is one of its tables.
#include <cstring>

#include "objects.hpp"
#include "zeda/host/format.hpp"
#include "zeda/host/wbem_uri.hpp"

namespace zeda::host::detail {

namespace {

struct FaceWords {
  void* hdl = nullptr;
  const void* ft = nullptr;
};

FaceWords words(const void* object) {
  FaceWords w;
  std::memcpy(&w.hdl, object, sizeof w.hdl);
  std::memcpy(&w.ft, static_cast<const char*>(object) + sizeof(void*), sizeof w.ft);
  return w;
}

std::string namedList(const std::vector<NamedValue>& list) {
  std::string out;
  for (const auto& nv : list)
    out += (out.empty() ? "" : ", ") + nv.name + "=" + valueToMof(nv.value);
  return out;
}

}  // namespace

std::optional<std::string> typeNameOf(Broker& b, const void* object) {
  if (object == nullptr) return std::nullopt;
  const FaceWords w = words(object);
  if (w.hdl == nullptr) return std::nullopt;
  const Tables& t = b.tables();
  if (w.ft == &t.string) return "CMPIString";
  if (w.ft == &t.array) return "CMPIArray";
  if (w.ft == &t.dateTime) return "CMPIDateTime";
  if (w.ft == &t.objectPath) return "CMPIObjectPath";
  if (w.ft == &t.instance) return "CMPIInstance";
  if (w.ft == &t.args) return "CMPIArgs";
  if (w.ft == &t.context) return "CMPIContext";
  if (w.ft == &t.enumeration) return "CMPIEnumeration";
  if (w.ft == &t.result) return "CMPIResult";
  if (w.ft == &t.error) return "CMPIError";
  if (w.ft == &t.selectExp) return "CMPISelectExp";
  return std::nullopt;
}

std::optional<std::string> describe(Broker& b, const void* object) {
  const auto type = typeNameOf(b, object);
  if (!type) return std::nullopt;
  auto* obj = static_cast<EncObject*>(words(object).hdl);
  if (*type == "CMPIString") {
    const Value& text = static_cast<StringObj*>(obj)->text;
    return text.isNull() ? std::string() : text.str();
  }
  if (*type == "CMPIArray") {
    auto* a = static_cast<ArrayObj*>(obj);
    return valueToMof(Value::array(a->elementType, a->values()));
  }
  if (*type == "CMPIDateTime") {
    auto* d = static_cast<DateTimeObj*>(obj);
    return d->text ? *d->text : formatDateTime(d->micros, d->interval);
  }
  if (*type == "CMPIObjectPath") return formatObjectPath(static_cast<ObjectPathObj*>(obj)->path);
  if (*type == "CMPIInstance") return instanceToMof(static_cast<InstanceObj*>(obj)->inst);
  if (*type == "CMPIArgs") return namedList(static_cast<ArgsObj*>(obj)->args);
  if (*type == "CMPIContext") return namedList(static_cast<ContextObj*>(obj)->entries);
  if (*type == "CMPIEnumeration") {
    return "enumeration of " + std::to_string(static_cast<EnumerationObj*>(obj)->items.size()) +
           " items";
  }
  if (*type == "CMPIError") return static_cast<ErrorObj*>(obj)->message.value_or("");
  if (*type == "CMPISelectExp") return static_cast<SelectExpObj*>(obj)->query;
  return *type;
}

}  // namespace zeda::host::detail
