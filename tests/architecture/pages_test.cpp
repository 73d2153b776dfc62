// The paths and links that the pages tell of, looked for in the tree: a page that sends its reader to a file
// which was moved must not stand.

#include <fnmatch.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "support/file_text.h"

namespace mirelo {
namespace {

namespace fs = std::filesystem;

const fs::path kTree = MIRELO_SOURCE_DIR;

bool IsNotOfTheSources(const fs::path& folder) {
  return folder.filename() == "build" || folder.filename() == ".git" || folder.filename() == "__pycache__";
}

// Every file and folder, by each end of its path and with or without what follows the name's last point, so
// that "xlsx/origin" finds src/adapters/workbook/xlsx/origin.h. Whole paths begin with "./".
std::set<std::string> EndsOfPaths() {
  std::set<std::string> ends;
  for (auto entry = fs::recursive_directory_iterator(kTree); entry != fs::recursive_directory_iterator();
       ++entry) {
    if (entry->is_directory() && IsNotOfTheSources(entry->path())) {
      entry.disable_recursion_pending();
      continue;
    }
    std::string end = "./" + entry->path().lexically_relative(kTree).generic_string();
    while (true) {
      ends.insert(end);
      ends.insert(fs::path(end).replace_extension().generic_string());
      const std::size_t slash = end.find('/');
      if (slash == std::string::npos) break;
      end.erase(0, slash + 1);
    }
  }
  return ends;
}

// Words in capitals stand for others, as in "commands/NAME_command.*".
std::string PatternOf(const std::string& path) {
  static const std::regex kTemplate("[A-Z]{2,}");
  return std::regex_replace(path, kTemplate, "*");
}

// A path of a folder at the top must be whole; one within a room need not tell the rooms around it.
bool IsInTheTree(std::string path, const std::set<std::string>& ends) {
  if (path.ends_with('/')) path.pop_back();
  const std::string first = path.substr(0, path.find('/'));
  if (first != "." && fs::exists(kTree / first)) path = "./" + path;
  const std::string pattern = PatternOf(path);
  if (pattern == path && path.find('*') == std::string::npos) return ends.contains(path);
  return std::any_of(ends.begin(), ends.end(), [&pattern](const std::string& end) {
    return fnmatch(pattern.c_str(), end.c_str(), FNM_PATHNAME) == 0;
  });
}

// The names of tests have a point before their slash, and those of symbols have no small letter. What stands
// below build/ is made there.
bool IsAPath(const std::string& word) {
  if (word.find('/') == std::string::npos) return false;
  static const std::regex kPath(R"((\.|[\w-]+)(/[\w.*-]+)+/?)");
  const bool has_small_letter =
      std::any_of(word.begin(), word.end(), [](unsigned char c) { return std::islower(c) != 0; });
  const bool is_made = word.starts_with("build/") || word.starts_with("./build/");
  return has_small_letter && !is_made && std::regex_match(word, kPath);
}

// The words of a block that is shown as typed.
void TakeWords(const std::string& block, std::vector<std::string>& paths) {
  std::istringstream words(block);
  for (std::string word; words >> word;) {
    if (IsAPath(word)) paths.push_back(word);
  }
}

// What stands between single backticks on a line, up to a blank.
void TakeTyped(const std::string& prose, std::vector<std::string>& paths) {
  std::istringstream lines(prose);
  for (std::string line; std::getline(lines, line);) {
    for (std::size_t at = line.find('`'); at != std::string::npos;) {
      const std::size_t end = line.find('`', at + 1);
      if (end == std::string::npos) break;
      const std::string word = line.substr(at + 1, line.find_first_of(" `", at + 1) - at - 1);
      if (IsAPath(word)) paths.push_back(word);
      at = line.find('`', end + 1);
    }
  }
}

std::vector<std::string> PathsIn(const std::string& page) {
  std::vector<std::string> paths;
  bool is_block = false;
  for (std::size_t at = 0; at < page.size();) {
    const std::size_t fence = std::min(page.find("```", at), page.size());
    const std::string part = page.substr(at, fence - at);
    is_block ? TakeWords(part, paths) : TakeTyped(part, paths);
    is_block = !is_block;
    at = fence + 3;
  }
  return paths;
}

std::vector<std::string> LinksIn(const std::string& page) {
  std::vector<std::string> links;
  for (std::size_t at = 0; (at = page.find("](", at)) != std::string::npos;) {
    at += 2;
    const std::string link = page.substr(at, page.find(')', at) - at);
    if (!link.starts_with("http")) links.push_back(link);
  }
  return links;
}

// The names by which links reach the headings of a page. What looks like one in a block that is shown as
// typed is a comment of a shell's.
std::set<std::string> AnchorsOf(const std::string& page) {
  std::set<std::string> anchors;
  std::istringstream lines(page);
  bool is_block = false;
  for (std::string line; std::getline(lines, line);) {
    if (line.find("```") != std::string::npos) is_block = !is_block;
    if (is_block || !line.starts_with('#')) continue;
    std::string anchor;
    for (const char c : line.substr(std::min(line.find(' ') + 1, line.size()))) {
      if (c == ' ' || c == '-') anchor += '-';
      if (c == '_' || std::isalnum(static_cast<unsigned char>(c)) != 0)
        anchor += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    anchors.insert(anchor);
  }
  return anchors;
}

bool LeadsSomewhere(const fs::path& page, const std::string& link) {
  const std::size_t hash = std::min(link.find('#'), link.size());
  const fs::path target = hash == 0 ? page : page.parent_path() / link.substr(0, hash);
  if (!fs::exists(target)) return false;
  return hash == link.size() || AnchorsOf(testing::TextOfFile(target)).contains(link.substr(hash + 1));
}

// The changelog tells of what was.
std::vector<fs::path> Pages() {
  std::vector<fs::path> pages{kTree / "README.md", kTree / "CONTRIBUTING.md", kTree / "examples/README.md"};
  for (const auto& entry : fs::recursive_directory_iterator(kTree / "docs")) {
    if (entry.path().extension() == ".md") pages.push_back(entry.path());
  }
  return pages;
}

TEST(Pages, NamePathsThatThereAre) {
  const std::set<std::string> ends = EndsOfPaths();
  std::size_t count = 0;
  for (const fs::path& page : Pages()) {
    for (const std::string& path : PathsIn(testing::TextOfFile(page))) {
      ++count;
      EXPECT_TRUE(IsInTheTree(path, ends)) << page.lexically_relative(kTree) << " tells of " << path;
    }
  }
  EXPECT_GT(count, 150U);
}

TEST(Pages, LinkToPagesAndHeadingsThatThereAre) {
  std::size_t count = 0;
  for (const fs::path& page : Pages()) {
    for (const std::string& link : LinksIn(testing::TextOfFile(page))) {
      ++count;
      EXPECT_TRUE(LeadsSomewhere(page, link)) << page.lexically_relative(kTree) << " links to " << link;
    }
  }
  EXPECT_GT(count, 30U);
}

// A line of the list is a purpose and the packages of it.
std::set<std::string> Packages() {
  std::set<std::string> packages;
  std::ifstream list(kTree / "scripts/packages.txt");
  for (std::string line; std::getline(list, line);) {
    std::istringstream words(line.starts_with('#') ? "" : line);
    std::string word;
    words >> word;
    while (words >> word) packages.insert(word);
  }
  return packages;
}

TEST(Pages, SayWhyEachPackageWasTaken) {
  const std::string page = testing::TextOfFile(kTree / "docs/architecture.md");
  const std::set<std::string> packages = Packages();
  EXPECT_GT(packages.size(), 40U);
  for (const std::string& package : packages)
    EXPECT_NE(page.find('`' + package + '`'), std::string::npos) << "no row tells of " << package;
}

}  // namespace
}  // namespace mirelo
