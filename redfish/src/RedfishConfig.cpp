#include "RedfishConfig.h"

#include <arpa/inet.h>

#include <cerrno>
#include <cmath>
#include <cstring>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include <nlohmann/json.hpp>

namespace zeda::redfish {

namespace {

using nlohmann::json;

struct Problem {
  std::string place;
  std::string text;
};

[[noreturn]] void Fail(const std::string& place, const std::string& text) {
  throw Problem{place, text};
}

std::string Text(const json& section, const char* member) {
  const std::string place = std::string("redfish.") + member;
  const json& value = section.at(member);
  if (!value.is_string()) Fail(place, "expected a string");
  std::string text = value.get<std::string>();
  if (text.empty()) Fail(place, "must not be empty");
  return text;
}

bool IsNumericAddress(const std::string& address) {
  unsigned char buffer[sizeof(in6_addr)];
  return inet_pton(AF_INET, address.c_str(), buffer) == 1 ||
         inet_pton(AF_INET6, address.c_str(), buffer) == 1;
}

RedfishConfig ParseSection(const json& document) {
  RedfishConfig config;
  if (!document.is_object()) Fail("(document)", "expected an object");
  if (document.contains("programData") && document.at("programData").is_string()) {
    config.programData = document.at("programData").get<std::string>();
  }
  std::string listen = kDefaultListen;
  if (document.contains("redfish")) {
    const json& section = document.at("redfish");
    if (!section.is_object()) Fail("redfish", "expected an object");
    for (const auto& member : section.items()) {
      const std::string& key = member.key();
      if (key != "listen" && key != "certificate" && key != "key" && key != "accounts" &&
          key != "requestsPerSecond") {
        Fail("redfish." + key, "unknown member");
      }
    }
    if (section.contains("listen")) listen = Text(section, "listen");
    if (section.contains("certificate")) config.certificate = Text(section, "certificate");
    if (section.contains("key")) config.key = Text(section, "key");
    if (config.certificate.empty() != config.key.empty()) {
      Fail(config.key.empty() ? "redfish.certificate" : "redfish.key",
           "\"certificate\" and \"key\" go together");
    }
    if (section.contains("accounts")) config.accounts = Text(section, "accounts");
    if (section.contains("requestsPerSecond")) {
      const json& rate = section.at("requestsPerSecond");
      if (!rate.is_number()) Fail("redfish.requestsPerSecond", "expected a number");
      config.requestsPerSecond = rate.get<double>();
      if (!std::isfinite(config.requestsPerSecond) || config.requestsPerSecond < 0 ||
          config.requestsPerSecond > 1e6) {
        Fail("redfish.requestsPerSecond", "must be between 0 (no limit) and 1000000");
      }
    }
  }
  if (!SplitListen(listen, config.address, config.port)) {
    Fail("redfish.listen",
         "expected \"ADDRESS:PORT\" with a numeric address and a port 1-65535, not \"" + listen +
             "\"");
  }
  return config;
}

}  // namespace

bool SplitListen(const std::string& listen, std::string& address, std::uint16_t& port) {
  const auto colon = listen.rfind(':');
  if (colon == std::string::npos || colon == 0) return false;
  std::string host = listen.substr(0, colon);
  const std::string digits = listen.substr(colon + 1);
  if (host.size() >= 2 && host.front() == '[' && host.back() == ']') {
    host = host.substr(1, host.size() - 2);
  } else if (host.find(':') != std::string::npos) {
    return false;  // an IPv6 address goes in brackets
  }
  if (digits.empty() || digits.size() > 5 ||
      digits.find_first_not_of("0123456789") != std::string::npos) {
    return false;
  }
  const unsigned long number = std::stoul(digits);
  if (number == 0 || number > 65535 || !IsNumericAddress(host)) return false;
  address = host;
  port = static_cast<std::uint16_t>(number);
  return true;
}

RedfishConfig ParseRedfishConfig(const std::string& jsonText, const std::string& fileName) {
  const std::string prefix = "Bad configuration file " + fileName + ": ";
  json document;
  try {
    document = json::parse(jsonText);
  } catch (const json::parse_error& error) {
    throw std::runtime_error(prefix + error.what());
  }
  try {
    return ParseSection(document);
  } catch (const Problem& problem) {
    throw std::runtime_error(prefix + problem.place + ": " + problem.text);
  }
}

RedfishConfig LoadRedfishConfig(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    throw std::runtime_error("Cannot read configuration file " + path + ": " +
                             std::strerror(errno));
  }
  std::ostringstream text;
  text << file.rdbuf();
  return ParseRedfishConfig(text.str(), path);
}

}  // namespace zeda::redfish
