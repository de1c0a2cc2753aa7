// What the resources need of one inventory, indexed once: per NAS its disks
// by identifier, the pools each disk is in and the pool totals. A request
// for one drive then costs a hash look-up and two NAS API queries (health,
// identity), not a walk of the NAS's disks.
//
// The index copies everything it answers from, so a reply streamed after
// the request's hold ended reads only the index.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "inventory/Nas.h"
#include "inventory/Orvi.h"
#include "inventory/Records.h"
#include "providers/pools/PoolRules.h"

namespace zeda::redfish::model {

struct NasIndex {
  // The library's NAS, valid only while the inventory it came from is held.
  const zeda::pelka::Nas* nas = nullptr;
  std::string name;
  std::string segment;  // SegmentOf(name)
  // The first record of every identifier, in NAS order; later records with
  // the same identifier are left out (one Drive per identifier).
  std::vector<zeda::orvi::OrviDisk> disks;
  std::vector<std::string> diskSegments;  // SegmentOf(id), beside disks
  std::unordered_map<std::string_view, std::size_t> diskOfSegment;
  // Per pool (index 0 to 3 for pools 1 to 4), the positions in `disks` of the
  // disks the pool-to-extent walk of the CIM model answers for it
  // (PoolMembershipCounts above 0), in NAS order.
  std::array<std::vector<std::size_t>, 4> poolMembers;
  // Per disk, bit n - 1 set when the disk is in pool n.
  std::vector<std::uint8_t> poolsOfDisk;
  // The CIM TotalManagedSpace of each pool (ComputePoolTotals over every
  // record of the NAS).
  zeda::pelka::PoolTotals totals{};
  // The worst Drive Status.Health of the NAS ("Critical" over "Warning" over
  // "OK"); nothing when no drive has one. Filled by BuildIndex.
  std::optional<std::string_view> healthRollup;

  // Position of the disk of a path segment, or disks.size().
  std::size_t FindDisk(std::string_view segment) const;
};

struct InventoryIndex {
  // The address of the NAS list the index was built from: the identity of
  // the library's snapshot while that snapshot is held.
  const void* source = nullptr;
  std::vector<NasIndex> nas;  // in the library's order
  std::unordered_map<std::string_view, std::size_t> nasOfSegment;

  // The NAS of a path segment, or nullptr.
  const NasIndex* FindNas(std::string_view segment) const;
};

// Indexes the inventory the library serves now: GetNasList(), then per NAS
// GetOrvi and GetDiskList(). Call it while holding the inventory; the
// library's exceptions pass through.
std::shared_ptr<const InventoryIndex> BuildIndex();

// The worst of the drives' Status.Health: each disk's health asked of `orvi`
// as DriveReply asks it.
std::optional<std::string_view> HealthRollupOf(const std::vector<zeda::orvi::OrviDisk>& disks,
                                               zeda::orvi::Orvi& orvi);

// Indexes one NAS from its disk list (the part of BuildIndex that reads no
// library); `nas` may be null.
NasIndex IndexNas(const zeda::pelka::Nas* nas, std::string name,
                  const zeda::orvi::OrviDiskList& diskList);

}  // namespace zeda::redfish::model
