// Error bodies carrying one message of the DMTF Base message registry.
#include <map>
#include <string>

#include <nlohmann/json.hpp>

#include "Reply.h"

namespace zeda::redfish {

namespace {

// The registry version whose messages are quoted below.
constexpr char kBaseRegistry[] = "Base.1.19.0.";

struct BaseMessage {
  const char* text;  // %1, %2 ... stand for the arguments
  const char* severity;
  const char* resolution;
};

// The messages this service answers with, worded as the registry words them.
const std::map<std::string_view, BaseMessage>& Messages() {
  static const std::map<std::string_view, BaseMessage> messages = {
      {"ResourceNotFound",
       {"The requested resource of type %1 named '%2' was not found.", "Critical",
        "Provide a valid resource identifier and resubmit the request."}},
      {"OperationNotAllowed",
       {"The HTTP method is not allowed on this resource.", "Critical", "None."}},
      {"NoValidSession",
       {"There is no valid session established with the implementation.", "Critical",
        "Establish a session before attempting any operations."}},
      {"InsufficientPrivilege",
       {"There are insufficient privileges for the account or credentials associated with the "
        "current session to perform the requested operation.",
        "Critical",
        "Either abandon the operation or change the associated access rights and resubmit the "
        "request if the operation failed."}},
      {"GeneralError",
       {"A general error has occurred.  See Resolution for information on how to resolve the "
        "error, or @Message.ExtendedInfo if Resolution is not provided.",
        "Critical", "None."}},
      {"MalformedJSON",
       {"The request body submitted was malformed JSON and could not be parsed by the receiving "
        "service.",
        "Critical", "Ensure that the request body is valid JSON and resubmit the request."}},
      {"PropertyMissing",
       {"The property %1 is a required property and must be included in the request.", "Warning",
        "Ensure that the property is in the request body and has a valid value and resubmit the "
        "request if the operation failed."}},
      {"PropertyValueTypeError",
       {"The value '%1' for the property %2 is not a type that the property can accept.", "Warning",
        "Correct the value for the property in the request body and resubmit the request if the "
        "operation failed."}},
      {"SessionLimitExceeded",
       {"The session establishment failed due to the number of simultaneous sessions exceeding "
        "the limit of the implementation.",
        "Critical",
        "Reduce the number of other sessions before trying to establish the session or increase "
        "the limit of simultaneous sessions, if supported."}},
      {"ServiceTemporarilyUnavailable",
       {"The service is temporarily unavailable.  Retry in %1 seconds.", "Critical",
        "Wait for the indicated retry duration and retry the operation."}},
      {"ResourceAtUriUnauthorized",
       {"While accessing the resource at '%1', the service received an authorization error "
        "'%2'.",
        "Critical",
        "Ensure that the appropriate access is provided for the service in order for "
        "it to access the URI."}},
      {"InternalError",
       {"The request failed due to an internal service error.  The service is still "
        "operational.",
        "Critical",
        "Resubmit the request.  If the problem persists, consider resetting the service."}},
  };
  return messages;
}

std::string Worded(const char* text, const std::vector<std::string>& args) {
  std::string out;
  for (const char* c = text; *c != '\0'; ++c) {
    if (*c == '%' && c[1] >= '1' && c[1] <= '9') {
      const auto index = static_cast<std::size_t>(c[1] - '1');
      out += index < args.size() ? args[index] : std::string();
      ++c;
    } else {
      out += *c;
    }
  }
  return out;
}

}  // namespace

Reply ErrorReply(int status, std::string_view messageId, std::vector<std::string> args) {
  const auto& messages = Messages();
  auto found = messages.find(messageId);
  if (found == messages.end()) found = messages.find("GeneralError");
  const BaseMessage& message = found->second;
  const std::string id = kBaseRegistry + std::string(found->first);
  const std::string text = Worded(message.text, args);
  // A JSON array of strings: arguments that are not valid UTF-8 (they come
  // from request paths) are written with replacement characters.
  nlohmann::ordered_json info = {{"@odata.type", "#Message.v1_1_2.Message"},
                                 {"MessageId", id},
                                 {"Message", text},
                                 {"MessageArgs", args},
                                 {"MessageSeverity", message.severity},
                                 {"Resolution", message.resolution}};
  const nlohmann::ordered_json body = {
      {"error",
       {{"code", id},
        {"message", text},
        {"@Message.ExtendedInfo", nlohmann::ordered_json::array({info})}}}};
  Reply reply;
  reply.status = status;
  reply.body = body.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
  return reply;
}

}  // namespace zeda::redfish
