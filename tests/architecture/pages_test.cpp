// The paths and links that the pages tell of, looked for in the tree: a page that sends its reader to a file
// which was moved must not stand.

#include <fnmatch.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace mirelo {
namespace {

namespace fs = std::filesystem;

const fs::path kTree = MIRELO_SOURCE_DIR;

std::string PageText(const fs::path& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

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
    std::string end = "./" + fs::relative(entry->path(), kTree).generic_string();
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
  static const std::regex kPath(R"((\.|[\w-]+)(/[\w.*-]+)+/?)");
  const bool has_small_letter =
      std::any_of(word.begin(), word.end(), [](unsigned char c) { return std::islower(c) != 0; });
  const bool is_made = word.starts_with("build/") || word.starts_with("./build/");
  return has_small_letter && !is_made && std::regex_match(word, kPath);
}

// What stands between single backticks, up to a blank; and the words of blocks that are shown as typed.
std::vector<std::string> PathsIn(const std::string& page) {
  static const std::regex kTyped(R"(`([^`\s]+)[^`\n]*`)");
  static const std::regex kWord(R"(\S+)");
  std::vector<std::string> paths;
  const auto take = [&paths](const std::string& word) {
    if (IsAPath(word)) paths.push_back(word);
  };
  bool is_block = false;
  for (std::size_t at = 0; at < page.size();) {
    const std::size_t fence = std::min(page.find("```", at), page.size());
    const std::string part = page.substr(at, fence - at);
    const std::regex& words = is_block ? kWord : kTyped;
    for (std::sregex_iterator word(part.begin(), part.end(), words), last; word != last; ++word)
      take(is_block ? word->str() : (*word)[1].str());
    is_block = !is_block;
    at = fence + 3;
  }
  return paths;
}

std::vector<std::string> LinksIn(const std::string& page) {
  static const std::regex kLink(R"(\]\(([^)\s]+)\))");
  std::vector<std::string> links;
  for (std::sregex_iterator link(page.begin(), page.end(), kLink), last; link != last; ++link) {
    if (!(*link)[1].str().starts_with("http")) links.push_back((*link)[1]);
  }
  return links;
}

// The names by which links reach the headings of a page.
std::set<std::string> AnchorsOf(const std::string& page) {
  static const std::regex kHeading(R"((?:^|\n)#+ ([^\n]*))");
  std::set<std::string> anchors;
  for (std::sregex_iterator heading(page.begin(), page.end(), kHeading), last; heading != last; ++heading) {
    std::string anchor;
    for (const char c : (*heading)[1].str()) {
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
  return hash == link.size() || AnchorsOf(PageText(target)).contains(link.substr(hash + 1));
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
    for (const std::string& path : PathsIn(PageText(page))) {
      ++count;
      EXPECT_TRUE(IsInTheTree(path, ends)) << fs::relative(page, kTree) << " tells of " << path;
    }
  }
  EXPECT_GT(count, 150U);
}

TEST(Pages, LinkToPagesAndHeadingsThatThereAre) {
  std::size_t count = 0;
  for (const fs::path& page : Pages()) {
    for (const std::string& link : LinksIn(PageText(page))) {
      ++count;
      EXPECT_TRUE(LeadsSomewhere(page, link)) << fs::relative(page, kTree) << " links to " << link;
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
  const std::string page = PageText(kTree / "docs/architecture.md");
  const std::set<std::string> packages = Packages();
  EXPECT_GT(packages.size(), 40U);
  for (const std::string& package : packages)
    EXPECT_NE(page.find('`' + package + '`'), std::string::npos) << "no row tells of " << package;
}

}  // namespace
}  // namespace mirelo
