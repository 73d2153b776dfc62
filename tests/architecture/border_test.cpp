// What an office calls in this library, read off src/: no exception of ours may pass through its frames, so
// each of these functions runs its body at the border, or can raise nothing.

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <iterator>
#include <regex>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/file_text.h"

namespace mirelo {
namespace {

namespace fs = std::filesystem;

const fs::path kOfficeSource = fs::path(MIRELO_SOURCE_DIR) / "src";

// Who is called without, since it catches all by itself.
const std::set<std::pair<std::string, std::string>> kCatchAll{
    // The border of the views is Views::Heard, see IsInFrontOfWhatListenersOfViewsAreTold.
    {"adapters/calc/views/listeners.h", "act_"},
    {"adapters/calc/views/listeners.h", "pressed_"},
    {"adapters/calc/views/listeners.h", "released_"},
    // Document::BecomeGone catches all.
    {"adapters/calc/objects/document.cpp", "Tell"},
    // What frames are watched for must not fail.
    {"adapters/calc/views/frame_watch.cpp", "closes_"},
    {"adapters/calc/views/frame_watch.cpp", "Reference"},
    {"adapters/calc/views/frame_watch.cpp", "owed_"},
    // noexcept.
    {"adapters/calc/objects/paint_pause.cpp", "EndAtEvent"},
    {"uno/own_thread.h", "LetGo"},
    // AtTheEnd::Act is at the border.
    {"libreoffice/machine.cpp", "Act"}};

// From an opening bracket at `open` to behind that which closes it.
std::size_t BehindBracket(std::string_view code, std::size_t open) {
  const char opening = code[open];
  const char closing = opening == '(' ? ')' : '}';
  int depth = 0;
  for (std::size_t at = open; at < code.size(); ++at) {
    if (code[at] == opening) ++depth;
    if (code[at] == closing && --depth == 0) return at + 1;
  }
  return code.size();
}

struct Entry {
  std::string name;
  std::string body;  // with its brackets; no text where it was not found
};

// The body that follows the parameters which open there; no text for a mere declaration.
std::string BodyBehind(std::string_view code, std::size_t parameters) {
  const std::size_t end = code.find_first_of(";{", BehindBracket(code, parameters));
  if (end == std::string_view::npos || code[end] == ';') return {};
  return std::string(code.substr(end, BehindBracket(code, end) - end));
}

std::vector<Entry> EntriesIn(const std::string& code, const std::string& beside) {
  static const std::regex kEntry(R"(SAL_CALL\s+(\w+)\()");
  std::vector<Entry> entries;
  for (std::sregex_iterator at(code.begin(), code.end(), kEntry), end; at != end; ++at) {
    const std::string name = (*at)[1];
    const auto parameters = static_cast<std::size_t>(at->position() + at->length() - 1);
    std::string body = BodyBehind(code, parameters);
    for (const std::string* const text : {&code, &beside}) {
      const std::size_t defined = text->find("::" + name + "(");
      if (body.empty() && defined != std::string::npos) body = BodyBehind(*text, text->find('(', defined));
    }
    entries.push_back({name, body});
  }
  return entries;
}

// OnOwnThread and Serve, of macros' objects, begin with the border.
bool IsAtTheBorder(const std::string& body) {
  static const std::regex kAll(
      R"(^\{\s*(if \(!listener\.is\(\)\) return;\s*)?(return )?(\w+::)?(AtTheBorder|OnOwnThread|Serve)\()");
  return std::regex_search(body, kAll);
}

// What is called, or made, outside of the border. An exception of the office's own may pass.
std::set<std::string> CallsIn(std::string body) {
  static const std::regex kOfTheOffice(R"(throw css::[\w:]+\(\);)");
  static const std::regex kCall(R"((\w+)\(|\bnew\s)");
  body = std::regex_replace(body, kOfTheOffice, "");
  std::set<std::string> calls;
  for (std::sregex_iterator at(body.begin(), body.end(), kCall), end; at != end; ++at) calls.insert((*at)[1]);
  return calls;
}

TEST(TheBorderOfTheOffice, IsInFrontOfWhateverItCalls) {
  std::size_t count = 0;
  for (const auto& file : fs::recursive_directory_iterator(kOfficeSource)) {
    const fs::path path = file.path();
    if (path.extension() != ".h" && path.extension() != ".cpp") continue;
    const std::string code = testing::TextOfFile(path);
    if (code.find("SAL_CALL") == std::string::npos) continue;
    const std::string name = fs::relative(path, kOfficeSource).generic_string();
    const std::string beside = path.extension() == ".h"
                                   ? testing::TextOfFile(fs::path(path).replace_extension(".cpp"))
                                   : std::string();
    for (const Entry& entry : EntriesIn(code, beside)) {
      ++count;
      ASSERT_FALSE(entry.body.empty())
          << name << " does not define " << entry.name << " where it is looked for";
      if (IsAtTheBorder(entry.body)) continue;
      for (const std::string& call : CallsIn(entry.body)) {
        EXPECT_TRUE(kCatchAll.contains({name, call}))
            << name << ": " << entry.name << " calls " << call << " in front of the border";
      }
    }
  }
  EXPECT_GT(count, 60U);
}

TEST(TheBorderOfTheOffice, IsToldFromWhatStandsInFrontOfIt) {
  const auto entries = EntriesIn(
      "void SAL_CALL modified(const Event&) override { if (day_) day_->LookAgain(); }\n"
      "void SAL_CALL disposing(const Event&) override {}\n"
      "Any SAL_CALL getValue(const Name& name) override;\n"
      "Any Thing::getValue(const Name& name) {\n  return OnOwnThread([&] { return Get(name); });\n}\n",
      "");
  ASSERT_EQ(entries.size(), 3U);
  EXPECT_FALSE(IsAtTheBorder(entries[0].body));
  EXPECT_EQ(CallsIn(entries[0].body), (std::set<std::string>{"LookAgain"}));
  EXPECT_TRUE(CallsIn(entries[1].body).empty());
  EXPECT_TRUE(CallsIn("{ throw css::container::NoSuchElementException(); }").empty());
  EXPECT_FALSE(CallsIn("{ return new Walk; }").empty());
  EXPECT_TRUE(IsAtTheBorder(entries[2].body));
  EXPECT_FALSE(IsAtTheBorder("{ Load(); AtTheBorder([] {}); }"));
}

// Their listeners hold functions; whoever makes one says Heard.
TEST(TheBorderOfTheOffice, IsInFrontOfWhatListenersOfViewsAreTold) {
  static const std::regex kMade(R"(new On[A-Z]\w+\(\s*(views_?\.Heard\()?)");
  std::size_t count = 0;
  for (const auto& file : fs::recursive_directory_iterator(kOfficeSource / "adapters" / "calc")) {
    if (!file.is_regular_file()) continue;
    const std::string code = testing::TextOfFile(file.path());
    for (std::sregex_iterator at(code.begin(), code.end(), kMade), end; at != end; ++at, ++count) {
      EXPECT_TRUE((*at)[1].matched) << file.path() << ": " << at->str();
    }
  }
  EXPECT_GT(count, 15U);
}

}  // namespace
}  // namespace mirelo
