// The walk from a primordial pool to the disk extents in it, shared by the
// two pool associations.
#ifndef ZEDA_PELKA_POOLTOEXTENTS_H
#define ZEDA_PELKA_POOLTOEXTENTS_H

#include <cmpi/CmpiObjectPath.h>
#include <cmpi/CmpiResult.h>

namespace zeda::pelka {

// ExtentStatus of the extents the walk answers.
enum class ExtentStatusRule {
  FromFreeFlag,  // {13} for a disk with isFree, {2} for any other
  AlwaysFree,    // {13} for every disk
};

// Answers the extents of the pool named by the InstanceID key of `poolPath`
// (see ParsePoolInstanceId; a malformed InstanceID fails before any NAS
// look-up). Looks the NAS up, reads its disk list and, for every disk in
// order, asks GetDiskHealth with its health key (also for disks it does not
// return), then returns the disk's extent (MakeStorageExtentInstance with PoolExtentKeys, in the
// namespace of `poolPath`, system name from the InstanceID) as many times
// as PoolMembershipCounts says. Ends with returnDone.
void ReturnPoolExtents(CmpiResult& rslt, const CmpiObjectPath& poolPath,
                       ExtentStatusRule extentStatusRule);

}  // namespace zeda::pelka

#endif
