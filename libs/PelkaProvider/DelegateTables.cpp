// Default call operators of the delegate base types. A slot that a provider
// class leaves empty receives one of these on first use, so an operation the
// class does not serve answers CMPI_RC_ERR_NOT_SUPPORTED, without a message
// and without touching the result.
#include "DelegateTables.h"

namespace zeda::pelka {

namespace {

CmpiStatus NotSupported() { return CmpiStatus(CMPI_RC_ERR_NOT_SUPPORTED); }

}  // namespace

// InstanceMI

CmpiStatus InstanceMI::CreateInstanceDelegate::operator()(const CmpiContext&, CmpiResult&,
                                                          const CmpiObjectPath&,
                                                          const CmpiInstance&) {
  return NotSupported();
}

CmpiStatus InstanceMI::DeleteInstanceDelegate::operator()(const CmpiContext&, CmpiResult&,
                                                          const CmpiObjectPath&) {
  return NotSupported();
}

CmpiStatus InstanceMI::EnumInstancesDelegate::operator()(const CmpiContext&, CmpiResult&,
                                                         const CmpiObjectPath&, const char**) {
  return NotSupported();
}

CmpiStatus InstanceMI::EnumInstanceNamesDelegate::operator()(const CmpiContext&, CmpiResult&,
                                                             const CmpiObjectPath&) {
  return NotSupported();
}

CmpiStatus InstanceMI::GetInstanceDelegate::operator()(const CmpiContext&, CmpiResult&,
                                                       const CmpiObjectPath&, const char**) {
  return NotSupported();
}

CmpiStatus InstanceMI::SetInstanceDelegate::operator()(const CmpiContext&, CmpiResult&,
                                                       const CmpiObjectPath&, const CmpiInstance&,
                                                       const char**) {
  return NotSupported();
}

CmpiStatus InstanceMI::ExecQueryDelegate::operator()(const CmpiContext&, CmpiResult&,
                                                     const CmpiObjectPath&, const char*,
                                                     const char*) {
  return NotSupported();
}

// AssociationMI

CmpiStatus AssociationMI::AssociatorsDelegate::operator()(const CmpiContext&, CmpiResult&,
                                                          const CmpiObjectPath&, const std::string&,
                                                          const std::string&, const std::string&,
                                                          const std::string&, const char**) {
  return NotSupported();
}

CmpiStatus AssociationMI::AssociatorNamesDelegate::operator()(
    const CmpiContext&, CmpiResult&, const CmpiObjectPath&, const std::string&, const std::string&,
    const std::string&, const std::string&) {
  return NotSupported();
}

CmpiStatus AssociationMI::ReferencesDelegate::operator()(const CmpiContext&, CmpiResult&,
                                                         const CmpiObjectPath&, const std::string&,
                                                         const std::string&, const char**) {
  return NotSupported();
}

CmpiStatus AssociationMI::ReferenceNamesDelegate::operator()(const CmpiContext&, CmpiResult&,
                                                             const CmpiObjectPath&,
                                                             const std::string&,
                                                             const std::string&) {
  return NotSupported();
}

// MethodMI

CmpiStatus MethodMI::InvokeMethodDelegate::operator()(const CmpiContext&, CmpiResult&,
                                                      const CmpiObjectPath&, const std::string&,
                                                      const CmpiArgs&, CmpiArgs&) {
  return NotSupported();
}

// IndicationMI

CmpiStatus IndicationMI::ActivateFilterDelegate::operator()(const CmpiContext&,
                                                            const CmpiSelectExp&, const char*,
                                                            const CmpiObjectPath&, bool) {
  return NotSupported();
}

CmpiStatus IndicationMI::DeActivateFilterDelegate::operator()(const CmpiContext&,
                                                              const CmpiSelectExp&, const char*,
                                                              const CmpiObjectPath&, bool) {
  return NotSupported();
}

CmpiStatus IndicationMI::AuthorizeFilterDelegate::operator()(const CmpiContext&,
                                                             const CmpiSelectExp&, const char*,
                                                             const CmpiObjectPath&, const char*) {
  return NotSupported();
}

CmpiStatus IndicationMI::EnableIndicationsDelegate::operator()(const CmpiContext&) {
  return NotSupported();
}

CmpiStatus IndicationMI::DisableIndicationsDelegate::operator()(const CmpiContext&) {
  return NotSupported();
}

CmpiStatus IndicationMI::MustPollDelegate::operator()(const CmpiContext&, const CmpiSelectExp&,
                                                      const char*, const CmpiObjectPath&) {
  return NotSupported();
}

}  // namespace zeda::pelka
