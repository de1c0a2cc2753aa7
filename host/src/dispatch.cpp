// The MI side of an operation: the function-table calls.
#include "dispatch.hpp"

#include "convert.hpp"
#include "module.hpp"
#include "objects.hpp"

namespace zeda::host::detail {

MIKind kindOf(Op op) {
  switch (op) {
    case Op::EnumerateInstanceNames:
    case Op::EnumerateInstances:
    case Op::GetInstance:
    case Op::CreateInstance:
    case Op::ModifyInstance:
    case Op::DeleteInstance:
    case Op::ExecQuery:
      return MIKind::Instance;
    case Op::Associators:
    case Op::AssociatorNames:
    case Op::References:
    case Op::ReferenceNames:
      return MIKind::Association;
    case Op::InvokeMethod:
      return MIKind::Method;
    default:
      return MIKind::Indication;
  }
}

namespace {

const char* c(const OptString& s) { return s ? s->c_str() : nullptr; }

CMPIStatus notSupported() { return status(CMPI_RC_ERR_NOT_SUPPORTED); }

struct Call {
  Broker& b;
  const Request& req;
  const CMPIContext* ctx;
  const CMPIResult* rslt;
  const CMPIObjectPath* op;
  NameList props;
};

CMPIStatus instanceCall(CMPIInstanceMI* mi, Call& k) {
  const CMPIInstanceMIFT* ft = mi->ft;
  if (ft == nullptr) return notSupported();
  switch (k.req.op) {
    case Op::EnumerateInstanceNames:
      return ft->enumerateInstanceNames ? ft->enumerateInstanceNames(mi, k.ctx, k.rslt, k.op)
                                        : notSupported();
    case Op::EnumerateInstances:
      return ft->enumerateInstances ? ft->enumerateInstances(mi, k.ctx, k.rslt, k.op, k.props.get())
                                    : notSupported();
    case Op::GetInstance:
      return ft->getInstance ? ft->getInstance(mi, k.ctx, k.rslt, k.op, k.props.get())
                             : notSupported();
    case Op::CreateInstance:
      return ft->createInstance ? ft->createInstance(mi, k.ctx, k.rslt, k.op,
                                                     makeInstance(k.b, k.req.instance)->face())
                                : notSupported();
    case Op::ModifyInstance:
      return ft->modifyInstance
                 ? ft->modifyInstance(mi, k.ctx, k.rslt, k.op,
                                      makeInstance(k.b, k.req.instance)->face(), k.props.get())
                 : notSupported();
    case Op::DeleteInstance:
      return ft->deleteInstance ? ft->deleteInstance(mi, k.ctx, k.rslt, k.op) : notSupported();
    case Op::ExecQuery:
      return ft->execQuery ? ft->execQuery(mi, k.ctx, k.rslt, k.op, k.req.query.c_str(),
                                           k.req.language.c_str())
                           : notSupported();
    default:
      return notSupported();
  }
}

CMPIStatus associationCall(CMPIAssociationMI* mi, Call& k) {
  const CMPIAssociationMIFT* ft = mi->ft;
  if (ft == nullptr) return notSupported();
  const Request& r = k.req;
  switch (r.op) {
    case Op::Associators:
      return ft->associators
                 ? ft->associators(mi, k.ctx, k.rslt, k.op, c(r.assocClass), c(r.resultClass),
                                   c(r.role), c(r.resultRole), k.props.get())
                 : notSupported();
    case Op::AssociatorNames:
      return ft->associatorNames ? ft->associatorNames(mi, k.ctx, k.rslt, k.op, c(r.assocClass),
                                                       c(r.resultClass), c(r.role), c(r.resultRole))
                                 : notSupported();
    case Op::References:
      return ft->references ? ft->references(mi, k.ctx, k.rslt, k.op, c(r.resultClass), c(r.role),
                                             k.props.get())
                            : notSupported();
    case Op::ReferenceNames:
      return ft->referenceNames
                 ? ft->referenceNames(mi, k.ctx, k.rslt, k.op, c(r.resultClass), c(r.role))
                 : notSupported();
    default:
      return notSupported();
  }
}

CMPIStatus methodCall(CMPIMethodMI* mi, Call& k, Outcome& out) {
  const CMPIMethodMIFT* ft = mi->ft;
  if (ft == nullptr || ft->invokeMethod == nullptr) return notSupported();
  const CMPIArgs* in = makeArgs(k.b, k.req.in)->face();
  CMPIArgs* outArgs = makeArgs(k.b)->face();
  const CMPIStatus st =
      ft->invokeMethod(mi, k.ctx, k.rslt, k.op, k.req.method.c_str(), in, outArgs);
  // Read through the face: a provider that released the list has freed it.
  if (const ArgsObj* o = unwrap<ArgsObj>(outArgs)) out.outArgs = o->args;
  return st;
}

CMPIStatus indicationCall(CMPIIndicationMI* mi, Call& k) {
  const CMPIIndicationMIFT* ft = mi->ft;
  if (ft == nullptr) return notSupported();
  const Request& r = k.req;
  const CMPISelectExp* filter = makeSelectExp(k.b, r.query, "WQL")->face();
  const char* cls = r.className.c_str();
  switch (r.op) {
    case Op::AuthorizeFilter:
      return ft->authorizeFilter
                 ? ft->authorizeFilter(mi, k.ctx, filter, cls, k.op, r.owner.c_str())
                 : notSupported();
    case Op::MustPoll:
      return ft->mustPoll ? ft->mustPoll(mi, k.ctx, filter, cls, k.op) : notSupported();
    case Op::ActivateFilter:
      return ft->activateFilter
                 ? ft->activateFilter(mi, k.ctx, filter, cls, k.op, r.activation ? 1 : 0)
                 : notSupported();
    case Op::DeActivateFilter:
      return ft->deActivateFilter
                 ? ft->deActivateFilter(mi, k.ctx, filter, cls, k.op, r.activation ? 1 : 0)
                 : notSupported();
    case Op::EnableIndications:
      return ft->enableIndications ? ft->enableIndications(mi, k.ctx) : notSupported();
    case Op::DisableIndications:
      return ft->disableIndications ? ft->disableIndications(mi, k.ctx) : notSupported();
    default:
      return notSupported();
  }
}

}  // namespace

Outcome drive(Broker& broker, void* mi, const Request& req, const CMPIContext* ctx,
              ResultSink& sink) {
  Outcome out;
  ScopeGuard scope(broker.store());
  Call k{broker,
         req,
         ctx,
         makeResult(broker, out, sink)->face(),
         makeObjectPath(broker, req.path)->face(),
         NameList(req.properties)};
  CMPIStatus st{CMPI_RC_OK, nullptr};
  switch (kindOf(req.op)) {
    case MIKind::Instance:
      st = instanceCall(static_cast<CMPIInstanceMI*>(mi), k);
      break;
    case MIKind::Association:
      st = associationCall(static_cast<CMPIAssociationMI*>(mi), k);
      break;
    case MIKind::Method:
      st = methodCall(static_cast<CMPIMethodMI*>(mi), k, out);
      break;
    case MIKind::Indication:
      st = indicationCall(static_cast<CMPIIndicationMI*>(mi), k);
      break;
  }
  // The message string may belong to this call's scope: read it first.
  out.status = readStatus(st);
  return out;
}

}  // namespace zeda::host::detail
