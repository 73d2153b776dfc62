#include "automation_server/interface_text.h"

#include <cstdint>
#include <cstdio>
#include <map>
#include <typeinfo>
#include <vector>

#include "automation/text.h"
#include "automation_server/class.h"
#include "automation_server/classes.h"
#include "automation_server/constants.h"
#include "automation_server/member.h"

namespace mirelo::testing {
namespace {

using automation_server::Class;
using automation_server::Constant;
using automation_server::ConstantList;
using automation_server::EventMember;
using automation_server::Member;
using automation_server::MemberId;
using automation_server::Parameter;
using automation_server::ValueType;

constexpr const char* kHead =
    R"(// What clients of Windows can know of the classes before they make one: members, arguments, events. It is compiled into
// Mirelo.dll. Written from the tables of src/automation_server by `write_interfaces`, and held to them by a test; when a
// table changes, write it again:
//
//   build/dev/bin/write_interfaces >src/windows/mirelo.idl

typedef short VARIANT_BOOL;
typedef wchar_t *BSTR;
typedef struct tagVARIANT { long held; } VARIANT;
[object, local, uuid(00000000-0000-0000-C000-000000000046)]
interface IUnknown {}
[object, local, uuid(00020400-0000-0000-C000-000000000046)]
interface IDispatch : IUnknown {}

)";

// The kinds of numbers that stand behind the common ones, as in com/class_ids.
constexpr int kClass = 0x3F;
constexpr int kEvents = 0x40;
constexpr int kInterface = 0x41;
constexpr int kLibrary = 0x42;
constexpr int kConstants = 0x43;

std::string Id(int kind, int number) {
  char text[48];
  std::snprintf(text, sizeof(text), "uuid(0416BE29-8C0D-4093-B284-CCB1AD1F%02X%02X)", kind, number);
  return text;
}

std::string TypeOf(ValueType type) {
  static const std::map<ValueType, std::string> names{
      {ValueType::kNothing, "void"},         {ValueType::kVariant, "VARIANT"},
      {ValueType::kInteger, "short"},        {ValueType::kLong, "long"},
      {ValueType::kSingle, "float"},         {ValueType::kDouble, "double"},
      {ValueType::kBoolean, "VARIANT_BOOL"}, {ValueType::kText, "BSTR"},
      {ValueType::kObject, "IDispatch*"},    {ValueType::kArray, "VARIANT"}};
  return names.at(type);
}

// A class that clients can make is known by its interface, one that they are only handed by none.
std::string TypeOf(ValueType type, const std::type_info* of) {
  if (of == nullptr) return TypeOf(type);
  for (const ConstantList& list : automation_server::ConstantLists()) {
    if (list.type == *of) return "enum " + std::string(list.name);
  }
  for (const Class& table : automation_server::Classes()) {
    if (table.IsCreatable() && table.type() == *of) return "_" + std::string(table.name()) + "*";
  }
  return TypeOf(type);
}

std::string DefaultOf(const Variant& value) {
  return value.IsText() ? "\"" + value.ToText() + "\"" : value.ToText();
}

// A name that is a word of the language gets a line behind it.
std::string NameOf(const Parameter& parameter) {
  return parameter.name == "default" ? "default_" : std::string(parameter.name);
}

std::string Told(const Parameter& parameter) {
  std::string marks = parameter.by_reference ? "in, out" : "in";
  std::string type = TypeOf(parameter.type, parameter.of) + (parameter.by_reference ? "*" : "");
  if (parameter.default_value) {
    marks += ", optional";
    if (parameter.type != ValueType::kVariant)
      marks += ", defaultvalue(" + DefaultOf(*parameter.default_value) + ")";
  }
  return "[" + marks + "] " + type + " " + NameOf(parameter);
}

std::string Told(const std::vector<Parameter>& parameters) {
  std::vector<std::string> told;
  for (const Parameter& parameter : parameters) told.push_back(Told(parameter));
  return Join(told, ", ");
}

std::string Line(const std::string& marks, const std::string& result, std::string_view name,
                 const std::string& parameters) {
  return "      [" + marks + "] " + result + " " + std::string(name) + "(" + parameters + ");\n";
}

std::string MarkOfNumber(const Member& member, MemberId id) {
  if (member.is_default) return "id(0)";
  return "id(" + std::to_string(id) + ")";
}

std::string Assigning(const Member& member, const std::string& marks) {
  std::string parameters = Told(member.parameters);
  if (!parameters.empty()) parameters += ", ";
  return Line(marks, "void", member.name, parameters + "[in] " + TypeOf(member.type, member.of) + " value");
}

std::string Told(const Member& member, MemberId id) {
  if (member.kind == Member::Kind::kEnumeration)
    return "      [id(-4), propget, restricted] IUnknown* " + std::string(member.name) + "();\n";
  const std::string number = MarkOfNumber(member, id);
  if (member.kind == Member::Kind::kMethod)
    return Line(number, TypeOf(member.type, member.of), member.name, Told(member.parameters));
  std::string lines;
  if (member.get)
    lines += Line(number + ", propget", TypeOf(member.type, member.of), member.name, Told(member.parameters));
  if (member.let) lines += Assigning(member, number + ", propput");
  if (member.set) lines += Assigning(member, number + ", propputref");
  return lines;
}

std::string Constants(const ConstantList& list, int number) {
  std::vector<std::string> told;
  for (const Constant& constant : list.constants)
    told.push_back("    " + std::string(constant.name) + " = " + std::to_string(constant.value));
  return "  [" + Id(kConstants, number) + "]\n  enum " + std::string(list.name) + " {\n" + Join(told, ",\n") +
         "\n  };\n";
}

std::string Interface(const Class& table, int number) {
  std::string text = "  [" + Id(kInterface, number) + "]\n  dispinterface _" + std::string(table.name()) +
                     " {\n    properties:\n    methods:\n";
  MemberId id = 0;
  for (const Member& member : table.members()) text += Told(member, ++id);
  if (!table.events().empty()) {
    text += "      [id(0x10000)] void AddListener([in] IDispatch* listener);\n";
    text += "      [id(0x10001)] void RemoveListener([in] IDispatch* listener);\n";
  }
  return text + "  }\n";
}

std::string Events(const Class& table, int number) {
  if (table.events().empty()) return {};
  std::string text = "  [" + Id(kEvents, number) + "]\n  dispinterface _" + std::string(table.name()) +
                     "Events {\n    properties:\n    methods:\n";
  int place = 0;
  for (const EventMember& event : table.events())
    text += Line("id(" + std::to_string(++place) + ")", "void", event.name, Told(event.parameters));
  return text + "  }\n";
}

std::string CoClass(const Class& table, int number) {
  const std::string name(table.name());
  std::string text = "  [" + Id(kClass, number) + "]\n  coclass " + name +
                     " {\n    [default] dispinterface _" + name + ";\n";
  if (!table.events().empty()) text += "    [default, source] dispinterface _" + name + "Events;\n";
  return text + "  }\n";
}

}  // namespace

std::string InterfaceText() {
  std::string text = kHead;
  text +=
      "[" + Id(kLibrary, 1) + ", version(1.0), helpstring(\"Mirelo download library\")]\nlibrary Mirelo {\n";
  int number = 0;
  for (const ConstantList& list : automation_server::ConstantLists()) text += Constants(list, ++number);
  // Members tell of classes that come later.
  for (const Class& table : automation_server::Classes()) {
    if (table.IsCreatable()) text += "  dispinterface _" + std::string(table.name()) + ";\n";
  }
  number = 0;
  for (const Class& table : automation_server::Classes()) {
    if (!table.IsCreatable()) continue;
    ++number;
    text += Interface(table, number) + Events(table, number) + CoClass(table, number);
  }
  return text + "}\n";
}

}  // namespace mirelo::testing
