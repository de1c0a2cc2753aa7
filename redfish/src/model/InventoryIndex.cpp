#include "model/InventoryIndex.h"

#include <algorithm>
#include <list>

#include "inventory/Library.h"
#include "model/DriveMapping.h"
#include "model/Ids.h"

namespace zeda::redfish::model {

std::size_t NasIndex::FindDisk(std::string_view segment) const {
  const auto found = diskOfSegment.find(segment);
  return found == diskOfSegment.end() ? disks.size() : found->second;
}

const NasIndex* InventoryIndex::FindNas(std::string_view segment) const {
  const auto found = nasOfSegment.find(segment);
  return found == nasOfSegment.end() ? nullptr : &nas[found->second];
}

NasIndex IndexNas(const zeda::pelka::Nas* nas, std::string name,
                  const zeda::orvi::OrviDiskList& diskList) {
  NasIndex index;
  index.nas = nas;
  index.segment = SegmentOf(name);
  index.name = std::move(name);
  const std::vector<zeda::orvi::OrviDisk>& records = diskList.disks;

  // Position of every record's disk in `disks` (its first record's).
  std::vector<std::size_t> diskOfRecord(records.size());
  std::unordered_map<std::string_view, std::size_t> firstOfId;
  for (std::size_t r = 0; r < records.size(); ++r) {
    const auto [at, inserted] = firstOfId.emplace(records[r].id, index.disks.size());
    if (inserted) index.disks.push_back(records[r]);
    diskOfRecord[r] = at->second;
  }
  index.diskSegments.reserve(index.disks.size());
  index.diskOfSegment.reserve(index.disks.size());
  for (std::size_t d = 0; d < index.disks.size(); ++d) {
    index.diskSegments.push_back(SegmentOf(index.disks[d].id));
  }
  // Filled after the vector stops growing: the keys point into its strings.
  for (std::size_t d = 0; d < index.disks.size(); ++d) {
    index.diskOfSegment.emplace(index.diskSegments[d], d);
  }

  index.poolsOfDisk.assign(index.disks.size(), 0);
  for (int pool = 1; pool <= 4; ++pool) {
    const std::vector<std::size_t> counts = zeda::pelka::PoolMembershipCounts(diskList, pool);
    const auto bit = static_cast<std::uint8_t>(1U << (pool - 1));
    for (std::size_t r = 0; r < records.size(); ++r) {
      if (counts[r] != 0) index.poolsOfDisk[diskOfRecord[r]] |= bit;
    }
    std::vector<std::size_t>& members = index.poolMembers[static_cast<std::size_t>(pool - 1)];
    for (std::size_t d = 0; d < index.disks.size(); ++d) {
      if ((index.poolsOfDisk[d] & bit) != 0) members.push_back(d);
    }
  }
  index.totals = zeda::pelka::ComputePoolTotals(diskList);
  return index;
}

std::optional<std::string_view> HealthRollupOf(const std::vector<zeda::orvi::OrviDisk>& disks,
                                               zeda::orvi::Orvi& orvi) {
  constexpr std::string_view kOrder[] = {"OK", "Warning", "Critical"};
  int worst = -1;
  for (const zeda::orvi::OrviDisk& disk : disks) {
    const CimDriveFigures figures =
        CimFiguresOf(disk, orvi.GetDiskHealth(HealthKeyOf(disk.id)).healthStatus);
    const auto health = ConditionOf(figures.operationalStatus, figures.healthState).health;
    for (int rank = 0; health && rank < 3; ++rank) {
      if (*health == kOrder[rank]) worst = std::max(worst, rank);
    }
  }
  if (worst < 0) return std::nullopt;
  return kOrder[worst];
}

std::shared_ptr<const InventoryIndex> BuildIndex() {
  auto index = std::make_shared<InventoryIndex>();
  const std::list<zeda::pelka::Nas>& nasList = zeda::pelka::GetNasList();
  index->source = &nasList;
  index->nas.reserve(nasList.size());
  for (const zeda::pelka::Nas& nas : nasList) {
    zeda::orvi::Orvi& orvi = zeda::pelka::GetOrvi(nas);
    const zeda::orvi::OrviDiskList diskList = orvi.GetDiskList();
    index->nas.push_back(IndexNas(&nas, nas.name, diskList));
    index->nas.back().healthRollup = HealthRollupOf(index->nas.back().disks, orvi);
  }
  // The first NAS of a name answers, as Nas::Get finds it.
  for (std::size_t n = 0; n < index->nas.size(); ++n) {
    index->nasOfSegment.emplace(index->nas[n].segment, n);
  }
  return index;
}

}  // namespace zeda::redfish::model
