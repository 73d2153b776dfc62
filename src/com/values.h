#pragma once

#include "com/system.h"

#include "automation/variant.h"

namespace mirelo::com {

// A variant of a client's world that is freed with what it holds.
class ClientValue {
 public:
  ClientValue() { ::VariantInit(&value_); }
  ~ClientValue() { ::VariantClear(&value_); }
  ClientValue(const ClientValue&) = delete;
  ClientValue& operator=(const ClientValue&) = delete;

  VARIANT& operator*() { return value_; }
  VARIANT* operator->() { return &value_; }
  VARIANT* get() { return &value_; }
  // Hands what it holds on to whoever frees it then, and is empty.
  VARIANT Release();

 private:
  VARIANT value_;
};

// A value as clients take it, in a variant that is empty before; it stays so when this fails. Objects are
// their dispatches (dispatch.h), foreign ones (foreign.h) themselves; arrays have their bounds.
void ToClient(const Variant& value, VARIANT& target);

// The value that a client passes, itself or by reference. Numbers of all sizes, currency, a missing value
// (empty), the errors of cells (their texts), and arrays of any of these are known. Objects of others are
// Foreign. Error 13 for what the classes have no use for: objects that cannot be called by names, structures,
// arrays of more than two dimensions.
Variant FromClient(const VARIANT& value);

// What a variant refers to through references to variants; itself where it is none. Error 5 for one that
// leads nowhere.
const VARIANT& Itself(const VARIANT& value);

// Puts a value where a client's reference is, in the reference's own type. Nothing for what is no reference.
// Error 13 or 6 for a value that has no conversion to that type, 10 for an array that cannot be replaced,
// being locked or of fixed size; what was there stays.
void WriteBack(const Variant& value, const VARIANT& reference);

}  // namespace mirelo::com
