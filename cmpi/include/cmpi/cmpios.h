/*
 * cmpios.h - operating-system dependent symbols of the CMPI 2.0 interface:
 * thread, mutex and condition handle types used by the broker's OS
 * encapsulation table (CMPIBrokerExtFT), and the linkage/export modifiers for
 * the MI factory functions.
 *
 * The values are those the CMPI standard prescribes for Linux with GCC; an
 * object manager built with the standard's own headers passes and expects
 * exactly these types through CMPIBrokerExtFT.
 */
#ifndef ZEDA_CMPI_CMPIOS_H
#define ZEDA_CMPI_CMPIOS_H

#include "cmpipl.h"

#include <stddef.h> /* size_t, used by CMPIBrokerMemFT */

/* Opaque handles handed out by the broker's thread services. */
#define CMPI_THREAD_TYPE void*
#define CMPI_MUTEX_TYPE void*
#define CMPI_COND_TYPE void*

/* Return type and calling convention of a thread start function. */
#if defined(CMPI_PLATFORM_WIN32_IX86_MSVC)
#  define CMPI_THREAD_RETURN unsigned
#  define CMPI_THREAD_CDECL __stdcall
#else
#  define CMPI_THREAD_RETURN void*
#  define CMPI_THREAD_CDECL
#endif

/* Thread-local-storage key; glibc's pthread_key_t is an unsigned int. */
#define CMPI_THREAD_KEY_TYPE unsigned int

/*
 * CMPI_EXPORT makes a symbol visible from the module even when the module is
 * compiled with -fvisibility=hidden.  CMPI_IMPORT is its counterpart for the
 * importing side (no effect with GCC on Linux beyond default visibility).
 */
#if defined(CMPI_PLATFORM_WIN32_IX86_MSVC)
#  define CMPI_EXPORT __declspec(dllexport)
#  define CMPI_IMPORT __declspec(dllimport)
#elif defined(__GNUC__) && (__GNUC__ >= 4)
#  define CMPI_EXPORT __attribute__((visibility("default")))
#  define CMPI_IMPORT __attribute__((visibility("default")))
#else
#  define CMPI_EXPORT
#  define CMPI_IMPORT
#endif

/*
 * CMPI_EXTERN_C goes on every MI factory function: the object manager looks
 * the factories up by their plain C names with dlsym().
 */
#ifdef __cplusplus
#  define CMPI_EXTERN_C extern "C" CMPI_EXPORT
#else
#  define CMPI_EXTERN_C CMPI_EXPORT
#endif

#endif /* ZEDA_CMPI_CMPIOS_H */
