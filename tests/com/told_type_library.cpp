#include "com/told_type_library.h"

#include <map>
#include <optional>

#include "automation/text.h"
#include "automation_server/constants.h"

namespace mirelo::testing {

using automation_server::Class;
using automation_server::EventMember;
using automation_server::Member;
using automation_server::MemberId;
using automation_server::Parameter;
using automation_server::ValueType;

namespace {

// --- Out of the library ----------------------------------------------------------------------------------

std::string TypeIn(ITypeInfo& information, const TYPEDESC& type) {
  static const std::map<VARTYPE, std::string> names{
      {VT_VOID, "nothing"},    {VT_VARIANT, "variant"}, {VT_I2, "integer"},   {VT_I4, "long"},
      {VT_R4, "single"},       {VT_R8, "double"},       {VT_BOOL, "boolean"}, {VT_BSTR, "text"},
      {VT_DISPATCH, "object"}, {VT_UNKNOWN, "unknown"}};
  if (type.vt == VT_PTR) return TypeIn(information, *type.lptdesc) + "*";
  if (type.vt != VT_USERDEFINED) return names.contains(type.vt) ? names.at(type.vt) : std::to_string(type.vt);
  Held<ITypeInfo> referred;
  com::Require(information.GetRefTypeInfo(type.hreftype, referred.Place<ITypeInfo**>()));
  return NameIn(*referred.get());
}

std::string ParameterIn(ITypeInfo& information, const ELEMDESC& parameter) {
  const PARAMDESC& told = parameter.paramdesc;
  std::string text = (told.wParamFlags & PARAMFLAG_FOUT) != 0 ? "in out " : "in ";
  if ((told.wParamFlags & PARAMFLAG_FIN) == 0) text = "not " + text;
  text += TypeIn(information, parameter.tdesc);
  if ((told.wParamFlags & PARAMFLAG_FHASDEFAULT) != 0)
    return text + " = " + com::FromClient(told.pparamdescex->varDefaultValue).ToText();
  return (told.wParamFlags & PARAMFLAG_FOPT) != 0 ? text + " = " : text;
}

std::string KindOf(INVOKEKIND kind) {
  switch (kind) {
    case INVOKE_PROPERTYGET:
      return "get";
    case INVOKE_PROPERTYPUT:
      return "put";
    case INVOKE_PROPERTYPUTREF:
      return "putref";
    default:
      return "call";
  }
}

std::string FunctionIn(ITypeInfo& information, const FUNCDESC& function) {
  std::vector<std::string> parameters;
  for (SHORT i = 0; i < function.cParams; ++i)
    parameters.push_back(ParameterIn(information, function.lprgelemdescParam[i]));
  return std::to_string(function.memid) + " " + KindOf(function.invkind) + " " +
         NameIn(information, function.memid) + "(" + Join(parameters, ", ") + ") " +
         TypeIn(information, function.elemdescFunc.tdesc) +
         ((function.wFuncFlags & FUNCFLAG_FRESTRICTED) != 0 ? " restricted" : "");
}

// --- Out of the tables -----------------------------------------------------------------------------------

std::string TypeOf(ValueType type, const std::type_info* of) {
  static const std::map<ValueType, std::string> names{
      {ValueType::kNothing, "nothing"}, {ValueType::kVariant, "variant"}, {ValueType::kInteger, "integer"},
      {ValueType::kLong, "long"},       {ValueType::kSingle, "single"},   {ValueType::kDouble, "double"},
      {ValueType::kBoolean, "boolean"}, {ValueType::kText, "text"},       {ValueType::kObject, "object"},
      {ValueType::kArray, "variant"}};
  if (of == nullptr) return names.at(type);
  for (const auto& list : automation_server::ConstantLists()) {
    if (list.type == *of) return std::string(list.name);
  }
  for (const Class& table : automation_server::Classes()) {
    if (table.IsCreatable() && table.type() == *of) return "_" + std::string(table.name()) + "*";
  }
  return names.at(type);
}

std::vector<std::string> ParametersOf(const std::vector<Parameter>& parameters) {
  std::vector<std::string> told;
  for (const Parameter& parameter : parameters) {
    std::string text = parameter.by_reference ? "in out " : "in ";
    text += TypeOf(parameter.type, parameter.of) + (parameter.by_reference ? "*" : "");
    if (parameter.default_value) text += " = " + parameter.default_value->ToText();
    told.push_back(text);
  }
  return told;
}

std::string Function(MemberId id, const std::string& kind, std::string_view name,
                     const std::vector<std::string>& parameters, const std::string& result) {
  return std::to_string(id) + " " + kind + " " + std::string(name) + "(" + Join(parameters, ", ") + ") " +
         result;
}

void AddFunctions(const Member& member, MemberId id, TypeLines& lines) {
  if (member.kind == Member::Kind::kEnumeration) {
    lines.push_back(Function(DISPID_NEWENUM, "get", member.name, {}, "unknown restricted"));
    return;
  }
  if (member.is_default) id = DISPID_VALUE;
  const std::vector<std::string> parameters = ParametersOf(member.parameters);
  const std::string type = TypeOf(member.type, member.of);
  if (member.kind == Member::Kind::kMethod) {
    lines.push_back(Function(id, "call", member.name, parameters, type));
    return;
  }
  if (member.get) lines.push_back(Function(id, "get", member.name, parameters, type));
  std::vector<std::string> with_value = parameters;
  with_value.push_back("in " + type);
  if (member.let) lines.push_back(Function(id, "put", member.name, with_value, "nothing"));
  if (member.set) lines.push_back(Function(id, "putref", member.name, with_value, "nothing"));
}

}  // namespace

std::string NameIn(ITypeInfo& information, MEMBERID member) {
  BSTR told = nullptr;
  com::Require(information.GetDocumentation(member, &told, nullptr, nullptr, nullptr));
  std::string name = com::TextOf(told);
  ::SysFreeString(told);
  return name;
}

TypeLines FunctionsIn(ITypeInfo& information) {
  TypeLines lines;
  for (UINT i = 0;; ++i) {
    FUNCDESC* function = nullptr;
    if (FAILED(information.GetFuncDesc(i, &function))) return lines;
    lines.push_back(FunctionIn(information, *function));
    information.ReleaseFuncDesc(function);
  }
}

TypeLines FunctionsOf(const Class& table) {
  TypeLines lines;
  MemberId id = 0;
  for (const Member& member : table.members()) AddFunctions(member, ++id, lines);
  if (!table.events().empty()) {
    lines.push_back(Function(0x10000, "call", "AddListener", {"in object"}, "nothing"));
    lines.push_back(Function(0x10001, "call", "RemoveListener", {"in object"}, "nothing"));
  }
  return lines;
}

TypeLines EventFunctionsOf(const Class& table) {
  TypeLines lines;
  MemberId id = 0;
  for (const EventMember& event : table.events())
    lines.push_back(Function(++id, "call", event.name, ParametersOf(event.parameters), "nothing"));
  return lines;
}

std::vector<std::pair<std::string, std::int32_t>> ConstantsIn(ITypeInfo& information) {
  std::vector<std::pair<std::string, std::int32_t>> constants;
  for (UINT i = 0;; ++i) {
    VARDESC* constant = nullptr;
    if (FAILED(information.GetVarDesc(i, &constant))) return constants;
    constants.emplace_back(NameIn(information, constant->memid),
                           com::FromClient(*constant->lpvarValue).ToInt32());
    information.ReleaseVarDesc(constant);
  }
}

}  // namespace mirelo::testing
