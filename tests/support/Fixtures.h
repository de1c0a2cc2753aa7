// The shared fixtures of the tests in one include.
#ifndef ZEDA_TESTS_SUPPORT_FIXTURES_H
#define ZEDA_TESTS_SUPPORT_FIXTURES_H

#include "ExpectedValues.h"
#include "Instances.h"
#include "InventoryJson.h"
#include "ModuleHost.h"
#include "ModulePaths.h"
#include "Names.h"
#include "NasTrace.h"
#include "TempDir.h"
#include "ZedaCim.h"

#endif
