#include "Resources.h"

#include <exception>
#include <memory>
#include <optional>
#include <vector>

#include <glog/logging.h>

#include "inventory/Library.h"
#include "model/Drive.h"
#include "model/DriveMapping.h"
#include "model/IndexCache.h"
#include "model/Paths.h"
#include "model/ServiceRoot.h"
#include "model/StoragePools.h"
#include "model/Systems.h"

namespace zeda::redfish {

namespace {

using model::InventoryIndex;
using model::NasIndex;

constexpr std::string_view kPrefix = "/redfish/v1/";

// The segments of a path after /redfish/v1/, or nothing when the path does
// not start so. One trailing "/" is allowed; an empty segment stays in the
// list, so "a//b" is refused by the routes.
std::optional<std::vector<std::string_view>> SegmentsOf(std::string_view path) {
  if (path.substr(0, kPrefix.size()) != kPrefix) return std::nullopt;
  std::string_view rest = path.substr(kPrefix.size());
  if (!rest.empty() && rest.back() == '/') rest.remove_suffix(1);
  std::vector<std::string_view> segments;
  while (true) {
    const std::size_t slash = rest.find('/');
    segments.push_back(rest.substr(0, slash));
    if (slash == std::string_view::npos) break;
    rest.remove_prefix(slash + 1);
  }
  return segments;
}

// A client's path as it may stand in a log line: printable ASCII as it is,
// any other byte as \xHH.
std::string Printable(std::string_view path) {
  static constexpr char kHex[] = "0123456789abcdef";
  std::string out;
  for (const char c : path) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x20 && byte < 0x7f && c != '\\') {
      out += c;
    } else {
      out += "\\x";
      out += kHex[byte >> 4];
      out += kHex[byte & 0x0f];
    }
  }
  return out;
}

Reply NotFound(std::string_view type, std::string_view id) {
  return ErrorReply(404, "ResourceNotFound", {std::string(type), std::string(id)});
}

Reply Body(std::string body) {
  Reply reply;
  reply.body = std::move(body);
  return reply;
}

// Below /redfish/v1/Systems/{nas}/Storage/1/StoragePools: `rest` starts
// with the pool's Id.
Reply PoolResource(const std::shared_ptr<const InventoryIndex>& index, const NasIndex& nas,
                   const std::vector<std::string_view>& rest) {
  if (rest.empty()) return model::PoolCollectionReply(nas);
  const int pool = model::PoolNumberOfId(rest[0]);
  if (pool == 0) return NotFound("StoragePool", rest[0]);
  if (rest.size() == 1) return model::PoolReply(nas, pool);
  if (rest[1] != "CapacitySources") return NotFound("StoragePool", rest[1]);
  if (rest.size() == 2) return NotFound("CapacitySourceCollection", rest[1]);
  if (rest[2] != "1") return NotFound("CapacitySource", rest[2]);
  if (rest.size() == 3) return model::CapacitySourceReply(nas, pool);
  if (rest.size() == 4 && rest[3] == "ProvidingDrives") {
    return model::ProvidingDrivesReply(index, nas, pool);
  }
  return NotFound("CapacitySource", rest[3]);
}

// Below /redfish/v1/Systems/{nas}/Storage/1: `rest` follows the Storage Id.
Reply StorageResource(const std::shared_ptr<const InventoryIndex>& index, const NasIndex& nas,
                      const std::vector<std::string_view>& rest) {
  if (rest.empty()) return model::StorageReply(index, nas);
  if (rest[0] == "StoragePools") return PoolResource(index, nas, {rest.begin() + 1, rest.end()});
  if (rest[0] != "Drives" || rest.size() == 1) return NotFound("Storage", rest[0]);
  const std::size_t position = nas.FindDisk(rest[1]);
  if (position == nas.disks.size() || rest.size() > 2 || nas.nas == nullptr) {
    return NotFound("Drive", rest[1]);
  }
  return model::DriveReply(nas, position, zeda::pelka::GetOrvi(*nas.nas));
}

// Below /redfish/v1/Systems: `rest` follows "Systems".
Reply SystemsResource(const std::vector<std::string_view>& rest) {
  const std::shared_ptr<const InventoryIndex> index = model::ServiceIndexCache().Current();
  if (rest.empty()) return model::SystemCollectionReply(index);
  const NasIndex* nas = index->FindNas(rest[0]);
  if (nas == nullptr) return NotFound("ComputerSystem", rest[0]);
  if (rest.size() == 1) return model::SystemReply(*nas);
  if (rest[1] != "Storage") return NotFound("ComputerSystem", rest[1]);
  if (rest.size() == 2) return model::StorageCollectionReply(*nas);
  if (rest[2] != model::kStorageId) return NotFound("Storage", rest[2]);
  return StorageResource(index, *nas, {rest.begin() + 3, rest.end()});
}

}  // namespace

bool IsInventoryPath(std::string_view path) {
  const auto segments = SegmentsOf(path);
  if (!segments) return false;
  const std::string_view first = (*segments)[0];
  return (first == "$metadata" || first == "odata") ? segments->size() == 1 : first == "Systems";
}

Reply GetResource(std::string_view path) {
  const auto segments = SegmentsOf(path);
  if (!segments) return NotFound("Resource", path);
  const std::string_view first = (*segments)[0];
  if (segments->size() == 1 && first == "$metadata") {
    Reply reply = Body(model::MetadataBody());
    reply.headers.emplace_back("Content-Type", "application/xml");
    return reply;
  }
  if (segments->size() == 1 && first == "odata") return Body(model::ODataServiceBody());
  if (first != "Systems") return NotFound("Resource", path);
  try {
    // Everything this request reads of the inventory stays valid until the
    // reply is made; a streamed reply reads only the index.
    const zeda::pelka::InventoryHold hold;
    return SystemsResource({segments->begin() + 1, segments->end()});
  } catch (const std::exception& e) {
    LOG(ERROR) << "Redfish: GET " << Printable(path) << ": " << e.what();
    return ErrorReply(500, "InternalError", {});
  }
}

std::string ServiceRootBody() { return model::ServiceRootBody(); }

}  // namespace zeda::redfish
