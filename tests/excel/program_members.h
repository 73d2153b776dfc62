#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "automation/variant.h"

namespace mirelo::testing {

// What the documentation of a spreadsheet program tells of one of its members.
struct ProgramMember {
  bool is_method = false;
  bool is_assigned = false;
  std::vector<std::string>
      results;  // the types that it may answer with; none for a method that answers nothing

  // Whether a program may answer so.
  bool Gives(const Variant& value) const;
};

// The list of src/adapters/excel/program_members.txt, by the class and the name.
using ProgramMembers = std::map<std::string, std::map<std::string, ProgramMember, std::less<>>, std::less<>>;
const ProgramMembers& ListedMembers();

}  // namespace mirelo::testing
