// The service root, the OData service document and $metadata: the
// documents that describe the service rather than the inventory.
#pragma once

#include <string>

namespace zeda::redfish::model {

// The service root: Id "RootService", the Redfish version, a UUID stable per
// configuration (ServiceUuid), links to Systems, SessionService,
// AccountService and Links.Sessions.
std::string ServiceRootBody();

// The UUID of this service: a name-based (SHA-1) UUID of the configuration
// file the library reads (PELKA_CONFIG, else /etc/pelka/pelka.json) and the
// program-data folder, so it stays the same across restarts of one
// configuration and differs between configurations.
std::string ServiceUuid();

// /redfish/v1/odata: the service's top-level resources.
std::string ODataServiceBody();

// /redfish/v1/$metadata: CSDL referencing the published schema of every
// resource type the service answers (Schemas.h).
std::string MetadataBody();

}  // namespace zeda::redfish::model
