#include "platform/MediaLife.h"

#include "NasOrvi.h"

namespace zeda::pelka::platform {

std::optional<std::uint32_t> MediaLifeLeftPercent(const zeda::orvi::Orvi& orvi,
                                                  const std::string& id) {
  const auto* const nasOrvi = dynamic_cast<const NasOrvi*>(&orvi);
  if (nasOrvi == nullptr) return std::nullopt;
  const DiskRecord* record = nasOrvi->FindListedRecord(id);
  if (record == nullptr) return std::nullopt;
  return record->mediaLifeLeftPercent;
}

}  // namespace zeda::pelka::platform
