/* The raw disk drive provider of the benchmarks: a CMPI instance provider in
 * plain C that answers an enumeration of ZEDA_DiskDrive with exactly the
 * broker calls the module makes for it, on disk data handed over by the
 * benchmark. It is the floor the module's own cost per disk is compared
 * with: what any provider pays the object manager for the same answer.
 *
 * Factory: ZEDA_RawDiskDriveProvider_Create_InstanceMI. */
#ifndef ZEDA_BENCH_RAW_DRIVE_PROVIDER_H
#define ZEDA_BENCH_RAW_DRIVE_PROVIDER_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/* What the enumeration reads of one disk, as the NAS reports it. */
struct ZedaRawDisk {
  const char* id;            /* disk identifier, used verbatim in DeviceID and Name */
  const char* interfaceType; /* "SATA", "SAS", ... */
  unsigned int healthStatus; /* health reply: 0 healthy, anything else unknown */
  int status;                /* NAS disk state code, 0 (unknown) to 6 (no contact) */
  int isSsd;
  unsigned int rpm;
};

struct ZedaRawNas {
  const char* systemName; /* "ZEDA:" followed by the NAS name */
  const struct ZedaRawDisk* disks;
  size_t diskCount;
};

/* Makes the provider answer `nasCount` NAS devices from `nas` until the next
 * call. Nothing is copied: the caller keeps the arrays and their texts alive
 * while the provider may be called. */
void ZedaRawDrive_UseInventory(const struct ZedaRawNas* nas, size_t nasCount);

/* The name to look the function above up with dlsym. */
#define ZEDA_RAW_DRIVE_USE_INVENTORY "ZedaRawDrive_UseInventory"
typedef void (*ZedaRawDriveUseInventoryFn)(const struct ZedaRawNas*, size_t);

#ifdef __cplusplus
}
#endif

#endif
