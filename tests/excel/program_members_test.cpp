// The list of what a spreadsheet program must have, held against what the adapter calls.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>

#include "automation_server/class.h"
#include "automation_server/classes.h"
#include "automation_server/member.h"
#include "program_members.h"

namespace mirelo::testing {
namespace {

namespace fs = std::filesystem;
using Members = std::map<std::string, std::set<std::string>>;  // by the class; "Value =" where it is assigned

const fs::path kSources = fs::path(MIRELO_SOURCE_DIR) / "src";

// The names that clients know of the port's classes.
std::map<std::string, std::string> NamesOfClasses() {
  const std::regex head(R"(^class (\w+) : public )");
  const std::regex type_name(R"re(TypeName\(\) const override \{ return "(\w+)")re");
  std::map<std::string, std::string> names;
  for (const auto& header : fs::directory_iterator(kSources / "host/excel")) {
    std::ifstream lines(header.path());
    std::string shown;
    std::smatch found;
    for (std::string line; std::getline(lines, line);) {
      if (std::regex_search(line, found, head)) shown = found[1];
      if (std::regex_search(line, found, type_name)) names[shown] = found[1];
    }
  }
  return names;
}

Members CalledMembers() {
  const std::regex head(R"(^class \w+ : public LateOf<host::excel::(\w+)>)");
  const std::regex call(R"re(\b(Get|Let)\("(\w+)")re");
  const auto names = NamesOfClasses();
  Members members;
  for (const auto& source : fs::directory_iterator(kSources / "adapters/excel")) {
    if (source.path().extension() != ".cpp") continue;
    std::ifstream lines(source.path());
    std::string shown;
    std::smatch found;
    for (std::string line; std::getline(lines, line);) {
      if (std::regex_search(line, found, head)) shown = names.at(found[1]);
      for (std::sregex_iterator each(line.begin(), line.end(), call), end; each != end; ++each) {
        members[shown].insert((*each)[2].str() + ((*each)[1] == "Let" ? " =" : ""));
      }
    }
  }
  for (auto& [name, called] : members) {  // who assigns a member need not be told that it is read
    for (auto each = called.begin(); each != called.end();) {
      each = called.count(*each + " =") != 0 ? called.erase(each) : std::next(each);
    }
  }
  return members;
}

Members NamesInTheList() {
  Members names;
  for (const auto& [shown, members] : ListedMembers()) {
    for (const auto& [name, member] : members) names[shown].insert(name + (member.is_assigned ? " =" : ""));
  }
  return names;
}

TEST(MembersOfASpreadsheetProgram, AreThoseThatAreCalled) {
  const Members called = CalledMembers();
  const Members listed = NamesInTheList();
  ASSERT_EQ(called.size(), 28U) << "both collections of sheets are one class";
  EXPECT_EQ(listed.size(), called.size());
  for (const auto& [name, members] : called) {
    SCOPED_TRACE(name);
    ASSERT_TRUE(listed.count(name));
    EXPECT_EQ(listed.at(name), members);
  }
}

// What stands in for a program has as a method what its documentation calls one.
TEST(MembersOfASpreadsheetProgram, AreOfTheirKindsInTheStandInToo) {
  using automation_server::Member;
  for (const auto& [shown, members] : ListedMembers()) {
    const automation_server::Class* const known = automation_server::ClassNamed(shown);
    ASSERT_NE(known, nullptr) << shown;
    for (const auto& [name, member] : members) {
      const auto id = known->Find(name);
      ASSERT_TRUE(id) << shown << "." << name;
      EXPECT_EQ(known->At(*id).kind == Member::Kind::kMethod, member.is_method) << shown << "." << name;
    }
  }
}

TEST(MembersOfASpreadsheetProgram, AreAssignedOnlyAsProperties) {
  for (const auto& [shown, members] : ListedMembers()) {
    for (const auto& [name, member] : members) {
      EXPECT_FALSE(member.is_method && member.is_assigned) << shown << "." << name;
      EXPECT_TRUE(member.is_method || !member.results.empty()) << shown << "." << name;
    }
  }
}

}  // namespace
}  // namespace mirelo::testing
