#include "model/DriveMapping.h"

#include <algorithm>
#include <stdexcept>

#include "inventory/Library.h"
#include "providers/pools/PoolTable.h"

namespace zeda::redfish::model {

namespace {

constexpr std::uint64_t kBlockSize = 512;  // bytes; ZEDA_StorageExtent_Disk.BlockSize

bool IsHexDigit(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

std::optional<std::string> UpperHex(std::string_view digits) {
  std::string out;
  for (const char c : digits) {
    if (!IsHexDigit(c)) return std::nullopt;
    out += (c >= 'a' && c <= 'f') ? static_cast<char>(c - 'a' + 'A') : c;
  }
  return out;
}

bool StartsWith(std::string_view text, std::string_view prefix) {
  return text.substr(0, prefix.size()) == prefix;
}

// The CIM InterconnectType rule of ZEDA_DiskDrive, in its order and
// case-sensitive: exactly "SATA" is 4, any text holding "SAS" 5, else 1.
std::uint16_t InterconnectTypeOf(const std::string& interfaceType) {
  if (interfaceType == "SATA") return 4;
  if (interfaceType.find("SAS") != std::string::npos) return 5;
  return 1;
}

}  // namespace

CimDriveFigures CimFiguresOf(const zeda::orvi::OrviDisk& disk, std::uint32_t healthStatus) {
  CimDriveFigures figures;
  figures.operationalStatus =
      static_cast<std::uint16_t>(zeda::pelka::util::GetOperationalStatus(disk.status));
  figures.healthState = healthStatus == 0 ? 5 : 0;
  figures.interconnectType = InterconnectTypeOf(disk.interfaceType);
  figures.diskType = disk.isSsd ? 3 : 2;
  figures.rpm = disk.rpm;
  figures.numberOfBlocks = disk.capacity / kBlockSize;
  return figures;
}

std::string HealthKeyOf(const std::string& id) {
  // Without a colon the "after" part starts at npos + 1 == 0: the whole id.
  const auto colon = id.find(':');
  return id.substr(0, colon) + id.substr(colon + 1);
}

std::string ManufacturerOf(const std::string& product, const std::string& model) {
  // find() gives npos when the model does not occur and 0 for an empty or
  // leading model; minus one then wraps to a count substr caps at the length.
  const std::string::size_type length = product.find(model) - 1;
  return product.substr(0, length);
}

std::optional<DurableName> DurableNameOf(std::string_view id) {
  if (StartsWith(id, "wwn-0x")) {
    const std::string_view digits = id.substr(6);
    if (digits.size() != 16 && digits.size() != 32) return std::nullopt;
    if (auto hex = UpperHex(digits)) return DurableName{"NAA", std::move(*hex)};
    return std::nullopt;
  }
  if (StartsWith(id, "eui-")) {
    const std::string_view digits = id.substr(4);
    if (digits.size() != 16) return std::nullopt;
    const std::optional<std::string> hex = UpperHex(digits);
    if (!hex) return std::nullopt;
    // The EUI-64 form of the schema: eight octets separated by colons.
    std::string octets;
    for (std::size_t i = 0; i < hex->size(); i += 2) {
      if (i != 0) octets += ':';
      octets += hex->substr(i, 2);
    }
    return DurableName{"EUI", std::move(octets)};
  }
  return std::nullopt;
}

DriveCondition ConditionOf(std::uint16_t operationalStatus, std::uint16_t healthState) {
  // CIM OperationalStatus of the disk state: 2 OK, 3 Degraded, 5 Predictive
  // Failure, 6 Error, 10 Stopped, 12 No Contact, 0 Unknown.
  DriveCondition condition;
  switch (operationalStatus) {
    case 2:
      condition = {"Enabled", "OK", false};
      break;
    case 3:
      condition = {"Enabled", "Warning", false};
      break;
    case 5:
      condition = {"Enabled", "Warning", true};
      break;
    case 6:
      condition = {"Enabled", "Critical", false};
      break;
    case 10:
      condition = {"Disabled", "Warning", false};
      break;
    case 12:
      condition = {"UnavailableOffline", "Critical", false};
      break;
    default:
      // Unknown state: only a healthy health reply says anything.
      condition = {std::nullopt, std::nullopt, false};
      if (healthState == 5) condition.health = "OK";
      return condition;
  }
  // A health reply that is not healthy (HealthState 0) never leaves "OK".
  if (condition.health == std::optional<std::string_view>("OK") && healthState != 5) {
    condition.health = "Warning";
  }
  return condition;
}

std::string_view MediaTypeOf(std::uint16_t diskType) { return diskType == 3 ? "SSD" : "HDD"; }

std::optional<std::string_view> ProtocolOf(std::uint16_t interconnectType,
                                           std::string_view interfaceType) {
  if (interconnectType == 4) return "SATA";
  if (interconnectType == 5) return "SAS";
  for (const std::string_view word : {"NVMe", "USB", "PCIe", "FC"}) {
    if (interfaceType == word) return word;
  }
  return std::nullopt;
}

DriveValues DriveValuesOf(const zeda::orvi::OrviDisk& disk,
                          const zeda::orvi::OrviDiskHealth& health,
                          const zeda::orvi::OrviDiskIdentity& identity,
                          std::optional<std::uint32_t> mediaLifeLeftPercent) {
  const CimDriveFigures figures = CimFiguresOf(disk, health.healthStatus);
  DriveValues values;
  values.name = disk.id;
  values.model = identity.model;
  values.manufacturer = ManufacturerOf(identity.product, identity.model);
  values.serialNumber = identity.serial;
  values.revision = disk.firmwareVersion;
  values.capacityBytes = figures.numberOfBlocks * kBlockSize;
  values.mediaType = MediaTypeOf(figures.diskType);
  values.protocol = ProtocolOf(figures.interconnectType, disk.interfaceType);
  values.rotationSpeedRpm = figures.rpm;
  values.durableName = DurableNameOf(disk.id);
  values.condition = ConditionOf(figures.operationalStatus, figures.healthState);
  if (mediaLifeLeftPercent) values.mediaLifeLeftPercent = std::min(*mediaLifeLeftPercent, 100U);
  return values;
}

PoolValues PoolValuesOf(int number, std::uint64_t total) {
  const zeda::pelka::PoolKind* kind = zeda::pelka::FindPool(number);
  if (kind == nullptr) throw std::out_of_range("no primordial pool " + std::to_string(number));
  PoolValues values;
  values.number = number;
  values.id = kind->poolId;
  values.name = kind->elementName;
  values.allocatedBytes = total;
  values.consumedBytes = total - zeda::pelka::RemainingManagedSpace(*kind, total);
  return values;
}

int PoolNumberOfId(std::string_view id) {
  for (int number = 1; const zeda::pelka::PoolKind* kind = zeda::pelka::FindPool(number);
       ++number) {
    if (id == kind->poolId) return number;
  }
  return 0;
}

}  // namespace zeda::redfish::model
