// CmpiData: one typed CMPI value (type code, state, value), copied by value.
// Conversions check the type code and throw CmpiStatus(CMPI_RC_ERR_TYPE_MISMATCH)
// on a mismatch, so a provider never reads a union member of another type.
// A value made from an object the binding owns (a string made from text, a
// new array, path, instance or date-time) shares that ownership, so the
// object lives as long as the value or any copy of it (see CmpiOwner.h).
#ifndef ZEDA_CMPI_CMPIDATA_H
#define ZEDA_CMPI_CMPIDATA_H

#include <string>

#include "CmpiOwner.h"
#include "cmpift.h"

class CmpiString;
class CmpiArray;
class CmpiObjectPath;
class CmpiInstance;
class CmpiDateTime;

class CmpiData {
 public:
  CmpiData();  // a null value of type CMPI_null
  explicit CmpiData(const CMPIData& data) : data_(data) {}

  // Numbers. CMPIBoolean and CMPIUint8 are the same C type: booleans are made
  // with CmpiBooleanData.
  CmpiData(CMPIUint8 v);   // NOLINT(google-explicit-constructor)
  CmpiData(CMPISint8 v);   // NOLINT
  CmpiData(CMPIUint16 v);  // NOLINT
  CmpiData(CMPISint16 v);  // NOLINT
  CmpiData(CMPIUint32 v);  // NOLINT
  CmpiData(CMPISint32 v);  // NOLINT
  CmpiData(CMPIUint64 v);  // NOLINT
  CmpiData(CMPISint64 v);  // NOLINT
  CmpiData(CMPIReal32 v);  // NOLINT
  CmpiData(CMPIReal64 v);  // NOLINT
  // Text becomes a CMPI_string made through the broker of the current call.
  CmpiData(const char* text);         // NOLINT
  CmpiData(const std::string& text);  // NOLINT
  CmpiData(const CmpiString& s);      // NOLINT
  CmpiData(const CmpiArray& a);       // NOLINT
  CmpiData(const CmpiObjectPath& p);  // NOLINT (CMPI_ref)
  CmpiData(const CmpiInstance& i);    // NOLINT
  CmpiData(const CmpiDateTime& d);    // NOLINT

  CMPIType getType() const { return data_.type; }
  CMPIValueState getState() const { return data_.state; }
  bool isNullValue() const { return (data_.state & CMPI_nullValue) != 0; }
  bool isNotFound() const { return (data_.state & CMPI_notFound) != 0; }
  bool isKey() const { return (data_.state & CMPI_keyValue) != 0; }
  bool isArray() const { return (data_.type & CMPI_ARRAY) != 0; }

  operator CmpiString() const;      // NOLINT: CMPI_string (or CMPI_chars, copied)
  operator const char*() const;     // NOLINT: CMPI_string or CMPI_chars
  operator CmpiArray() const;       // NOLINT
  operator CmpiObjectPath() const;  // NOLINT
  operator CmpiInstance() const;    // NOLINT
  operator CmpiDateTime() const;    // NOLINT
  operator CMPIUint8() const;       // NOLINT (also accepts CMPI_boolean)
  operator CMPISint8() const;       // NOLINT
  operator CMPIUint16() const;      // NOLINT
  operator CMPISint16() const;      // NOLINT
  operator CMPIUint32() const;      // NOLINT
  operator CMPISint32() const;      // NOLINT
  operator CMPIUint64() const;      // NOLINT
  operator CMPISint64() const;      // NOLINT
  operator CMPIReal32() const;      // NOLINT
  operator CMPIReal64() const;      // NOLINT

  // Text of a string value as std::string (type checked like operator const char*).
  std::string getString() const;
  bool getBoolean() const;

  const CMPIData& getEnc() const { return data_; }
  CMPIValue* valuePtr() { return &data_.value; }
  const CMPIValue* valuePtr() const { return &data_.value; }

 private:
  // Hand over what an object manager keeps (see CmpiOwner.h).
  friend class CmpiArray;
  friend class CmpiArgs;
  friend class CmpiResult;
  void requireType(CMPIType type) const;

  CMPIData data_;
  CmpiOwner owner_;  // of the encapsulated value, when the binding made it
};

// A boolean value (CMPI_boolean); see the note on CMPIUint8 above.
class CmpiBooleanData : public CmpiData {
 public:
  explicit CmpiBooleanData(bool value);
};

#endif
