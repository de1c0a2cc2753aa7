// The walk from a disk extent to the primordial pool it lies in, shared by
// the two pool associations.
#ifndef ZEDA_PELKA_EXTENTTOPOOL_H
#define ZEDA_PELKA_EXTENTTOPOOL_H

#include <cmpi/CmpiObjectPath.h>
#include <cmpi/CmpiResult.h>

namespace zeda::pelka {

// How an association answers the pool of an extent.
struct ExtentPoolRule {
  int highestPool;  // pools 1 to highestPool are answered; others fail
  bool deliver;     // false: the pool instance is built but not returned
};

// Reads the SystemName and DeviceID keys of `extentPath` (ParseExtentKey),
// looks the NAS up, reads its disk list, computes the pool totals and finds
// the disk's pool (PoolOfDisk). A pool from 1 to rule.highestPool is built
// with MakePoolInstance (namespace of `extentPath`, `properties` as filter,
// InstanceID = the SystemName key as given + the pool's suffix) and, when
// rule.deliver, returned; then returnDone. Any other pool, including 0 for
// an unknown disk or an empty disk list, throws Exception
// "Incorrect association class".
void ReturnExtentPool(CmpiResult& rslt, const CmpiObjectPath& extentPath, const char** properties,
                      ExtentPoolRule rule);

}  // namespace zeda::pelka

#endif
