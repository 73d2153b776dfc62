// The names that routines push on the call stack, read off src/: reports and traces tell people where a
// failure was by these texts alone, and no compiler compares them with the functions that they stand in.

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>

#include "support/file_text.h"

namespace mirelo {
namespace {

namespace fs = std::filesystem;

const fs::path kRoutinesSource = fs::path(MIRELO_SOURCE_DIR) / "src";

// Bases of the settings dialog: their routines report under the name by which clients call them.
const std::set<std::string> kBasesOfTheDialog{"TableNames", "VariantArrays"};

// The last member function whose definition begins in the text, as "Class.Function".
std::string LastFunctionIn(const std::string& text) {
  static const std::regex kDefinition(R"(\n[^\s/#}][^\n]*?(\w+)::(\w+)\([^\n]*)");
  std::string last;
  for (std::sregex_iterator at(text.begin(), text.end(), kDefinition), end; at != end; ++at) {
    const std::string owner = (*at)[1];
    last = (kBasesOfTheDialog.contains(owner) ? "frmMirelo" : owner) + "." + (*at)[2].str();
  }
  return last;
}

// How often each routine's name is pushed, by the name without the library's.
std::map<std::string, int> CountPushedNames() {
  static const std::regex kName(R"re([({]\s*"Mirelo\.(\w+\.\w+)",)re");
  std::map<std::string, int> names;
  for (const auto& entry : fs::recursive_directory_iterator(kRoutinesSource)) {
    if (entry.path().extension() != ".cpp") continue;
    const std::string text = testing::TextOfFile(entry.path());
    for (std::sregex_iterator at(text.begin(), text.end(), kName), end; at != end; ++at) {
      const std::string name = (*at)[1];
      ++names[name];
      EXPECT_EQ(LastFunctionIn(text.substr(0, static_cast<std::size_t>(at->position()))), name)
          << entry.path();
    }
  }
  return names;
}

const std::map<std::string, int>& PushedNames() {
  static const std::map<std::string, int> names = CountPushedNames();  // reading all of src/ takes a while
  return names;
}

TEST(Routines, PushTheNameOfTheFunctionThatTheyAre) { EXPECT_FALSE(PushedNames().empty()); }

TEST(Routines, AreNinetySixWithNamesOfTheirOwn) {
  const std::map<std::string, int>& names = PushedNames();
  EXPECT_EQ(names.size(), 96U);
  for (const auto& [name, count] : names) EXPECT_EQ(count, 1) << name;
}

TEST(Routines, AreOfTheFacadeTheTwoDialogsAndTheStream) {
  std::map<std::string, int> routines;
  for (const auto& [name, count] : PushedNames()) ++routines[name.substr(0, name.find('.'))];
  const std::map<std::string, int> expected{
      {"cMirelo", 8}, {"frmMirelo", 81}, {"frmColor", 6}, {"cQTStreaming", 1}};
  EXPECT_EQ(routines, expected);
}

}  // namespace
}  // namespace mirelo
