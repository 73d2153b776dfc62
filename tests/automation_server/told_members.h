#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "automation/text.h"
#include "automation_server/class.h"
#include "automation_server/classes.h"
#include "automation_server/member.h"

namespace mirelo::testing {

// A class's table as lines to be compared, a line a member: "Item(VarIndex variant) object, default",
// "Seconds: get long".
class ToldMembers {
 public:
  using Lines = std::vector<std::string>;

  static Lines MembersOf(const automation_server::Class& table) {
    Lines lines;
    for (const auto& member : table.members()) lines.push_back(Told(member));
    return lines;
  }
  static Lines MembersOf(std::string_view name) { return MembersOf(*automation_server::ClassNamed(name)); }

  static Lines EventsOf(std::string_view name) {
    Lines lines;
    for (const auto& event : automation_server::ClassNamed(name)->events()) {
      lines.push_back(std::string(event.name) + Told(event.parameters));
    }
    return lines;
  }

 private:
  static std::string NameOf(automation_server::ValueType type) {
    using automation_server::ValueType;
    static const std::map<ValueType, std::string> names{
        {ValueType::kNothing, ""},         {ValueType::kVariant, " variant"},
        {ValueType::kInteger, " integer"}, {ValueType::kLong, " long"},
        {ValueType::kSingle, " single"},   {ValueType::kDouble, " double"},
        {ValueType::kBoolean, " boolean"}, {ValueType::kText, " text"},
        {ValueType::kObject, " object"},   {ValueType::kArray, " array"}};
    return names.at(type);
  }

  static std::string Told(const std::vector<automation_server::Parameter>& parameters) {
    Lines told;
    for (const auto& parameter : parameters) {
      std::string text = parameter.by_reference ? "ref " : "";
      text.append(parameter.name).append(NameOf(parameter.type));
      if (parameter.default_value) text += " = " + parameter.default_value->ToText();
      told.push_back(text);
    }
    return "(" + Join(told, ", ") + ")";
  }

  static std::string Told(const automation_server::Member& member) {
    using automation_server::Member;
    std::string text(member.name);
    if (member.kind == Member::Kind::kProperty) {
      if (!member.parameters.empty()) text += Told(member.parameters);
      text += ":";
      if (member.get) text += " get";
      if (member.let) text += " let";
      if (member.set) text += " set";
    } else {
      text += Told(member.parameters);
    }
    text += NameOf(member.type);
    if (member.kind == Member::Kind::kEnumeration) text += ", enumerates";
    if (member.is_default) text += ", default";
    return text;
  }
};

}  // namespace mirelo::testing
