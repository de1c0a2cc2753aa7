/*
 * A small CMPI provider in plain C, loaded by the host tests with dlopen.
 * It serves the class ZEDA_HostTest (instance, association, method and
 * indication MIs) and, through its method MI, runs self-checks that call
 * every broker and encapsulated-type function and report what failed.
 */
#ifndef ZEDA_TESTS_HOST_TEST_PROVIDER_H
#define ZEDA_TESTS_HOST_TEST_PROVIDER_H

#include <cmpidt.h>
#include <cmpift.h>

#define TEST_CLASS "ZEDA_HostTest"

/* Collects the outcome of self-checks. */
typedef struct {
  char failures[8192];
  unsigned int checks;
  unsigned int failed;
} Report;

void report_check(Report* r, int ok, const char* what, int line);
#define CHECK(r, cond) report_check((r), (cond) ? 1 : 0, #cond, __LINE__)

/* A use of the released object behind `face`: the host answers it with
 * CMPI_RC_ERR_INVALID_HANDLE (`cond` checks that). Under AddressSanitizer the
 * host poisons a freed object's face, as a real object manager frees it, so
 * the use itself would be the reported error: the check then makes sure the
 * face is poisoned instead of using it. */
#if defined(__SANITIZE_ADDRESS__)
#define ZEDA_PROVIDER_UNDER_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZEDA_PROVIDER_UNDER_ASAN 1
#endif
#endif
#ifdef ZEDA_PROVIDER_UNDER_ASAN
#include <sanitizer/asan_interface.h>
#define CHECK_FREED(r, face, cond) \
  report_check((r), __asan_address_is_poisoned(face) ? 1 : 0, "freed: " #face, __LINE__)
#define IS_FREED(face) (__asan_address_is_poisoned(face) != 0)
#else
#define CHECK_FREED(r, face, cond) CHECK(r, cond)
/* The face of a freed object answers with a null handle. */
#define IS_FREED(face) ((face)->hdl == NULL)
#endif

/* Text of a CMPIString (or "" for NULL). */
const char* str_of(const CMPIString* s);
int str_eq(const CMPIString* s, const char* text);

/* The broker the factories received. */
extern const CMPIBroker* g_broker;

/* The instance with InstanceID id ("1" or "2") in namespace ns, built with
 * the property filter (properties, key InstanceID) applied; NULL otherwise. */
CMPIInstance* make_test_instance(const char* ns, const char* id, const char** properties);
CMPIObjectPath* make_test_path(const char* ns, const char* id);

/* The instance MI functions (mi_instance.c). */
extern CMPIInstanceMIFT g_instance_ft;

/* Self-checks (checks_*.c); each may add out arguments. */
void check_strings(Report* r, const CMPIContext* ctx, CMPIArgs* out);
void check_arrays(Report* r, const CMPIContext* ctx, CMPIArgs* out);
void check_datetimes(Report* r, const CMPIContext* ctx, CMPIArgs* out);
void check_object_paths(Report* r, const CMPIContext* ctx, CMPIArgs* out);
void check_instances(Report* r, const CMPIContext* ctx, CMPIArgs* out);
void check_args(Report* r, const CMPIContext* ctx, CMPIArgs* out);
void check_contexts(Report* r, const CMPIContext* ctx, CMPIArgs* out);
void check_errors(Report* r, const CMPIContext* ctx, CMPIArgs* out);
void check_select_exps(Report* r, const CMPIContext* ctx, CMPIArgs* out);
void check_results(Report* r, const CMPIContext* ctx, const CMPIResult* rslt, CMPIArgs* out);
void check_upcalls(Report* r, const CMPIContext* ctx, CMPIArgs* out);
void check_enc_services(Report* r, const CMPIContext* ctx, CMPIArgs* out);
void check_threads(Report* r, const CMPIContext* ctx, CMPIArgs* out);
void check_memory(Report* r, const CMPIContext* ctx, CMPIArgs* out);

#endif
