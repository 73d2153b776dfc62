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

Members ListedMembers() {
  Members members;
  std::ifstream lines(kSources / "adapters/excel/program_members.txt");
  std::string shown;
  for (std::string line; std::getline(lines, line);) {
    if (line.empty() || line.front() == '#') continue;
    if (line.front() != ' ') {
      shown = line;
    } else {
      members[shown].insert(line.substr(line.find_first_not_of(' ')));
    }
  }
  return members;
}

TEST(MembersOfASpreadsheetProgram, AreThoseThatAreCalled) {
  const Members called = CalledMembers();
  const Members listed = ListedMembers();
  ASSERT_EQ(called.size(), 27U) << "both collections of sheets are one class";
  EXPECT_EQ(listed.size(), called.size());
  for (const auto& [name, members] : called) {
    SCOPED_TRACE(name);
    ASSERT_TRUE(listed.count(name));
    EXPECT_EQ(listed.at(name), members);
  }
}

}  // namespace
}  // namespace mirelo::testing
