// The one mapping from the NAS API records of a disk to the values of its
// Redfish Drive, and of a primordial pool to its Swordfish StoragePool. The
// one value no NAS API record carries, the media life left of a disk, comes
// from the library's disk record beside them and no CIM class shows it.
//
// It goes in two steps so that both protocols tell the same truth: first the
// records give the figures the CIM classes report (the same rules as the
// module's providers), then the figures give the Redfish words. Every value
// is a pure function of the records. docs/REDFISH.md has the same mapping as
// one table; the consistency test compares both services disk by disk.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "inventory/Records.h"

namespace zeda::redfish::model {

// What the CIM classes report of one disk.
struct CimDriveFigures {
  std::uint16_t operationalStatus = 0;  // ZEDA_DiskDrive.OperationalStatus[0], of the disk state
  std::uint16_t healthState = 0;        // HealthState: 5 when the health reply is 0, else 0
  std::uint16_t interconnectType = 0;   // ZEDA_DiskDrive.InterconnectType: 4 SATA, 5 SAS, else 1
  std::uint16_t diskType = 0;           // ZEDA_DiskDrive.DiskType: 3 solid state, 2 hard disk
  std::uint32_t rpm = 0;                // ZEDA_DiskDrive.RPM
  std::uint64_t numberOfBlocks = 0;     // ZEDA_StorageExtent_Disk.NumberOfBlocks of 512 bytes
};

CimDriveFigures CimFiguresOf(const zeda::orvi::OrviDisk& disk, std::uint32_t healthStatus);

// The health query key of a disk, as the module forms it: the text before
// the first ":" of the identifier followed by the text after it ("0:3" gives
// "03"; an identifier without ":" gives itself twice).
std::string HealthKeyOf(const std::string& id);

// Manufacturer as ZEDA_PhysicalPackage_Disk reports it: the product text up
// to the character before the first occurrence of the model; the whole
// product when the model is empty, first or absent.
std::string ManufacturerOf(const std::string& product, const std::string& model);

// Drive.Identifiers[0] when the identifier names a world-wide name.
struct DurableName {
  std::string_view format;  // "NAA" or "EUI"
  std::string name;         // upper-case hexadecimal; EUI octets separated by ":"
};

// The world-wide name inside a disk identifier of the form
// "wwn-0x" + 16 or 32 hexadecimal digits (NAA) or "eui-" + 16 hexadecimal
// digits (EUI-64), as the linux source names disks; else nothing.
std::optional<DurableName> DurableNameOf(std::string_view id);

// Drive.Status and Drive.FailurePredicted from the CIM figures.
struct DriveCondition {
  std::optional<std::string_view> state;   // "Enabled", "Disabled", "UnavailableOffline"
  std::optional<std::string_view> health;  // "OK", "Warning", "Critical"
  bool failurePredicted = false;
};

DriveCondition ConditionOf(std::uint16_t operationalStatus, std::uint16_t healthState);

// Drive.MediaType of a CIM DiskType.
std::string_view MediaTypeOf(std::uint16_t diskType);

// Drive.Protocol of a CIM InterconnectType and the NAS interface name: 4
// "SATA", 5 "SAS"; for 1 (other) the interface name itself when it is one of
// the Redfish words "NVMe", "USB", "PCIe", "FC", else nothing.
std::optional<std::string_view> ProtocolOf(std::uint16_t interconnectType,
                                           std::string_view interfaceType);

// Everything a Drive resource shows of one disk.
struct DriveValues {
  std::string name;          // Name: the disk identifier (ZEDA_DiskDrive.Name)
  std::string model;         // Model
  std::string manufacturer;  // Manufacturer
  std::string serialNumber;  // SerialNumber
  std::string revision;      // Revision: the firmware version
  std::uint64_t capacityBytes = 0;
  std::string_view mediaType;
  std::optional<std::string_view> protocol;
  std::uint32_t rotationSpeedRpm = 0;
  std::optional<DurableName> durableName;
  DriveCondition condition;
  // PredictedMediaLifeLeftPercent, only when known (no CIM class shows it)
  std::optional<std::uint32_t> mediaLifeLeftPercent;
};

// `mediaLifeLeftPercent` is what the library knows beside the NAS API
// records (platform/MediaLife.h); shown as it is, never above 100.
DriveValues DriveValuesOf(const zeda::orvi::OrviDisk& disk,
                          const zeda::orvi::OrviDiskHealth& health,
                          const zeda::orvi::OrviDiskIdentity& identity,
                          std::optional<std::uint32_t> mediaLifeLeftPercent = std::nullopt);

// One primordial pool as a Swordfish StoragePool shows it.
struct PoolValues {
  int number = 0;                    // 1 free, 2 data, 3 spare, 4 cache
  std::string id;                    // Id: the CIM PoolID, "PrimordialPool1" ...
  std::string name;                  // Name: the CIM ElementName, "Free" ...
  std::uint64_t allocatedBytes = 0;  // Capacity.Data.AllocatedBytes: TotalManagedSpace
  std::uint64_t consumedBytes = 0;   // Capacity.Data.ConsumedBytes: Total - RemainingManagedSpace
};

// The pool `number` (1 to 4) with the CIM TotalManagedSpace `total`; throws
// std::out_of_range for another number.
PoolValues PoolValuesOf(int number, std::uint64_t total);

// The pool whose Id is `id`, 0 when none.
int PoolNumberOfId(std::string_view id);

}  // namespace zeda::redfish::model
