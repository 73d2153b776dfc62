#include "com/type_information.h"

#include <map>
#include <string>

#include "com/text.h"

namespace mirelo::com {

namespace {

Held<ITypeInfo> MadeTypeInformation(std::string_view class_name) {
  std::wstring name = WideText(class_name);
  Held<ICreateTypeLib2> library;
  // The file is never written.
  if (FAILED(::CreateTypeLib2(SYS_WIN64, L"Mirelo.tlb", library.Place<ICreateTypeLib2**>()))) return {};
  Held<ICreateTypeInfo> made;
  if (FAILED(library->CreateTypeInfo(name.data(), TKIND_DISPATCH, made.Place<ICreateTypeInfo**>()))) return {};
  return Asked<ITypeInfo>(made.get(), IID_ITypeInfo);
}

}  // namespace

Held<ITypeInfo> NamedTypeInformation(std::string_view class_name) {
  // Never taken down: clients may ask until the process ends.
  static auto& known = *new std::map<std::string, Held<ITypeInfo>, std::less<>>;
  const auto found = known.find(class_name);
  if (found != known.end()) return found->second;
  return known.emplace(class_name, MadeTypeInformation(class_name)).first->second;
}

}  // namespace mirelo::com
