// Sizes and numeric values of the CMPI 2.0 data types: type codes, value
// states, return codes and the other enumerations that cross the boundary
// between object manager and module as plain numbers.

#include <cmpidt.h>

#include <gtest/gtest.h>

#include <cstddef>

namespace zeda::test {
namespace {

TEST(CmpiDataTypes, ScalarSizes) {
  EXPECT_EQ(sizeof(CMPIBoolean), 1u);
  EXPECT_EQ(sizeof(CMPIChar16), 2u);
  EXPECT_EQ(sizeof(CMPIUint8), 1u);
  EXPECT_EQ(sizeof(CMPIUint16), 2u);
  EXPECT_EQ(sizeof(CMPIUint32), 4u);
  EXPECT_EQ(sizeof(CMPIUint64), 8u);
  EXPECT_EQ(sizeof(CMPISint8), 1u);
  EXPECT_EQ(sizeof(CMPISint16), 2u);
  EXPECT_EQ(sizeof(CMPISint32), 4u);
  EXPECT_EQ(sizeof(CMPISint64), 8u);
  EXPECT_EQ(sizeof(CMPIReal32), 4u);
  EXPECT_EQ(sizeof(CMPIReal64), 8u);
  EXPECT_EQ(sizeof(CMPICount), 4u);
  EXPECT_EQ(sizeof(CMPIType), 2u);
  EXPECT_EQ(sizeof(CMPIValueState), 2u);
  EXPECT_EQ(sizeof(CMPIFlags), 4u);
  EXPECT_EQ(sizeof(CMPIVersion), 4u);
  EXPECT_EQ(sizeof(CMPIrc), 4u);
  EXPECT_EQ(sizeof(CMPIMsgFileHandle), sizeof(void*));
}

TEST(CmpiDataTypes, SignednessFollowsTheCimTypes) {
  EXPECT_LT(static_cast<CMPISint8>(-1), 0);
  EXPECT_LT(static_cast<CMPISint64>(-1), 0);
  EXPECT_GT(static_cast<CMPIUint8>(-1), 0);
  EXPECT_GT(static_cast<CMPIUint64>(-1), 0u);
  EXPECT_GT(static_cast<CMPIType>(-1), 0);
}

TEST(CmpiDataTypes, ValueDataAndStatusLayout) {
  EXPECT_EQ(offsetof(CMPIValuePtr, ptr), 0u);
  EXPECT_EQ(offsetof(CMPIValuePtr, length), 8u);
  EXPECT_EQ(sizeof(CMPIValuePtr), 16u);
  // The union is as large as its largest member, the value pointer.
  EXPECT_EQ(sizeof(CMPIValue), 16u);
  EXPECT_EQ(alignof(CMPIValue), 8u);
  EXPECT_EQ(offsetof(CMPIData, type), 0u);
  EXPECT_EQ(offsetof(CMPIData, state), 2u);
  EXPECT_EQ(offsetof(CMPIData, value), 8u);
  EXPECT_EQ(sizeof(CMPIData), 24u);
  EXPECT_EQ(offsetof(CMPIStatus, rc), 0u);
  EXPECT_EQ(offsetof(CMPIStatus, msg), 8u);
  EXPECT_EQ(sizeof(CMPIStatus), 16u);
}

TEST(CmpiDataTypes, ValueMembersShareOneAddress) {
  CMPIValue value{};
  const void* base = &value;
  EXPECT_EQ(static_cast<const void*>(&value.uint64), base);
  EXPECT_EQ(static_cast<const void*>(&value.string), base);
  EXPECT_EQ(static_cast<const void*>(&value.chars), base);
  EXPECT_EQ(static_cast<const void*>(&value.dataPtr), base);
  EXPECT_EQ(static_cast<const void*>(&value.Long), base);
}

TEST(CmpiDataTypes, SimpleTypeCodes) {
  EXPECT_EQ(CMPI_null, 0);
  EXPECT_EQ(CMPI_SIMPLE, 2);
  EXPECT_EQ(CMPI_boolean, 2);
  EXPECT_EQ(CMPI_char16, 3);
  EXPECT_EQ(CMPI_REAL, 8);
  EXPECT_EQ(CMPI_real32, 8);
  EXPECT_EQ(CMPI_real64, 12);
  EXPECT_EQ(CMPI_UINT, 128);
  EXPECT_EQ(CMPI_uint8, 128);
  EXPECT_EQ(CMPI_uint16, 144);
  EXPECT_EQ(CMPI_uint32, 160);
  EXPECT_EQ(CMPI_uint64, 176);
  EXPECT_EQ(CMPI_SINT, 192);
  EXPECT_EQ(CMPI_sint8, 192);
  EXPECT_EQ(CMPI_sint16, 208);
  EXPECT_EQ(CMPI_sint32, 224);
  EXPECT_EQ(CMPI_sint64, 240);
  EXPECT_EQ(CMPI_INTEGER, 192);
}

TEST(CmpiDataTypes, EncapsulatedTypeCodes) {
  EXPECT_EQ(CMPI_ENC, 0x1000);
  EXPECT_EQ(CMPI_instance, 0x1000);
  EXPECT_EQ(CMPI_ref, 0x1100);
  EXPECT_EQ(CMPI_args, 0x1200);
  EXPECT_EQ(CMPI_class, 0x1300);
  EXPECT_EQ(CMPI_filter, 0x1400);
  EXPECT_EQ(CMPI_enumeration, 0x1500);
  EXPECT_EQ(CMPI_string, 0x1600);
  EXPECT_EQ(CMPI_chars, 0x1700);
  EXPECT_EQ(CMPI_dateTime, 0x1800);
  EXPECT_EQ(CMPI_ptr, 0x1900);
  EXPECT_EQ(CMPI_charsptr, 0x1A00);
}

TEST(CmpiDataTypes, ArrayTypeCodes) {
  EXPECT_EQ(CMPI_ARRAY, 0x2000);
  EXPECT_EQ(CMPI_SIMPLEA, 0x2002);
  EXPECT_EQ(CMPI_booleanA, 0x2002);
  EXPECT_EQ(CMPI_char16A, 0x2003);
  EXPECT_EQ(CMPI_REALA, 0x2008);
  EXPECT_EQ(CMPI_real32A, 0x2008);
  EXPECT_EQ(CMPI_real64A, 0x200C);
  EXPECT_EQ(CMPI_UINTA, 0x2080);
  EXPECT_EQ(CMPI_uint8A, 0x2080);
  EXPECT_EQ(CMPI_uint16A, 0x2090);
  EXPECT_EQ(CMPI_uint32A, 0x20A0);
  EXPECT_EQ(CMPI_uint64A, 0x20B0);
  EXPECT_EQ(CMPI_SINTA, 0x20C0);
  EXPECT_EQ(CMPI_sint8A, 0x20C0);
  EXPECT_EQ(CMPI_sint16A, 0x20D0);
  EXPECT_EQ(CMPI_sint32A, 0x20E0);
  EXPECT_EQ(CMPI_sint64A, 0x20F0);
  EXPECT_EQ(CMPI_INTEGERA, 0x20C0);
  EXPECT_EQ(CMPI_ENCA, 0x3000);
  EXPECT_EQ(CMPI_instanceA, 0x3000);
  EXPECT_EQ(CMPI_refA, 0x3100);
  EXPECT_EQ(CMPI_stringA, 0x3600);
  EXPECT_EQ(CMPI_charsA, 0x3700);
  EXPECT_EQ(CMPI_dateTimeA, 0x3800);
  EXPECT_EQ(CMPI_charsptrA, 0x3A00);
}

TEST(CmpiDataTypes, KeyAndPredicateTypeCodes) {
  EXPECT_EQ(CMPI_keyInteger, CMPI_sint64);
  EXPECT_EQ(CMPI_keyString, CMPI_string);
  EXPECT_EQ(CMPI_keyBoolean, CMPI_boolean);
  EXPECT_EQ(CMPI_keyRef, CMPI_ref);
  EXPECT_EQ(CMPI_charString, 0x1600);
  EXPECT_EQ(CMPI_integerString, 0x16F0);
  EXPECT_EQ(CMPI_realString, 0x160C);
  EXPECT_EQ(CMPI_numericString, 0x16FC);
  EXPECT_EQ(CMPI_booleanString, 0x1602);
  EXPECT_EQ(CMPI_dateTimeString, 0x1E00);
  EXPECT_EQ(CMPI_classNameString, 0x1700);
  EXPECT_EQ(CMPI_nameString, 0x1E00);
}

TEST(CmpiDataTypes, ValueStates) {
  EXPECT_EQ(CMPI_goodValue, 0);
  EXPECT_EQ(CMPI_nullValue, 0x0100);
  EXPECT_EQ(CMPI_keyValue, 0x0200);
  EXPECT_EQ(CMPI_notFound, 0x0400);
  EXPECT_EQ(CMPI_badValue, 0x8000);
}

TEST(CmpiDataTypes, ReturnCodes) {
  EXPECT_EQ(CMPI_RC_OK, 0);
  EXPECT_EQ(CMPI_RC_ERR_FAILED, 1);
  EXPECT_EQ(CMPI_RC_ERR_ACCESS_DENIED, 2);
  EXPECT_EQ(CMPI_RC_ERR_INVALID_NAMESPACE, 3);
  EXPECT_EQ(CMPI_RC_ERR_INVALID_PARAMETER, 4);
  EXPECT_EQ(CMPI_RC_ERR_INVALID_CLASS, 5);
  EXPECT_EQ(CMPI_RC_ERR_NOT_FOUND, 6);
  EXPECT_EQ(CMPI_RC_ERR_NOT_SUPPORTED, 7);
  EXPECT_EQ(CMPI_RC_ERR_CLASS_HAS_CHILDREN, 8);
  EXPECT_EQ(CMPI_RC_ERR_CLASS_HAS_INSTANCES, 9);
  EXPECT_EQ(CMPI_RC_ERR_INVALID_SUPERCLASS, 10);
  EXPECT_EQ(CMPI_RC_ERR_ALREADY_EXISTS, 11);
  EXPECT_EQ(CMPI_RC_ERR_NO_SUCH_PROPERTY, 12);
  EXPECT_EQ(CMPI_RC_ERR_TYPE_MISMATCH, 13);
  EXPECT_EQ(CMPI_RC_ERR_QUERY_LANGUAGE_NOT_SUPPORTED, 14);
  EXPECT_EQ(CMPI_RC_ERR_INVALID_QUERY, 15);
  EXPECT_EQ(CMPI_RC_ERR_METHOD_NOT_AVAILABLE, 16);
  EXPECT_EQ(CMPI_RC_ERR_METHOD_NOT_FOUND, 17);
  EXPECT_EQ(CMPI_RC_DO_NOT_UNLOAD, 50);
  EXPECT_EQ(CMPI_RC_NEVER_UNLOAD, 51);
  EXPECT_EQ(CMPI_RC_ERR_INVALID_HANDLE, 60);
  EXPECT_EQ(CMPI_RC_ERR_INVALID_DATA_TYPE, 61);
  EXPECT_EQ(CMPI_RC_ERROR_SYSTEM, 100);
  EXPECT_EQ(CMPI_RC_ERROR, 200);
}

TEST(CmpiDataTypes, VersionsAndFlags) {
  EXPECT_EQ(CMPIVersion100, 100);
  EXPECT_EQ(CMPIVersion200, 200);
  EXPECT_EQ(CMPICurrentVersion, 200);
  EXPECT_EQ(CMPI_VERSION, 200);
  EXPECT_EQ(CMPI_FLAG_LocalOnly, 1);
  EXPECT_EQ(CMPI_FLAG_DeepInheritance, 2);
  EXPECT_EQ(CMPI_FLAG_IncludeQualifiers, 4);
  EXPECT_EQ(CMPI_FLAG_IncludeClassOrigin, 8);
}

TEST(CmpiDataTypes, ContextEntryNames) {
  EXPECT_STREQ(CMPIPrincipal, "CMPIPrincipal");
  EXPECT_STREQ(CMPIInvocationFlags, "CMPIInvocationFlags");
  EXPECT_STREQ(CMPIInitNameSpace, "CMPIInitNameSpace");
  EXPECT_STREQ(CMPIRole, "CMPIRole");
  EXPECT_STREQ(CMPIAcceptLanguage, "CMPIAcceptLanguage");
  EXPECT_STREQ(CMPIContentLanguage, "CMPIContentLanguage");
}

TEST(CmpiDataTypes, BrokerCapabilityMasks) {
  EXPECT_EQ(CMPI_MB_BasicRead, 0x1);
  EXPECT_EQ(CMPI_MB_BasicWrite, 0x3);
  EXPECT_EQ(CMPI_MB_InstanceManipulation, 0x7);
  EXPECT_EQ(CMPI_MB_AssociationTraversal, 0x9);
  EXPECT_EQ(CMPI_MB_QueryExecution, 0x11);
  EXPECT_EQ(CMPI_MB_QueryNormalization, 0x31);
  EXPECT_EQ(CMPI_MB_BasicQualifierSupport, 0x47);
  EXPECT_EQ(CMPI_MB_Indications, 0x81);
  EXPECT_EQ(CMPI_MB_OSEncapsulationSupport, 0x100);
  EXPECT_EQ(CMPI_MB_Supports_MemEnhancements, 0x4000);
  EXPECT_EQ(CMPI_MB_Supports_Extended_Error, 0x8000);
}

TEST(CmpiDataTypes, FeatureSupportFlags) {
  EXPECT_EQ(CMPI_MB_Supports_PropertyMI, 0x100);
  EXPECT_EQ(CMPI_MB_Supports_IndicationMI, 0x200);
  EXPECT_EQ(CMPI_MB_Supports_IndicationPolling, 0x400);
  EXPECT_EQ(CMPI_MB_Supports_QueryNormalization, 0x800);
  EXPECT_EQ(CMPI_MB_Supports_Qualifier, 0x1000);
  EXPECT_EQ(CMPI_MB_Supports_Schema, 0x3000);
}

TEST(CmpiDataTypes, PredicateOperatorsSeverityAndLevels) {
  EXPECT_EQ(CMPI_PredOp_Equals, 1);
  EXPECT_EQ(CMPI_PredOp_NotEquals, 2);
  EXPECT_EQ(CMPI_PredOp_LessThan, 3);
  EXPECT_EQ(CMPI_PredOp_GreaterThanOrEquals, 4);
  EXPECT_EQ(CMPI_PredOp_GreaterThan, 5);
  EXPECT_EQ(CMPI_PredOp_LessThanOrEquals, 6);
  EXPECT_EQ(CMPI_PredOp_Isa, 7);
  EXPECT_EQ(CMPI_PredOp_NotIsa, 8);
  EXPECT_EQ(CMPI_PredOp_Like, 9);
  EXPECT_EQ(CMPI_PredOp_NotLike, 10);
  EXPECT_EQ(CMPI_PredOp_Not_Null, 11);
  EXPECT_EQ(CMPI_PredOp_Null, 12);
  EXPECT_EQ(CMPI_PredOp_And, 13);
  EXPECT_EQ(CMPI_PredOp_Or, 14);
  EXPECT_EQ(CMPI_SEV_ERROR, 1);
  EXPECT_EQ(CMPI_SEV_INFO, 2);
  EXPECT_EQ(CMPI_SEV_WARNING, 3);
  EXPECT_EQ(CMPI_DEV_DEBUG, 4);
  EXPECT_EQ(CMPI_LEV_INFO, 1);
  EXPECT_EQ(CMPI_LEV_WARNING, 2);
  EXPECT_EQ(CMPI_LEV_VERBOSE, 3);
  EXPECT_EQ(CMPI_COND_DOC, 0);
  EXPECT_EQ(CMPI_COND_COD, 1);
}

TEST(CmpiDataTypes, ErrorEnumerations) {
  EXPECT_EQ(UnknownErrorType, 0);
  EXPECT_EQ(OtherErrorType, 1);
  EXPECT_EQ(CommunicationsError, 2);
  EXPECT_EQ(QualityOfServiceError, 3);
  EXPECT_EQ(SoftwareError, 4);
  EXPECT_EQ(HardwareError, 5);
  EXPECT_EQ(EnvironmentalError, 6);
  EXPECT_EQ(SecurityError, 7);
  EXPECT_EQ(Oversubscription_Error, 8);
  EXPECT_EQ(UnavailableResourceError, 9);
  EXPECT_EQ(UnsupportedOperationError, 10);

  EXPECT_EQ(ErrorSevUnknown, 0);
  EXPECT_EQ(ErrorSevLow, 2);
  EXPECT_EQ(ErrorSevMedium, 3);
  EXPECT_EQ(ErrorSevHigh, 4);
  EXPECT_EQ(ErrorSevFatal, 5);

  EXPECT_EQ(ErrorProbCauseUnknown, 0);
  EXPECT_EQ(ErrorProbCauseOther, 1);
  EXPECT_EQ(Adapter_Card_Error, 2);
  EXPECT_EQ(Disk_Failure, 86);
  EXPECT_EQ(Fan_Failure, 94);
  EXPECT_EQ(Timeout, 111);
  EXPECT_EQ(Unexpected_Information, 130);

  EXPECT_EQ(CMPIErrSrcUnknown, 0);
  EXPECT_EQ(CMPIErrSrcOther, 1);
  EXPECT_EQ(CIMObjectHandle, 2);
}

}  // namespace
}  // namespace zeda::test
