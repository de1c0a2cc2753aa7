// The list of every static driver of the four MI interfaces.
#include "DriverHarness.h"

namespace zeda::test {

namespace harness {

std::vector<std::pair<std::string, Driver>> allDrivers() {
  return {
      {"enumInstanceNames",
       [](Call& c) {
         return CmpiInstanceMI::driveEnumInstanceNames(&c.instanceMI, c.ctx, c.rslt, c.cop);
       }},
      {"enumInstances",
       [](Call& c) {
         return CmpiInstanceMI::driveEnumInstances(&c.instanceMI, c.ctx, c.rslt, c.cop, nullptr);
       }},
      {"getInstance",
       [](Call& c) {
         return CmpiInstanceMI::driveGetInstance(&c.instanceMI, c.ctx, c.rslt, c.cop, nullptr);
       }},
      {"createInstance",
       [](Call& c) {
         return CmpiInstanceMI::driveCreateInstance(&c.instanceMI, c.ctx, c.rslt, c.cop, c.inst);
       }},
      {"setInstance",
       [](Call& c) {
         return CmpiInstanceMI::driveSetInstance(&c.instanceMI, c.ctx, c.rslt, c.cop, c.inst,
                                                 nullptr);
       }},
      {"deleteInstance",
       [](Call& c) {
         return CmpiInstanceMI::driveDeleteInstance(&c.instanceMI, c.ctx, c.rslt, c.cop);
       }},
      {"execQuery",
       [](Call& c) {
         return CmpiInstanceMI::driveExecQuery(&c.instanceMI, c.ctx, c.rslt, c.cop, "SELECT",
                                               "WQL");
       }},
      {"associators",
       [](Call& c) {
         return CmpiAssociationMI::driveAssociators(&c.associationMI, c.ctx, c.rslt, c.cop, nullptr,
                                                    nullptr, nullptr, nullptr, nullptr);
       }},
      {"associatorNames",
       [](Call& c) {
         return CmpiAssociationMI::driveAssociatorNames(&c.associationMI, c.ctx, c.rslt, c.cop,
                                                        nullptr, nullptr, nullptr, nullptr);
       }},
      {"references",
       [](Call& c) {
         return CmpiAssociationMI::driveReferences(&c.associationMI, c.ctx, c.rslt, c.cop, nullptr,
                                                   nullptr, nullptr);
       }},
      {"referenceNames",
       [](Call& c) {
         return CmpiAssociationMI::driveReferenceNames(&c.associationMI, c.ctx, c.rslt, c.cop,
                                                       nullptr, nullptr);
       }},
      {"invokeMethod",
       [](Call& c) {
         return CmpiMethodMI::driveInvokeMethod(&c.methodMI, c.ctx, c.rslt, c.cop, "Reset", c.in,
                                                c.out);
       }},
      {"authorizeFilter",
       [](Call& c) {
         return CmpiIndicationMI::driveAuthorizeFilter(&c.indicationMI, c.ctx, c.filter, "C", c.cop,
                                                       "owner");
       }},
      {"mustPoll",
       [](Call& c) {
         return CmpiIndicationMI::driveMustPoll(&c.indicationMI, c.ctx, c.filter, "C", c.cop);
       }},
      {"activateFilter",
       [](Call& c) {
         return CmpiIndicationMI::driveActivateFilter(&c.indicationMI, c.ctx, c.filter, "C", c.cop,
                                                      1);
       }},
      {"deActivateFilter",
       [](Call& c) {
         return CmpiIndicationMI::driveDeActivateFilter(&c.indicationMI, c.ctx, c.filter, "C",
                                                        c.cop, 0);
       }},
      {"enableIndications",
       [](Call& c) { return CmpiIndicationMI::driveEnableIndications(&c.indicationMI, c.ctx); }},
      {"disableIndications",
       [](Call& c) { return CmpiIndicationMI::driveDisableIndications(&c.indicationMI, c.ctx); }},
  };
}

}  // namespace harness

}  // namespace zeda::test
