// The two exception types providers throw. The provider base turns them into
// the status the object manager receives (see FailureWrapper.h).
#ifndef ZEDA_PELKA_EXCEPTION_H
#define ZEDA_PELKA_EXCEPTION_H

#include <exception>
#include <string>

#include <cmpi/CmpiStatus.h>

namespace zeda::pelka {

// A failure with a message; reaches the object manager as CMPI_RC_ERROR (200).
class Exception : public std::exception {
 public:
  explicit Exception(const std::string& message);
  ~Exception() override;
  const char* what() const noexcept override;

 private:
  std::string message_;
};

// A failure caused by the request; always CMPI_RC_ERR_INVALID_PARAMETER (4)
// with the message as the status text.
class ProviderException : public Exception {
 public:
  explicit ProviderException(const std::string& message);
  ProviderException(const ProviderException& other);
  ~ProviderException() override;

  const CmpiStatus& status() const { return status_; }

 private:
  CmpiStatus status_;
};

}  // namespace zeda::pelka

#endif
