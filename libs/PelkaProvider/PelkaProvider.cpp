#include "PelkaProvider.h"

#include "FailureWrapper.h"
#include "LogDirectory.h"
#include "inventory/Logging.h"

namespace zeda::pelka {

namespace {

// The delegate in `slot`; an empty slot first receives a default delegate of
// the slot's base type (which answers CMPI_RC_ERR_NOT_SUPPORTED), owned by
// the table's provider. The default stays installed for later calls.
template <class Table, class Delegate>
Delegate& DelegateIn(const Table& table, std::unique_ptr<Delegate>& slot) {
  if (!slot) {
    slot = std::make_unique<Delegate>();
    slot->setOwner(table.provider);
  }
  return *slot;
}

// Filter strings reach the delegates as text; "none given" is the empty string.
std::string TextOf(const char* filter) {
  return filter != nullptr ? std::string(filter) : std::string();
}

}  // namespace

PelkaProvider::PelkaProvider(const CmpiBroker& broker, const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx),
      CmpiAssociationMI(broker, ctx),
      CmpiIndicationMI(broker, ctx),
      CmpiInstanceMI(broker, ctx),
      CmpiMethodMI(broker, ctx),
      instanceMI_(std::make_unique<InstanceMI>(this)),
      associationMI_(std::make_unique<AssociationMI>(this)),
      methodMI_(std::make_unique<MethodMI>(this)),
      indicationMI_(std::make_unique<IndicationMI>(this)),
      broker_(broker),
      className_("Unknown") {
  zeda::Logging::Initialize("PELKA", LogDirectory().c_str());
}

PelkaProvider::~PelkaProvider() = default;

// --- CmpiBaseMI ------------------------------------------------------------

CmpiStatus PelkaProvider::initialize(const CmpiContext&) { return CmpiStatus(CMPI_RC_OK); }

CmpiStatus PelkaProvider::cleanup(CmpiContext&) { return CmpiStatus(CMPI_RC_OK); }

bool PelkaProvider::isUnloadable() const { return true; }

// --- CmpiAssociationMI -----------------------------------------------------

CmpiStatus PelkaProvider::associators(const CmpiContext& ctx, CmpiResult& rslt,
                                      const CmpiObjectPath& cop, const char* assocClass,
                                      const char* resultClass, const char* role,
                                      const char* resultRole, const char** properties) {
  return RunGuarded(className_, OperationLine::kAssociators, [&] {
    auto& delegate = DelegateIn(*associationMI_, associationMI_->Associators);
    return delegate(ctx, rslt, cop, TextOf(assocClass), TextOf(resultClass), TextOf(role),
                    TextOf(resultRole), properties);
  });
}

CmpiStatus PelkaProvider::associatorNames(const CmpiContext& ctx, CmpiResult& rslt,
                                          const CmpiObjectPath& cop, const char* assocClass,
                                          const char* resultClass, const char* role,
                                          const char* resultRole) {
  return RunGuarded(className_, OperationLine::kAssociatorNames, [&] {
    auto& delegate = DelegateIn(*associationMI_, associationMI_->AssociatorNames);
    return delegate(ctx, rslt, cop, TextOf(assocClass), TextOf(resultClass), TextOf(role),
                    TextOf(resultRole));
  });
}

CmpiStatus PelkaProvider::references(const CmpiContext& ctx, CmpiResult& rslt,
                                     const CmpiObjectPath& cop, const char* resultClass,
                                     const char* role, const char** properties) {
  return RunGuarded(className_, OperationLine::kReferences, [&] {
    auto& delegate = DelegateIn(*associationMI_, associationMI_->References);
    return delegate(ctx, rslt, cop, TextOf(resultClass), TextOf(role), properties);
  });
}

CmpiStatus PelkaProvider::referenceNames(const CmpiContext& ctx, CmpiResult& rslt,
                                         const CmpiObjectPath& cop, const char* resultClass,
                                         const char* role) {
  return RunGuarded(className_, OperationLine::kReferenceNames, [&] {
    auto& delegate = DelegateIn(*associationMI_, associationMI_->ReferenceNames);
    return delegate(ctx, rslt, cop, TextOf(resultClass), TextOf(role));
  });
}

// --- CmpiIndicationMI ------------------------------------------------------

CmpiStatus PelkaProvider::authorizeFilter(const CmpiContext& ctx, const CmpiSelectExp& filter,
                                          const char* className, const CmpiObjectPath& cop,
                                          const char* owner) {
  return RunGuarded(className_, OperationLine::kAuthorizeFilter, [&] {
    auto& delegate = DelegateIn(*indicationMI_, indicationMI_->AuthorizeFilter);
    return delegate(ctx, filter, className, cop, owner);
  });
}

CmpiStatus PelkaProvider::mustPoll(const CmpiContext& ctx, const CmpiSelectExp& filter,
                                   const char* className, const CmpiObjectPath& cop) {
  return RunGuarded(className_, OperationLine::kMustPoll, [&] {
    auto& delegate = DelegateIn(*indicationMI_, indicationMI_->MustPoll);
    return delegate(ctx, filter, className, cop);
  });
}

CmpiStatus PelkaProvider::activateFilter(const CmpiContext& ctx, const CmpiSelectExp& filter,
                                         const char* className, const CmpiObjectPath& cop,
                                         bool firstActivation) {
  return RunGuarded(className_, OperationLine::kActivateFilter, [&] {
    auto& delegate = DelegateIn(*indicationMI_, indicationMI_->ActivateFilter);
    return delegate(ctx, filter, className, cop, firstActivation);
  });
}

CmpiStatus PelkaProvider::deActivateFilter(const CmpiContext& ctx, const CmpiSelectExp& filter,
                                           const char* className, const CmpiObjectPath& cop,
                                           bool lastActivation) {
  return RunGuarded(className_, OperationLine::kDeActivateFilter, [&] {
    auto& delegate = DelegateIn(*indicationMI_, indicationMI_->DeActivateFilter);
    return delegate(ctx, filter, className, cop, lastActivation);
  });
}

CmpiStatus PelkaProvider::enableIndications(const CmpiContext& ctx) {
  return RunGuarded(className_, OperationLine::kEnableIndications, [&] {
    auto& delegate = DelegateIn(*indicationMI_, indicationMI_->EnableIndications);
    return delegate(ctx);
  });
}

CmpiStatus PelkaProvider::disableIndications(const CmpiContext& ctx) {
  return RunGuarded(className_, OperationLine::kDisableIndications, [&] {
    auto& delegate = DelegateIn(*indicationMI_, indicationMI_->DisableIndications);
    return delegate(ctx);
  });
}

// --- CmpiInstanceMI --------------------------------------------------------

CmpiStatus PelkaProvider::enumInstanceNames(const CmpiContext& ctx, CmpiResult& rslt,
                                            const CmpiObjectPath& cop) {
  return RunGuarded(className_, OperationLine::kEnumInstanceNames, [&] {
    auto& delegate = DelegateIn(*instanceMI_, instanceMI_->EnumInstanceNames);
    return delegate(ctx, rslt, cop);
  });
}

CmpiStatus PelkaProvider::enumInstances(const CmpiContext& ctx, CmpiResult& rslt,
                                        const CmpiObjectPath& cop, const char** properties) {
  return RunGuarded(className_, OperationLine::kEnumInstances, [&] {
    auto& delegate = DelegateIn(*instanceMI_, instanceMI_->EnumInstances);
    return delegate(ctx, rslt, cop, properties);
  });
}

CmpiStatus PelkaProvider::getInstance(const CmpiContext& ctx, CmpiResult& rslt,
                                      const CmpiObjectPath& cop, const char** properties) {
  return RunGuarded(className_, OperationLine::kGetInstance, [&] {
    auto& delegate = DelegateIn(*instanceMI_, instanceMI_->GetInstance);
    return delegate(ctx, rslt, cop, properties);
  });
}

CmpiStatus PelkaProvider::createInstance(const CmpiContext& ctx, CmpiResult& rslt,
                                         const CmpiObjectPath& cop, const CmpiInstance& inst) {
  return RunGuarded(className_, OperationLine::kCreateInstance, [&] {
    auto& delegate = DelegateIn(*instanceMI_, instanceMI_->CreateInstance);
    return delegate(ctx, rslt, cop, inst);
  });
}

CmpiStatus PelkaProvider::setInstance(const CmpiContext& ctx, CmpiResult& rslt,
                                      const CmpiObjectPath& cop, const CmpiInstance& inst,
                                      const char** properties) {
  return RunGuarded(className_, OperationLine::kSetInstance, [&] {
    auto& delegate = DelegateIn(*instanceMI_, instanceMI_->SetInstance);
    return delegate(ctx, rslt, cop, inst, properties);
  });
}

CmpiStatus PelkaProvider::deleteInstance(const CmpiContext& ctx, CmpiResult& rslt,
                                         const CmpiObjectPath& cop) {
  return RunGuarded(className_, OperationLine::kDeleteInstance, [&] {
    auto& delegate = DelegateIn(*instanceMI_, instanceMI_->DeleteInstance);
    return delegate(ctx, rslt, cop);
  });
}

CmpiStatus PelkaProvider::execQuery(const CmpiContext& ctx, CmpiResult& rslt,
                                    const CmpiObjectPath& cop, const char* query,
                                    const char* language) {
  return RunGuarded(className_, OperationLine::kExecQuery, [&] {
    auto& delegate = DelegateIn(*instanceMI_, instanceMI_->ExecQuery);
    return delegate(ctx, rslt, cop, query, language);
  });
}

// --- CmpiMethodMI ----------------------------------------------------------

CmpiStatus PelkaProvider::invokeMethod(const CmpiContext& ctx, CmpiResult& rslt,
                                       const CmpiObjectPath& ref, const char* methodName,
                                       const CmpiArgs& in, CmpiArgs& out) {
  return RunGuarded(className_, OperationLine::kInvokeMethod, [&] {
    auto& delegate = DelegateIn(*methodMI_, methodMI_->InvokeMethod);
    return delegate(ctx, rslt, ref, TextOf(methodName), in, out);
  });
}

}  // namespace zeda::pelka
