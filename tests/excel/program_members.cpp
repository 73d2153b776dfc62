#include "program_members.h"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace mirelo::testing {
namespace {

// "Name() as Type or Type", "Name = as Type"
ProgramMember MemberIn(const std::string& line, std::string& name) {
  ProgramMember member;
  std::istringstream words(line);
  words >> name;
  if (name.ends_with("()")) {
    member.is_method = true;
    name.resize(name.size() - 2);
  }
  for (std::string word; words >> word;) {
    if (word == "=") {
      member.is_assigned = true;
    } else if (word != "as" && word != "or") {
      member.results.push_back(word);
    }
  }
  return member;
}

ProgramMembers ReadMembers() {
  ProgramMembers members;
  std::ifstream lines(MIRELO_SOURCE_DIR "/src/adapters/excel/program_members.txt");
  std::string shown;
  for (std::string line; std::getline(lines, line);) {
    if (line.empty() || line.front() == '#') continue;
    if (line.front() != ' ') {
      shown = line;
      continue;
    }
    std::string name;
    const ProgramMember member = MemberIn(line, name);
    members[shown][name] = member;
  }
  return members;
}

bool IsPlain(std::string_view type) {
  return type == "Boolean" || type == "Double" || type == "Long" || type == "String";
}

bool IsOf(const Variant& value, std::string_view type) {
  if (type == "Variant") return true;
  if (IsPlain(type) || !value.IsObject()) return value.TypeName() == type;
  return value.AsObject() == nullptr || type == "Object" || value.TypeName() == type;
}

}  // namespace

bool ProgramMember::Gives(const Variant& value) const {
  if (results.empty()) return value.IsEmpty();
  return std::ranges::any_of(results, [&](const std::string& type) { return IsOf(value, type); });
}

const ProgramMembers& ListedMembers() {
  static const ProgramMembers members = ReadMembers();
  return members;
}

}  // namespace mirelo::testing
