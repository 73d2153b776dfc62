// The tests that docs/promises.md names, read off the page, and looked for in tests/: a promise that is held
// by no test any more must not stand there.

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <iterator>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "support/file_text.h"

namespace mirelo {
namespace {

namespace fs = std::filesystem;

const fs::path kRoot = MIRELO_SOURCE_DIR;

std::vector<std::smatch> MatchesIn(const std::string& text, const std::regex& pattern) {
  return {std::sregex_iterator(text.begin(), text.end(), pattern), std::sregex_iterator()};
}

// What stands at the beginnings of lines that say what a test is: expressions are slow, and most lines are
// none.
std::vector<std::smatch> MatchesAtLines(const std::string& text, const std::string& first_word,
                                        const std::regex& pattern) {
  std::vector<std::smatch> matches;
  for (std::size_t at = text.find("\n" + first_word); at != std::string::npos;
       at = text.find("\n" + first_word, at + 1)) {
    std::smatch match;
    const auto line = text.begin() + static_cast<std::ptrdiff_t>(at) + 1;
    if (std::regex_search(line, text.end(), match, pattern, std::regex_constants::match_continuous)) {
      matches.push_back(match);
    }
  }
  return matches;
}

// The names of a source's tests, as suite and test; those with cases without what names the case, and those
// of every loop without its name.
std::set<std::string> TestsIn(const std::string& source) {
  static const std::regex kTest(R"((TEST|TEST_F|TYPED_TEST|TEST_P)\((\w+),\s*(\w+)\))");
  static const std::regex kCases(R"(INSTANTIATE_TEST_SUITE_P\((\w+),\s*(\w+),)");
  static const std::regex kEveryLoop(R"(INSTANTIATE_WITH_EVERY_LOOP\((\w+)\))");
  std::set<std::string> names;
  const auto cases = MatchesAtLines(source, "INSTANTIATE_", kCases);
  const auto every_loop = MatchesAtLines(source, "INSTANTIATE_", kEveryLoop);
  for (const char* word : {"TEST", "TYPED_TEST"}) {
    for (const auto& test : MatchesAtLines(source, word, kTest)) {
      const std::string name = test[2].str() + "." + test[3].str();
      if (test[1] != "TEST_P") names.insert(name);
      for (const auto& instance : cases) {
        if (test[1] == "TEST_P" && instance[2] == test[2]) names.insert(instance[1].str() + "/" + name);
      }
      for (const auto& suite : every_loop) {
        if (test[1] == "TEST_P" && suite[1] == test[2]) names.insert(name);
      }
    }
  }
  return names;
}

// The names of all tests, read off the programs' lists of sources.
std::set<std::string> AllTests() {
  static const std::regex kProgram(R"(mirelo_test\((\w+)\s+(?:QT\s+)?SOURCES\s+([^)]*))");
  static const std::regex kSource(R"([\w/.]+\.cpp)");
  std::set<std::string> names;
  for (const auto& entry : fs::recursive_directory_iterator(kRoot / "tests")) {
    if (entry.path().filename() != "CMakeLists.txt") continue;
    const std::string lists = testing::TextOfFile(entry.path());
    for (const auto& program : MatchesIn(lists, kProgram)) {
      const std::string sources = program[2];
      for (const auto& source : MatchesIn(sources, kSource)) {
        const std::string text = testing::TextOfFile(entry.path().parent_path() / source[0].str());
        for (const auto& name : TestsIn(text)) names.insert(program[1].str() + "." + name);
      }
    }
  }
  return names;
}

// The rows of the page's tables, without their headers.
std::vector<std::string> RowsOf(const std::string& page) {
  static const std::regex kRow(R"(\n(\|[^\n]*\|))");
  std::vector<std::string> rows;
  for (const auto& row : MatchesIn(page, kRow)) {
    if (!row[1].str().starts_with("| Fault |") && !row[1].str().starts_with("| --- |"))
      rows.push_back(row[1]);
  }
  return rows;
}

TEST(Promises, NameTestsThatThereAre) {
  static const std::regex kName(R"(`(\w+\.[\w/]+\.\w+)`)");
  const std::set<std::string> tests = AllTests();
  ASSERT_GT(tests.size(), 2000U);
  const std::string page = testing::TextOfFile(kRoot / "docs/promises.md");
  const std::vector<std::string> rows = RowsOf(page);
  EXPECT_GT(rows.size(), 25U);
  for (const std::string& row : rows) {
    const std::string held_by = row.substr(row.rfind("| ", row.size() - 3));
    const auto names = MatchesIn(held_by, kName);
    EXPECT_FALSE(names.empty()) << "no test holds the promise " << row;
    for (const auto& name : names) EXPECT_EQ(tests.count(name[1]), 1U) << "there is no test " << name[1];
  }
}

}  // namespace
}  // namespace mirelo
