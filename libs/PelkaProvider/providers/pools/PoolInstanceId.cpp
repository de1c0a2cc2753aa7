#include "providers/pools/PoolInstanceId.h"

#include "providers/common/TextOps.h"

namespace zeda::pelka {

namespace {

// Length of ":PrimordialPool", the text between the last ":" and the number.
constexpr std::size_t kNumberOffset = 15;

}  // namespace

PoolInstanceIdParts ParsePoolInstanceId(const std::string& instanceId) {
  const std::size_t last = instanceId.rfind(':');
  const std::size_t first = instanceId.find(':');
  PoolInstanceIdParts parts;
  parts.systemName = text::Substr(instanceId, 0, last);
  parts.nasName = text::Substr(instanceId, first + 1, last - first - 1);
  parts.poolNumber = text::Stoi(text::Substr(instanceId, last + kNumberOffset));
  return parts;
}

}  // namespace zeda::pelka
