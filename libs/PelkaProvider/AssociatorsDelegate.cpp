#include "AssociatorsDelegate.h"

#include <boost/format.hpp>

#include "CmpiKeys.h"
#include "Exception.h"
#include "PelkaProvider.h"

namespace zeda::pelka {

AssociatorsDelegate::ClassHandler::~ClassHandler() = default;

// Members are destroyed in reverse order: the second handler, then the first.
AssociatorsDelegate::~AssociatorsDelegate() = default;

void AssociatorsDelegate::setHandlers(std::unique_ptr<ClassHandler> first,
                                      std::unique_ptr<ClassHandler> second) {
  first_ = std::move(first);
  second_ = std::move(second);
}

CmpiStatus AssociatorsDelegate::operator()(const CmpiContext& ctx, CmpiResult& rslt,
                                           const CmpiObjectPath& cop, const std::string& assocClass,
                                           const std::string& resultClass, const std::string& role,
                                           const std::string& resultRole, const char** properties) {
  // The request must name this association exactly; an absent (empty) or
  // differently cased name is refused as well.
  const std::string& expected = owner()->className();
  if (assocClass != expected) {
    // ProviderException: answered as 4 (CMPI_RC_ERR_INVALID_PARAMETER).
    throw ProviderException(
        (boost::format("Wrong association class name: %1%; Expected: %2%") % assocClass % expected)
            .str());
  }
  if (!first_ || !second_) {
    // Exception: answered as 200 (CMPI_RC_ERROR).
    throw Exception("Null handler");
  }
  // Exact names only: a subclass of an endpoint class is not served.
  const std::string sourceClass = cmpi::GetClassName(cop);
  ClassHandler* handler = nullptr;
  if (sourceClass == first_->className()) {
    handler = first_.get();
  } else if (sourceClass == second_->className()) {
    handler = second_.get();
  } else {
    // ProviderException: answered as 4 (CMPI_RC_ERR_INVALID_PARAMETER).
    throw ProviderException("Unknown class name: " + sourceClass);
  }
  return (*handler)(ctx, rslt, cop, assocClass, resultClass, role, resultRole, properties);
}

}  // namespace zeda::pelka
