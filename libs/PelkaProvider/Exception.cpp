#include "Exception.h"

namespace zeda::pelka {

Exception::Exception(const std::string& message) : message_(message) {}

Exception::~Exception() = default;

const char* Exception::what() const noexcept { return message_.c_str(); }

ProviderException::ProviderException(const std::string& message)
    : Exception(message), status_(CMPI_RC_ERR_INVALID_PARAMETER, message) {}

ProviderException::ProviderException(const ProviderException& other)
    : Exception(other), status_(other.status_) {}

ProviderException::~ProviderException() = default;

}  // namespace zeda::pelka
