// Texts leave the program through one room, which makes them visible: nobody else writes to the standard
// streams.

#include <gtest/gtest.h>

#include <cctype>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace mirelo {
namespace {

namespace fs = std::filesystem;

const fs::path kOutputSource = fs::path(MIRELO_SOURCE_DIR) / "src";

// Whatever writes past the room: streams, functions of C, descriptors, and CLI11, which prints by itself
// unless it is given where to.
constexpr std::string_view kWaysPast[] = {
    "cout",   "cerr",    "clog",          "wcout",         "wcerr",    "wclog",    "stdout",   "stderr",
    "printf", "fprintf", "vprintf",       "vfprintf",      "dprintf",  "puts",     "fputs",    "putchar",
    "perror", "psignal", "STDOUT_FILENO", "STDERR_FILENO", "/dev/tty", "write(1,", "write(2,", "CLI11_PARSE"};

bool IsOfAWord(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_'; }

bool HoldsWord(std::string_view code, std::string_view word) {
  for (std::size_t at = 0; (at = code.find(word, at)) != std::string_view::npos; ++at) {
    const std::size_t end = at + word.size();
    const bool begins = at == 0 || !IsOfAWord(code[at - 1]);
    if (begins && (end == code.size() || !IsOfAWord(code[end]) || !IsOfAWord(word.back()))) return true;
  }
  return false;
}

bool EndsParsingByItself(std::string_view code) {
  for (const std::string_view call : {".exit(", "->exit("}) {
    const std::size_t at = code.find(call);
    if (at != std::string_view::npos && code.find(',', at) == std::string_view::npos) return true;
  }
  return false;
}

std::string WayPastIn(const std::string& line) {
  const std::string_view code = std::string_view(line).substr(0, line.find("// "));
  for (const std::string_view way : kWaysPast) {
    if (HoldsWord(code, way)) return std::string(way);
  }
  return EndsParsingByItself(code) ? "exit" : "";
}

// These give the streams of a child another end.
const std::set<std::pair<fs::path, std::string>> kChildren{
    {"app/child_process.cpp", "STDOUT_FILENO"},
    {"app/calc/office_process.cpp", "STDOUT_FILENO"},
    {"app/calc/command_in_office.cpp", "STDOUT_FILENO"},
    {"app/calc/command_in_office.cpp", "STDERR_FILENO"},
    {"libreoffice/command_runner.cpp", "STDOUT_FILENO"},
    {"libreoffice/command_runner.cpp", "STDERR_FILENO"},
    {"adapters/qt/application.cpp", "STDOUT_FILENO"},
    {"adapters/qt/application.cpp", "STDERR_FILENO"},
    {"adapters/workbook/process_copy.cpp", "stderr"},
    // And this gives the terminal another look, with nothing but what is a ShownText.
    {"adapters/ncurses/screen.cpp", "STDOUT_FILENO"},
    {"adapters/ncurses/screen.cpp", "/dev/tty"}};

TEST(Output, LeavesThroughItsRoomAlone) {
  std::size_t lines = 0;
  for (const auto& entry : fs::recursive_directory_iterator(kOutputSource)) {
    const fs::path file = fs::relative(entry.path(), kOutputSource);
    if (!entry.is_regular_file() || *file.begin() == "terminal") continue;
    std::ifstream stream(entry.path());
    for (std::string line; std::getline(stream, line); ++lines) {
      const std::string way = WayPastIn(line);
      if (way.empty() || kChildren.contains({file, way})) continue;
      ADD_FAILURE() << file << ": " << line;
    }
  }
  EXPECT_GT(lines, 10'000U);
}

TEST(Output, IsRecognisedWhereItPassesTheRoom) {
  for (const char* line :
       {"  std::cout << text;", "std::cerr<<x;", "std::wcerr << x;", "  std::printf(\"%s\", text);",
        "fprintf(stderr, format);", "  puts(text);", "std::perror(text)", "::write(STDOUT_FILENO, a, b);",
        "write(2, a, b)", "std::ofstream(\"/dev/tty\")", "  return app.exit(error);",
        "  return program->exit(error);", "CLI11_PARSE(app, argc, argv);", "fputs(text, stdout);"}) {
    EXPECT_NE(WayPastIn(line), "") << line;
  }
  for (const char* line : {"  std::snprintf(buffer, size, format);", "// as std::cout does", "std::exit(1);",
                           "program.exit(end, asked_for, asked_for);", "Out() << text;", "::_exit(0);"}) {
    EXPECT_EQ(WayPastIn(line), "") << line;
  }
}

}  // namespace
}  // namespace mirelo
