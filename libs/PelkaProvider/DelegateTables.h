// The four delegate tables of a provider and the delegate base type of every
// slot. A base type's call operator answers CMPI_RC_ERR_NOT_SUPPORTED with no
// message; a provider class derives its delegates from them and overrides it.
// Slot (field) order is the order of the CMPI operations in each table.
#ifndef ZEDA_PELKA_DELEGATETABLES_H
#define ZEDA_PELKA_DELEGATETABLES_H

#include <memory>
#include <string>

#include <cmpi/CmpiArgs.h>
#include <cmpi/CmpiContext.h>
#include <cmpi/CmpiInstance.h>
#include <cmpi/CmpiObjectPath.h>
#include <cmpi/CmpiResult.h>
#include <cmpi/CmpiSelectExp.h>
#include <cmpi/CmpiStatus.h>

#include "MIFunction.h"

namespace zeda::pelka {

struct InstanceMI {
  class CreateInstanceDelegate : public MIFunction {
   public:
    virtual CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt,
                                  const CmpiObjectPath& cop, const CmpiInstance& inst);
  };
  class DeleteInstanceDelegate : public MIFunction {
   public:
    virtual CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt,
                                  const CmpiObjectPath& cop);
  };
  class EnumInstancesDelegate : public MIFunction {
   public:
    virtual CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt,
                                  const CmpiObjectPath& cop, const char** properties);
  };
  class EnumInstanceNamesDelegate : public MIFunction {
   public:
    virtual CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt,
                                  const CmpiObjectPath& cop);
  };
  class GetInstanceDelegate : public MIFunction {
   public:
    virtual CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt,
                                  const CmpiObjectPath& cop, const char** properties);
  };
  class SetInstanceDelegate : public MIFunction {
   public:
    virtual CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt,
                                  const CmpiObjectPath& cop, const CmpiInstance& inst,
                                  const char** properties);
  };
  class ExecQueryDelegate : public MIFunction {
   public:
    virtual CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt,
                                  const CmpiObjectPath& cop, const char* query,
                                  const char* language);
  };

  explicit InstanceMI(PelkaProvider* owner) : provider(owner) {}

  PelkaProvider* const provider;  // back-pointer to the owning provider
  std::unique_ptr<CreateInstanceDelegate> CreateInstance;
  std::unique_ptr<DeleteInstanceDelegate> DeleteInstance;
  std::unique_ptr<EnumInstancesDelegate> EnumInstances;
  std::unique_ptr<EnumInstanceNamesDelegate> EnumInstanceNames;
  std::unique_ptr<GetInstanceDelegate> GetInstance;
  std::unique_ptr<SetInstanceDelegate> SetInstance;
  std::unique_ptr<ExecQueryDelegate> ExecQuery;
};

// The string filters arrive converted: a null pointer from the object manager
// is an empty string here.
struct AssociationMI {
  class AssociatorsDelegate : public MIFunction {
   public:
    virtual CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt,
                                  const CmpiObjectPath& cop, const std::string& assocClass,
                                  const std::string& resultClass, const std::string& role,
                                  const std::string& resultRole, const char** properties);
  };
  class AssociatorNamesDelegate : public MIFunction {
   public:
    virtual CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt,
                                  const CmpiObjectPath& cop, const std::string& assocClass,
                                  const std::string& resultClass, const std::string& role,
                                  const std::string& resultRole);
  };
  class ReferencesDelegate : public MIFunction {
   public:
    virtual CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt,
                                  const CmpiObjectPath& cop, const std::string& resultClass,
                                  const std::string& role, const char** properties);
  };
  class ReferenceNamesDelegate : public MIFunction {
   public:
    virtual CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt,
                                  const CmpiObjectPath& cop, const std::string& resultClass,
                                  const std::string& role);
  };

  explicit AssociationMI(PelkaProvider* owner) : provider(owner) {}

  PelkaProvider* const provider;
  std::unique_ptr<AssociatorsDelegate> Associators;
  std::unique_ptr<AssociatorNamesDelegate> AssociatorNames;
  std::unique_ptr<ReferencesDelegate> References;
  std::unique_ptr<ReferenceNamesDelegate> ReferenceNames;
};

struct MethodMI {
  class InvokeMethodDelegate : public MIFunction {
   public:
    virtual CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt,
                                  const CmpiObjectPath& ref, const std::string& methodName,
                                  const CmpiArgs& in, CmpiArgs& out);
  };

  explicit MethodMI(PelkaProvider* owner) : provider(owner) {}

  PelkaProvider* const provider;
  std::unique_ptr<InvokeMethodDelegate> InvokeMethod;
};

struct IndicationMI {
  class ActivateFilterDelegate : public MIFunction {
   public:
    virtual CmpiStatus operator()(const CmpiContext& ctx, const CmpiSelectExp& filter,
                                  const char* className, const CmpiObjectPath& cop,
                                  bool firstActivation);
  };
  class DeActivateFilterDelegate : public MIFunction {
   public:
    virtual CmpiStatus operator()(const CmpiContext& ctx, const CmpiSelectExp& filter,
                                  const char* className, const CmpiObjectPath& cop,
                                  bool lastActivation);
  };
  class AuthorizeFilterDelegate : public MIFunction {
   public:
    virtual CmpiStatus operator()(const CmpiContext& ctx, const CmpiSelectExp& filter,
                                  const char* className, const CmpiObjectPath& cop,
                                  const char* owner);
  };
  class EnableIndicationsDelegate : public MIFunction {
   public:
    virtual CmpiStatus operator()(const CmpiContext& ctx);
  };
  class DisableIndicationsDelegate : public MIFunction {
   public:
    virtual CmpiStatus operator()(const CmpiContext& ctx);
  };
  class MustPollDelegate : public MIFunction {
   public:
    virtual CmpiStatus operator()(const CmpiContext& ctx, const CmpiSelectExp& filter,
                                  const char* className, const CmpiObjectPath& cop);
  };

  explicit IndicationMI(PelkaProvider* owner) : provider(owner) {}

  PelkaProvider* const provider;
  std::unique_ptr<ActivateFilterDelegate> ActivateFilter;
  std::unique_ptr<DeActivateFilterDelegate> DeActivateFilter;
  std::unique_ptr<AuthorizeFilterDelegate> AuthorizeFilter;
  std::unique_ptr<EnableIndicationsDelegate> EnableIndications;
  std::unique_ptr<DisableIndicationsDelegate> DisableIndications;
  std::unique_ptr<MustPollDelegate> MustPoll;
};

}  // namespace zeda::pelka

#endif
