// The References answer of the two pool associations: one fixed placeholder
// reference per request, no NAS consulted.
#ifndef ZEDA_PELKA_POOLREFERENCES_H
#define ZEDA_PELKA_POOLREFERENCES_H

#include <string>

#include <cmpi/CmpiObjectPath.h>
#include <cmpi/CmpiResult.h>

namespace zeda::pelka {

// Source class ZEDA_StorageExtent_Disk: GroupComponent is a pool path with
// InstanceID "InstanceID_SPP", PartComponent the source path. Source class
// ZEDA_StoragePool_Primordial: GroupComponent is the source path,
// PartComponent the placeholder extent path (PlaceholderDevicePath). The
// association instance of `associationClass` is returned, then returnDone.
// Any other class name (compared exactly) throws Exception
// "Unknown class name: <class>" (answered as 200).
void ReturnPoolPlaceholderReference(CmpiResult& rslt, const CmpiObjectPath& source,
                                    const std::string& associationClass);

}  // namespace zeda::pelka

#endif
