// Drives one request through an MI's function table.
#pragma once

#include "broker.hpp"
#include "request.hpp"
#include "zeda/host/result_sink.hpp"

namespace zeda::host::detail {

// Calls the MI function for req.op with a fresh result, the request's
// object path (and arguments) made in a scope of its own, and ctx. The
// results go to sink in order; the outcome holds the returned status, the
// done flag and the errors. A function missing from the table answers
// CMPI_RC_ERR_NOT_SUPPORTED. C++ exceptions thrown by the provider are not
// caught here.
Outcome drive(Broker& broker, void* mi, const Request& req, const CMPIContext* ctx,
              ResultSink& sink);

}  // namespace zeda::host::detail
