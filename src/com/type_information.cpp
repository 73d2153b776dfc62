#include "com/type_information.h"

#include <map>
#include <utility>

#include "automation/wide_text.h"
#include "com/class_ids.h"

namespace mirelo::com {

namespace {

// Never taken down: clients may ask until the process ends.
struct Known {
  std::wstring file;
  Held<ITypeLib> library;
  std::map<std::string, Held<ITypeInfo>, std::less<>> named;
};
Known& KnownTypes() {
  static Known& known = *new Known;
  return known;
}

Held<ITypeInfo> FromLibrary(const GUID& id) {
  const Held<ITypeLib> library = TypeLibrary();
  Held<ITypeInfo> information;
  if (id == GUID_NULL || !library) return {};
  if (FAILED(library->GetTypeInfoOfGuid(id, information.Place<ITypeInfo**>()))) return {};
  return information;
}

Held<ITypeInfo> MadeOfName(std::string_view class_name) {
  std::wstring name = WideText(class_name);
  Held<ICreateTypeLib2> library;
  // The file is never written.
  if (FAILED(::CreateTypeLib2(SYS_WIN64, L"Mirelo.tlb", library.Place<ICreateTypeLib2**>()))) return {};
  Held<ICreateTypeInfo> made;
  if (FAILED(library->CreateTypeInfo(name.data(), TKIND_DISPATCH, made.Place<ICreateTypeInfo**>())))
    return {};
  return Asked<ITypeInfo>(made.get(), IID_ITypeInfo);
}

Held<ITypeInfo> NamedInformation(std::string_view class_name) {
  auto& named = KnownTypes().named;
  const auto found = named.find(class_name);
  if (found != named.end()) return found->second;
  return named.emplace(class_name, MadeOfName(class_name)).first->second;
}

}  // namespace

void UseTypeLibraryOf(std::wstring file) {
  KnownTypes().file = std::move(file);
  KnownTypes().library = {};
}

Held<ITypeLib> TypeLibrary() {
  Known& known = KnownTypes();
  if (!known.library && !known.file.empty()) {
    // Loading registers nothing; who installs the library does.
    if (FAILED(::LoadTypeLibEx(known.file.c_str(), REGKIND_NONE, known.library.Place<ITypeLib**>())))
      known.library = {};
  }
  return known.library;
}

Held<ITypeInfo> InterfaceInformation(std::string_view class_name) {
  auto information = FromLibrary(InterfaceOf(class_name));
  return information ? information : NamedInformation(class_name);
}

Held<ITypeInfo> ClassInformation(std::string_view class_name) { return FromLibrary(ClassIdOf(class_name)); }

}  // namespace mirelo::com
