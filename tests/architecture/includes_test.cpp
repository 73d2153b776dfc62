// Who may know whom, read off the include lines of src/. docs/architecture.md draws the same arrows.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace mirelo {
namespace {

namespace fs = std::filesystem;
using Rooms = std::set<std::string>;

const fs::path kSource = fs::path(MIRELO_SOURCE_DIR) / "src";

const Rooms kSubsystems{"core", "snapshot", "streaming", "worksheet", "charts", "dialog", "diagnostics"};
const Rooms kBelowSubsystems{"automation", "forms", "host"};

// What the machine offers and only adapters and programs may touch: sockets, files, windows, other libraries.
const std::vector<std::string> kMachineHeaders{
    "sys/",     "netinet/", "arpa/",    "netdb.h", "unistd.h", "poll.h",   "fcntl.h", "curl/",
    "sqlite3",  "zip.h",    "pugixml",  "xlsx",    "sodium",   "spdlog",   "Q",       "windows",
    "syslog.h", "nlohmann", "curses.h", "ncurses", "term.h",   "termios.h"};

struct Include {
  fs::path file;
  std::string name;
  bool quoted;
};

std::vector<Include> IncludesBelow(const fs::path& folder) {
  std::vector<Include> includes;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.path().extension() != ".h" && entry.path().extension() != ".cpp") continue;
    std::ifstream lines(entry.path());
    for (std::string line; std::getline(lines, line);) {
      if (line.rfind("#include", 0) != 0) continue;
      const auto open = line.find_first_of("<\"");
      const auto close = line.find_first_of(">\"", open + 1);
      includes.push_back(
          {fs::relative(entry.path(), kSource), line.substr(open + 1, close - open - 1), line[open] == '"'});
    }
  }
  return includes;
}

// "adapters/poll/poll_loop.h" is in the room "adapters/poll", "core/cMirelo.h" in "core".
std::string RoomOf(const std::string& path) {
  const auto slash = path.find('/');
  const std::string first = path.substr(0, slash);
  if (first != "adapters" || slash == std::string::npos) return first;
  return path.substr(0, path.find('/', slash + 1));
}

Rooms Allowed(const std::string& room) {
  if (room == "automation") return {};
  if (room == "command_line") return {};
  if (room == "terminal") return {"automation"};
  if (room == "host") return {"automation", "forms"};
  if (room == "forms") return {"automation"};
  if (room == "spreadsheet") return {"automation", "host"};
  if (kSubsystems.count(room)) {
    Rooms rooms = kSubsystems;
    rooms.insert(kBelowSubsystems.begin(), kBelowSubsystems.end());
    return rooms;
  }
  if (room == "wire" || room == "day" || room == "automation_server") {
    Rooms rooms = kSubsystems;
    rooms.insert(kBelowSubsystems.begin(), kBelowSubsystems.end());
    if (room == "day") rooms.insert("wire");
    return rooms;
  }
  if (room == "person") {
    Rooms rooms = kSubsystems;
    rooms.insert(kBelowSubsystems.begin(), kBelowSubsystems.end());
    rooms.insert("adapters/headless");  // it sits where no screen is, and what is told there is text
    rooms.insert("terminal");
    return rooms;
  }
  if (room == "uno" || room == "com") return {"automation", "automation_server"};
  if (room.rfind("adapters/", 0) == 0) {
    Rooms rooms = kBelowSubsystems;
    if (room == "adapters/qt" || room == "adapters/calc" || room == "adapters/windows")
      rooms.insert("adapters/poll");  // their loops' steps
    if (room == "adapters/workbook" || room == "adapters/calc")
      rooms.insert("spreadsheet");  // whose rules they keep
    if (room == "adapters/sqlite" || room == "adapters/sodium" || room == "adapters/csv" ||
        room == "adapters/workbook")
      rooms.insert("adapters/proc");  // who locks, and what a process has open
    if (room == "adapters/qt" || room == "adapters/headless" || room == "adapters/ncurses") {
      rooms.insert("terminal");  // they print
    }
    return rooms;
  }
  if (room == "linux") {
    Rooms rooms = kSubsystems;
    rooms.insert({"automation", "forms", "host", "wire"});
    for (const auto& adapter : fs::directory_iterator(kSource / "adapters")) {
      rooms.insert("adapters/" + adapter.path().filename().string());
    }
    return rooms;
  }
  return {};  // asked only for the rooms above: app, quotetracker, libreoffice and windows choose freely
}

