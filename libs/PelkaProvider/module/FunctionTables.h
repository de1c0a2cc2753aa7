// The CMPI function tables and MI records the factories hand out. Each
// exported factory owns one MIExport: its table is filled once, by the first
// call of that factory, and points at the binding's static drivers in the
// order of the CMPI standard's table layout.
#ifndef ZEDA_PELKA_MODULE_FUNCTIONTABLES_H
#define ZEDA_PELKA_MODULE_FUNCTIONTABLES_H

#include <mutex>
#include <string>

#include <cmpi/CmpiAssociationMI.h>
#include <cmpi/CmpiBaseMI.h>
#include <cmpi/CmpiInstanceMI.h>

namespace zeda::pelka {

// Table and MI versions: CMPI 2.0.
inline constexpr CMPIVersion kFunctionTableVersion = CMPIVersion200;
inline constexpr int kMIVersion = CMPIVersion200;

struct InstanceKind {
  using Table = CMPIInstanceMIFT;
  using Record = CMPIInstanceMI;
  static constexpr const char* kWord = "instance";

  static void Fill(Table& table, const char* miName) {
    table.ftVersion = kFunctionTableVersion;
    table.miVersion = kMIVersion;
    table.miName = miName;
    table.cleanup = &CmpiBaseMI::driveBaseCleanup;
    table.enumerateInstanceNames = &CmpiInstanceMI::driveEnumInstanceNames;
    table.enumerateInstances = &CmpiInstanceMI::driveEnumInstances;
    table.getInstance = &CmpiInstanceMI::driveGetInstance;
    table.createInstance = &CmpiInstanceMI::driveCreateInstance;
    table.modifyInstance = &CmpiInstanceMI::driveSetInstance;
    table.deleteInstance = &CmpiInstanceMI::driveDeleteInstance;
    table.execQuery = &CmpiInstanceMI::driveExecQuery;
  }
};

struct AssociationKind {
  using Table = CMPIAssociationMIFT;
  using Record = CMPIAssociationMI;
  static constexpr const char* kWord = "association";

  static void Fill(Table& table, const char* miName) {
    table.ftVersion = kFunctionTableVersion;
    table.miVersion = kMIVersion;
    table.miName = miName;
    table.cleanup = &CmpiBaseMI::driveBaseCleanup;
    table.associators = &CmpiAssociationMI::driveAssociators;
    table.associatorNames = &CmpiAssociationMI::driveAssociatorNames;
    table.references = &CmpiAssociationMI::driveReferences;
    table.referenceNames = &CmpiAssociationMI::driveReferenceNames;
  }
};

// The statics of one exported factory: MI name, function table (empty until
// the first call fills it) and the MI record returned to the object manager.
template <class Kind>
struct MIExport {
  // `providerName` is the class name followed by "Provider"; the MI name is
  // the kind word glued to it ("instanceZEDA_DiskDriveProvider").
  explicit MIExport(const char* providerName) : miName(std::string(Kind::kWord) + providerName) {}
  MIExport(const MIExport&) = delete;
  MIExport& operator=(const MIExport&) = delete;

  // Fills the table on the first call only; safe against concurrent callers.
  void fillTableOnce() {
    std::call_once(filled, [this] { Kind::Fill(table, miName.c_str()); });
  }

  const std::string miName;
  std::once_flag filled;
  typename Kind::Table table{};
  typename Kind::Record record{};
};

}  // namespace zeda::pelka

#endif
