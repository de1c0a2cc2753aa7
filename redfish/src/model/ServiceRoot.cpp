#include "model/ServiceRoot.h"

#include <cstdlib>

#include <boost/uuid/name_generator_sha1.hpp>
#include <boost/uuid/uuid_io.hpp>

#include "inventory/Library.h"
#include "model/Json.h"
#include "model/Paths.h"
#include "model/Schemas.h"

namespace zeda::redfish::model {

namespace {

// The version of the Redfish protocol the service follows.
constexpr char kRedfishVersion[] = "1.18.0";
// The namespace of the service UUIDs of this product (made once, at random).
constexpr boost::uuids::uuid kUuidNamespace = {{0x5e, 0x6c, 0x1d, 0x1f, 0x0f, 0x9b, 0x4f, 0x6e,
                                                0x9d, 0x55, 0x2a, 0x3c, 0x41, 0x7b, 0x60, 0x2e}};

Json ODataSingleton(const char* name, const char* url) {
  Json entry = Json::object();
  entry["name"] = name;
  entry["kind"] = "Singleton";
  entry["url"] = url;
  return entry;
}

}  // namespace

std::string ServiceUuid() {
  const char* config = std::getenv("PELKA_CONFIG");
  const std::string name = std::string(config != nullptr ? config : "/etc/pelka/pelka.json") +
                           '\n' + zeda::pelka::util::GetProgramDataPath();
  const boost::uuids::name_generator_sha1 generator(kUuidNamespace);
  return boost::uuids::to_string(generator(name));
}

std::string ServiceRootBody() {
  Json root = Json::object();
  root["@odata.id"] = kServiceRootPath;
  root["@odata.type"] = type::kServiceRoot;
  root["Id"] = "RootService";
  root["Name"] = "Root Service";
  root["RedfishVersion"] = kRedfishVersion;
  root["UUID"] = ServiceUuid();
  root["Product"] = "ZEDA_DiskDriveLite";
  root["Systems"] = Link(kSystemsPath);
  root["SessionService"] = Link("/redfish/v1/SessionService");
  root["AccountService"] = Link("/redfish/v1/AccountService");
  root["Links"]["Sessions"] = Link("/redfish/v1/SessionService/Sessions");
  return Dumped(root);
}

std::string ODataServiceBody() {
  Json document = Json::object();
  document["@odata.context"] = "/redfish/v1/$metadata";
  document["value"] = Json::array({
      ODataSingleton("Service", "/redfish/v1/"),
      ODataSingleton("Systems", kSystemsPath),
      ODataSingleton("SessionService", "/redfish/v1/SessionService"),
      ODataSingleton("AccountService", "/redfish/v1/AccountService"),
      ODataSingleton("Sessions", "/redfish/v1/SessionService/Sessions"),
  });
  return Dumped(document);
}

std::string MetadataBody() {
  std::string xml =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<edmx:Edmx xmlns:edmx=\"http://docs.oasis-open.org/odata/ns/edmx\" Version=\"4.0\">\n";
  for (const SchemaUse& schema : kSchemas) {
    xml += "  <edmx:Reference Uri=\"";
    xml += schema.uri;
    xml += "\">\n    <edmx:Include Namespace=\"";
    xml += schema.ns;
    xml += "\"/>\n";
    if (*schema.version != '\0') {
      xml += "    <edmx:Include Namespace=\"";
      xml += schema.version;
      xml += "\"/>\n";
    }
    xml += "  </edmx:Reference>\n";
  }
  xml +=
      "  <edmx:DataServices>\n"
      "    <Schema xmlns=\"http://docs.oasis-open.org/odata/ns/edm\" Namespace=\"Service\">\n"
      "      <EntityContainer Name=\"Service\" Extends=\"ServiceRoot.v1_16_0.ServiceContainer\"/>\n"
      "    </Schema>\n"
      "  </edmx:DataServices>\n"
      "</edmx:Edmx>\n";
  return xml;
}

}  // namespace zeda::redfish::model
