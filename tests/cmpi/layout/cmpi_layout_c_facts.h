/* Interface between the C99 layout unit and the C++ layout tests. */
#ifndef ZEDA_TESTS_CMPI_LAYOUT_C_FACTS_H
#define ZEDA_TESTS_CMPI_LAYOUT_C_FACTS_H

#include <cmpift.h>

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/* One offset or size as computed by the C compiler. */
struct cmpi_c_fact {
  const char* what; /* "CMPIType.member" or "sizeof CMPIType" */
  size_t value;
};

const struct cmpi_c_fact* cmpi_layout_c_facts(size_t* count);

/*
 * The C unit defines CLayoutProbe_Create_InstanceMI with CMInstanceMIStub.
 * Each of its MI functions records a number: cleanup 1, enumerateInstanceNames
 * 2, enumerateInstances 3, getInstance 4, createInstance 5, modifyInstance 6,
 * deleteInstance 7, execQuery 8.
 */
CMPIInstanceMI* CLayoutProbe_Create_InstanceMI(const CMPIBroker* brkr, const CMPIContext* ctx,
                                               CMPIStatus* rc);
int cmpi_layout_c_last_call(void);
const CMPIBroker* cmpi_layout_c_broker(void);

#ifdef __cplusplus
}
#endif

#endif /* ZEDA_TESTS_CMPI_LAYOUT_C_FACTS_H */
