// The inventory resources of the service: $metadata, the OData service
// document, Systems and everything below it (one ComputerSystem per NAS, its
// Storage, Drives and StoragePools). The server authenticates the client,
// splits off the query and percent-decodes the path before calling here.
#pragma once

#include <string>
#include <string_view>

#include "Reply.h"

namespace zeda::redfish {

// Whether `path` belongs to the resources answered here: /redfish/v1/$metadata,
// /redfish/v1/odata and /redfish/v1/Systems with everything below it.
bool IsInventoryPath(std::string_view path);

// The answer to GET of `path`. Every path that names no resource, or names
// one with an odd segment (empty, ".", "..", a character outside the ones
// Ids.h allows), answers ErrorReply(404, "ResourceNotFound", {type, id});
// a failure of the inventory library answers 500 "InternalError" and logs
// one ERROR line. $metadata answers XML (a Content-Type header in `headers`).
Reply GetResource(std::string_view path);

// The body of the service root (/redfish/v1), for the server to answer.
std::string ServiceRootBody();

}  // namespace zeda::redfish
