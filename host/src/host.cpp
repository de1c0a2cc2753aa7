// The Host: loading, factories, unloading, context settings and raw access.
// The operations are in host_operations.cpp.
#include "zeda/host/host.hpp"

#include "host_impl.hpp"

namespace zeda::host {

std::string factorySymbol(const std::string& provider, MIKind kind) {
  switch (kind) {
    case MIKind::Instance:
      return provider + "_Create_InstanceMI";
    case MIKind::Association:
      return provider + "_Create_AssociationMI";
    case MIKind::Method:
      return provider + "_Create_MethodMI";
    case MIKind::Indication:
      return provider + "_Create_IndicationMI";
  }
  return provider;
}

BrokerSettings BrokerSettings::sfcbLike() {
  BrokerSettings s;
  s.brokerName = "sfcb-like";
  s.brokerVersion = 0;
  s.encFtVersion = 1;
  s.withMemFT = false;
  s.logMessageRc = CMPI_RC_ERR_NOT_SUPPORTED;
  return s;
}

namespace {
template <typename MI>
MI* typedMI(const CreatedMI& c, MIKind want, const char* what) {
  if (c.kind != want) throw TypeMismatch(std::string("the MI is not ") + what);
  return static_cast<MI*>(c.mi);
}
}  // namespace

CMPIInstanceMI* CreatedMI::instanceMI() const {
  return typedMI<CMPIInstanceMI>(*this, MIKind::Instance, "an instance MI");
}
CMPIAssociationMI* CreatedMI::associationMI() const {
  return typedMI<CMPIAssociationMI>(*this, MIKind::Association, "an association MI");
}
CMPIMethodMI* CreatedMI::methodMI() const {
  return typedMI<CMPIMethodMI>(*this, MIKind::Method, "a method MI");
}
CMPIIndicationMI* CreatedMI::indicationMI() const {
  return typedMI<CMPIIndicationMI>(*this, MIKind::Indication, "an indication MI");
}

Host::Host(const std::string& modulePath, BrokerSettings settings)
    : impl_(std::make_unique<Impl>(modulePath, std::move(settings))) {}

Host::~Host() {
  if (!impl_->module.isOpen()) return;
  try {
    unload();
  } catch (...) {
    // A provider's clean-up threw; the module is closed anyway.
    impl_->module.close();
  }
}

const std::string& Host::modulePath() const { return impl_->module.path(); }
const BrokerSettings& Host::settings() const { return impl_->broker.settings(); }
bool Host::loaded() const { return impl_->module.isOpen(); }

bool Host::hasFactory(const std::string& provider, MIKind kind) const {
  return impl_->hasFactory(provider, kind);
}

std::vector<std::string> Host::exportedFactories() const { return impl_->module.factories(); }

CreatedMI Host::createMI(const std::string& provider, MIKind kind) {
  impl_->requireLoaded();
  detail::RequestStore objects(impl_->broker);
  return impl_->registry.create(impl_->module, impl_->broker, impl_->ambient, provider, kind);
}

std::vector<Status> Host::unload() {
  impl_->requireLoaded();
  std::vector<Status> out;
  {
    detail::RequestStore objects(impl_->broker);
    out = impl_->registry.cleanupAll(impl_->broker, impl_->ambient);
  }
  impl_->module.close();
  return out;
}

void Host::setInvocationFlags(std::uint32_t flags) { impl_->invocationFlags = flags; }

void Host::setHonourKeyList(bool honour) { impl_->broker.setHonourKeyList(honour); }

void Host::setContextEntry(const std::string& name, const Value& value) {
  for (auto& e : impl_->extraEntries) {
    if (namesEqual(e.name, name)) {
      e.value = value;
      return;
    }
  }
  impl_->extraEntries.push_back(NamedValue{name, value});
}

const CMPIBroker* Host::broker() const { return impl_->broker.face(); }
const CMPIContext* Host::context() const { return impl_->ambient; }

CMPIObjectPath* Host::makeObjectPath(const ObjectPath& path) {
  return detail::makeObjectPath(impl_->broker, path)->face();
}
CMPIInstance* Host::makeInstance(const Instance& instance) {
  return detail::makeInstance(impl_->broker, instance)->face();
}
CMPIContext* Host::makeContext(const std::string& nameSpace) {
  return detail::makeContext(impl_->broker, impl_->contextEntries(nameSpace))->face();
}

std::size_t Host::liveClones() const { return impl_->broker.ownStore().liveClones(); }

std::size_t Host::liveObjects() const { return impl_->broker.ownStore().liveObjects(); }
std::vector<LogRecord> Host::logMessages() const { return impl_->broker.logs(false); }
std::vector<LogRecord> Host::traces() const { return impl_->broker.logs(true); }

}  // namespace zeda::host