bool ChoosesFreely(const std::string& room) {
  return room == "app" || room == "quotetracker" || room == "libreoffice" || room == "windows";
}

bool MayTouchTheMachine(const std::string& room) {
  return ChoosesFreely(room) || room == "linux" || room == "terminal" || room == "com" ||
         room.rfind("adapters/", 0) == 0;
}

TEST(Includes, FollowTheArrowsOfTheArchitecture) {
  const auto includes = IncludesBelow(kSource);
  ASSERT_GT(includes.size(), 100U);
  for (const auto& include : includes) {
    if (!include.quoted) continue;
    const std::string from = RoomOf(include.file.string());
    const std::string to = RoomOf(include.name);
    EXPECT_TRUE(fs::exists(kSource / include.name))
        << include.file << " names a header by another path than from src/: " << include.name;
    if (from == to || ChoosesFreely(from)) continue;
    EXPECT_TRUE(Allowed(from).count(to)) << include.file << " must not know " << include.name;
  }
}

// The workbook's own rooms, and whom each may know besides itself and the helpers that lie beside them.
TEST(Includes, OfTheWorkbookPointFromWhatIsShownAndSavedToTheModel) {
  const std::string workbook = "adapters/workbook/";
  const std::map<std::string, Rooms> allowed{{"model", {}},
                                             {"display", {"model"}},
                                             {"objects", {"model", "display"}},
                                             {"xlsx", {"model", "display"}}};
  const auto room = [&](const std::string& path) {
    if (path.rfind(workbook, 0) != 0) return std::string();
    const std::string rest = path.substr(workbook.size());
    return rest.find('/') == rest.npos ? std::string() : rest.substr(0, rest.find('/'));
  };
  std::set<std::string> seen;
  for (const auto& include : IncludesBelow(kSource / workbook)) {
    const std::string from = room(include.file.string());
    const std::string to = room(include.name);
    if (from.empty() || to.empty()) continue;
    seen.insert(from);
    ASSERT_TRUE(allowed.count(from)) << "no arrows are drawn for " << from;
    EXPECT_TRUE(from == to || allowed.at(from).count(to))
        << include.file << " must not know " << include.name;
  }
  EXPECT_EQ(seen.size(), allowed.size());
}

TEST(Includes, NobodyKnowsThePrograms) {
  for (const auto& include : IncludesBelow(kSource)) {
    const std::string from = RoomOf(include.file.string());
    const std::string to = RoomOf(include.name);
    if (from == to || from == "app") continue;
    // An office runs the program in its own process.
    if (from != "libreoffice") {
      EXPECT_NE(to, "app") << include.file;
    }
    EXPECT_NE(to, "quotetracker") << include.file;
    EXPECT_NE(to, "libreoffice") << include.file;
    EXPECT_NE(to, "windows") << include.file;
  }
}

TEST(Includes, LeaveTheMachineToAdaptersAndPrograms) {
  for (const auto& include : IncludesBelow(kSource)) {
    const std::string from = RoomOf(include.file.string());
    if (include.quoted || MayTouchTheMachine(from)) continue;
    for (const auto& header : kMachineHeaders) {
      EXPECT_NE(include.name.rfind(header, 0), 0U) << include.file << " includes <" << include.name << ">";
    }
  }
}

// Who wants another parser, or a newer one, has one room to change; and no other source pays for reading it.
TEST(Includes, KnowTheParserOfCommandLinesInItsRoomAlone) {
  const fs::path tree = MIRELO_SOURCE_DIR;
  std::size_t known = 0;
  for (const char* folder : {"src", "tests", "bench", "fuzz", "examples"}) {
    for (const auto& include : IncludesBelow(tree / folder)) {
      if (include.name.rfind("CLI/", 0) != 0) continue;
      ++known;
      EXPECT_EQ(RoomOf(include.file.string()), "command_line")
          << include.file << " includes <" << include.name << ">";
    }
  }
  EXPECT_GT(known, 0U);
}

}  // namespace
}  // namespace mirelo
