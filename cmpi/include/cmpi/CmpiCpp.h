// Convenience header: the whole C++ provider binding.
#ifndef ZEDA_CMPI_CMPICPP_H
#define ZEDA_CMPI_CMPICPP_H

#include "CmpiArgs.h"
#include "CmpiArray.h"
#include "CmpiAssociationMI.h"
#include "CmpiBaseMI.h"
#include "CmpiBroker.h"
#include "CmpiContext.h"
#include "CmpiData.h"
#include "CmpiDateTime.h"
#include "CmpiEnumeration.h"
#include "CmpiIndicationMI.h"
#include "CmpiInstance.h"
#include "CmpiInstanceMI.h"
#include "CmpiMethodMI.h"
#include "CmpiObjectPath.h"
#include "CmpiOwner.h"
#include "CmpiProviderBase.h"
#include "CmpiResult.h"
#include "CmpiSelectExp.h"
#include "CmpiStatus.h"
#include "CmpiString.h"

#endif
