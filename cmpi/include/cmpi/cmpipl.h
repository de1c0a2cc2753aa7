/*
 * cmpipl.h - compile platform selection for the CMPI 2.0 interface headers.
 *
 * The CMPI standard identifies the compile platform by exactly one
 * CMPI_PLATFORM_<os>_<cpu>_<compiler> symbol.  A build may define one on the
 * command line; when none is given we derive it from the compiler's own
 * predefined macros, because this module is only ever built with GCC or
 * Clang on Linux.
 */
#ifndef ZEDA_CMPI_CMPIPL_H
#define ZEDA_CMPI_CMPIPL_H

#if !defined(CMPI_PLATFORM_LINUX_GENERIC_GNU) && \
    !defined(CMPI_PLATFORM_HPUX_PARISC_ACC) && \
    !defined(CMPI_PLATFORM_WIN32_IX86_MSVC) && \
    !defined(CMPI_PLATFORM_SOLARIS_SPARC_GNU) && \
    !defined(CMPI_PLATFORM_SOLARIS_SPARC_CC) && \
    !defined(CMPI_PLATFORM_AIX_RS_IBMCXX) && \
    !defined(CMPI_PLATFORM_ZOS_ZSERIES_IBM) && \
    !defined(CMPI_PLATFORM_TRU64_ALPHA_DECCXX) && \
    !defined(CMPI_PLATFORM_OS400_ISERIES_IBM) && \
    !defined(CMPI_PLATFORM_DARWIN_PPC_GNU) && \
    !defined(CMPI_PLATFORM_VMS_ALPHA_DECCXX) && \
    !defined(CMPI_PLATFORM_VMS_IA64_DECCXX)
#  if defined(__linux__) && defined(__GNUC__)
#    define CMPI_PLATFORM_LINUX_GENERIC_GNU 1
#  else
#    error "No CMPI_PLATFORM_* symbol given and the platform is not Linux/GCC; define one explicitly."
#  endif
#endif

#endif /* ZEDA_CMPI_CMPIPL_H */
