#pragma once

#include "com/client.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace mirelo::testing {

// What a type library tells, as lines to be compared.
using TypeLines = std::vector<std::string>;

// The name of a type, or of one of its members.
std::string NameIn(ITypeInfo& information, MEMBERID member = MEMBERID_NIL);

// The functions of an interface: "19 putref ExcelApplication(in variant) nothing",
// "21 call DownloadURL(in text, in text = 127.0.0.1) variant". Types that the library has itself go by their
// names.
TypeLines FunctionsIn(ITypeInfo& information);
// The same of a class's table, and of its events, as they should be in the library.
TypeLines FunctionsOf(const automation_server::Class& table);
TypeLines EventFunctionsOf(const automation_server::Class& table);

// The names and the numbers of an enumeration.
std::vector<std::pair<std::string, std::int32_t>> ConstantsIn(ITypeInfo& information);

}  // namespace mirelo::testing
