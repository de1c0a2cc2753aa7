// Everything of the in-process object manager in one include.
#pragma once

#include "zeda/host/format.hpp"
#include "zeda/host/host.hpp"
#include "zeda/host/instance.hpp"
#include "zeda/host/object_path.hpp"
#include "zeda/host/outcome.hpp"
#include "zeda/host/value.hpp"
#include "zeda/host/wbem_uri.hpp"
