// What servers, settings, workbooks, arguments and the environment may hold: no text of theirs reaches the
// terminal in a form that it would obey, whatever the command.

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/mirelo_program.h"
#include "app/program.h"
#include "app/terminal_program.h"
#include "automation/utf8.h"
#include "command_line/command_facts.h"
#include "support/built_program.h"
#include "support/level1_wire.h"
#include "support/loopback_server.h"
#include "support/temp_directory.h"
#include "workbook/package_builder.h"

namespace mirelo::testing {
namespace {

using Words = std::vector<std::string>;

// As bytes of the ANSI code page: a title for the window, a bell, an emptied screen, a blank over the letter
// before, and the second set of controls as far as the code page has it.
const std::string kFromServer = "\x1B]0;X\x07\x1B[2J\x08\x81\x8D\x90\x9D\x7F";
// The same as UTF-8, as far as settings can hold it.
const std::string kFromSettings = "\033]0;X\a\033[2J\b\u0081\u008D\u0090\u009D\u007F";
// With all of the second set, and what turns the direction of text, ends lines and is not seen.
const std::string kFromFiles =
    kFromSettings + "\u0085\u009B31m\u202E\u2066\u2028\u2029\u200B\uFEFF\rerror: forged";
const std::string kFromArguments = kFromFiles + "\nerror: forged\x9B\xFF";

constexpr char32_t kAnyByte = 0xDC00;  // as utf8::Decode has what is no UTF-8

bool IsObeyed(char32_t c) {
  return (c < 0x20 && c != '\n') || (c >= 0x7F && c < 0xA0) || c == 0x200B || c == 0xFEFF ||
         (c >= 0x2028 && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069) ||
         (c >= kAnyByte && c < kAnyByte + 0x100);
}

// The program's own colours, how it clears the screen for a table that stands in place, and how its screen is
// opened, painted and left. What hostile texts hold here is not among them but for the step back.
std::string WithoutOwnSequences(const std::string& text) {
  static const std::regex own(
      "\033\\[H\033\\[2J|\033\\[[0-9;]*[mHdGXKABCDrt]|\033\\[J|\033\\[\\?[0-9;]*[hl]|"
      "\033\\[4[hl]|\033\\(B|\033[=>]|\b");
  return std::regex_replace(text, own, "");
}

// How many characters a terminal would obey; forged lines count as well.
std::size_t ControlsIn(std::string_view text) {
  std::size_t count = 0;
  for (std::size_t position = 0; position < text.size();) {
    const utf8::Character next = utf8::Decode(text, position);
    if (IsObeyed(next.code)) ++count;
    position += next.length;
  }
  for (std::size_t at = 0; (at = text.find("\nerror: forged", at)) != std::string_view::npos; ++at) ++count;
  return count;
}

void AnswerRequests(LoopbackServer::Peer& peer) {
  const std::string request = peer.ReceiveUntil("\r\n\r\n");
  std::string body = "OK\r\n";
  if (request.find("GetLastQuote(") != std::string::npos) {
    body += "MSFT" + kFromServer + ",01/02/2006" + kFromServer + ",09:30:00";
    for (int field = 3; field < 19; ++field) body += field == 8 ? ",1000" : ",2" + kFromServer;
  } else {
    body += "Main" + kFromServer + ",MSFT";
  }
  peer.Send("HTTP/1.0 200 OK" + kFromServer + "\r\nContent-Type: text/plain" + kFromServer +
            "\r\nServer: " + kFromServer + "\r\n\r\n" + body);
}

std::string Record() {
  return Level1Wire()
      .Symbol("MS" + kFromServer)
      .Last(26.5)
      .Volume(1000)
      .Fixed(14, "\x1B")  // the tick's direction
      .Stamp("0102\x1B]006093000")
      .Text(18, "Company" + kFromServer)
      .Text(25, kFromServer)
      .Bytes();
}

// Speaks with a client of the stream; the login gets this code.
LoopbackServer::Script Converse(const std::string& code) {
  return [code](LoopbackServer::Peer& peer) {
    peer.Send("OK<CONNECT><SERVERTIME>12/31/2005 09:30:15</SERVERTIME><SERVERVERSION>1" + kFromServer +
              "</SERVERVERSION></CONNECT>");
    for (std::string message; !(message = peer.ReceiveUntil("\xFF")).empty();) {
      if (message.starts_with("<LOGIN>")) {
        peer.Send("LO<STATUSCODE>" + code + "</STATUSCODE><STATUSDESC>No" + kFromServer + "</STATUSDESC>");
      } else if (message.starts_with("<ENUMSOURCES>")) {
        peer.Send("ES<SOURCES><SOURCETYPE>L1</SOURCETYPE><SOURCE><FILENAME>A" + kFromServer +
                  ".SDF</FILENAME><NAME>Source" + kFromServer + "</NAME></SOURCE></SOURCES>");
      } else if (message.starts_with("<L1SITE>")) {
        peer.Send("OK<STREAMER>" + kFromServer + "</STREAMER>");
      } else if (message.find("<ReqType>SUB<") != std::string::npos) {
        peer.Send(Record());
      }
    }
  };
}

std::string AsXml(std::string_view text) {
  std::string xml;
  for (std::size_t position = 0; position < text.size();) {
    const utf8::Character next = utf8::Decode(text, position);
    xml += "&#" + std::to_string(static_cast<std::uint32_t>(next.code)) + ";";
    position += next.length;
  }
  return xml;
}

// A sheet whose name and cells hold controls, and which holds something that is not kept.
void WriteWorkbook(const std::filesystem::path& file) {
  const std::string xml = AsXml(kFromFiles);
  Parts parts = SmallWorkbook("<row r=\"1\"><c r=\"A1\" t=\"inlineStr\"><is><t>Cell" + xml +
                              "_x001B__x0007_</t></is></c></row>");
  const std::string name = AsXml("P\033c\a\u009B\u202E");  // as long as a name may be
  ReplaceIn(parts["xl/workbook.xml"], "name=\"Prices\"", "name=\"" + name + "\"");
  ReplaceIn(parts[kSheetPart], "<sheetData>",
            "<sheetViews><sheetView zoomScale=\"50\" workbookViewId=\"0\"/></sheetViews><sheetData>");
  const auto bytes = Zip(parts);
  std::ofstream(file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

struct Case {
  Words words;
  std::string input = "";
  const char* shown = "\\u001B";  // how the escape character must stand in the output
  Words environment = {};
};

Words With(Words words, const Words& more) {
  words.insert(words.end(), more.begin(), more.end());
  return words;
}

class HostileTexts : public ::testing::Test {
 protected:
  HostileTexts() {
    for (const char* name : {"hostile.xlsx", "shown.xlsx"}) WriteWorkbook(folder_ / name);
    std::ofstream(folder_ / "hostile.csv") << "Ticker,Date,Time," << kFromFiles << "\n";
    std::filesystem::create_directory(folder_ / "folder");
    RunMirelo(folder_.path(), {"credentials", "set"}, "Name\nsecret\n");
    const auto imported = RunMirelo(folder_.path(), {"settings", "import", "-"},
                                    "Settings\tSocketPort\ttext\t" + std::to_string(stream_.Port()) +
                                        "\nSettings\tListRight\ttext\tTicker,Last,Tick,Date,Volume,52w High" +
                                        "\nSettings\\WidthField\tField" + kFromSettings + "\tinteger\t5\n");
    EXPECT_EQ(imported.exit_code, 0) << imported.err;
  }

  void Expect(const Case& c, const char* program = "mirelo") {
    Words words = With(c.environment, {BuiltProgram(program)});
    const ProgramResult result =
        RunProgram("/usr/bin/env", folder_.path(), With(std::move(words), c.words), c.input);
    Check(c, result);
  }
  void ExpectInTerminal(const Case& c) {
    ProgramResult result = RunMireloInTerminal(folder_.path(), c.words, 200, {{"HOME", folder_ / "home"}});
    result.out = WithoutOwnSequences(result.out);
    Check(c, result);
  }

  void Check(const Case& c, const ProgramResult& result) {
    std::string printed = result.out + result.err;
    EXPECT_NE(printed.find(c.shown), std::string::npos)
        << "shows nothing hostile: " << ::testing::PrintToString(c.words) << '\n'
        << printed;
    if (c.words.size() > 1 && c.words[0] == "settings" && c.words[1] == "export")
      std::erase(printed, '\t');  // between its fields
    EXPECT_EQ(ControlsIn(printed), 0U) << ::testing::PrintToString(c.words) << '\n'
                                       << ::testing::PrintToString(printed);
    for (const std::string& word : c.words) covered_.insert(word);
  }

  TempDirectory folder_;
  LoopbackServer http_{AnswerRequests};
  LoopbackServer stream_{Converse("0")};
  LoopbackServer refusing_{Converse("1")};
  std::set<std::string> covered_;  // words of all command lines
};

TEST_F(HostileTexts, ReachTheTerminalVisiblyWhateverTheCommand) {
  const std::string& k = kFromArguments;
  const std::string refusing = std::to_string(refusing_.Port());
  const std::string port = std::to_string(http_.Port());
  const std::string ticker = "MS" + kFromSettings;
  const std::string kSource = "QuoteSource\\First\\ComQuoteSource";
  const Words quotes{"quotes", "MSFT", "--http-port", port};
  const Words stream{"stream", ticker, "--source", "A.SDF", "--seconds", "0.2"};
  const Words run{"run", "--yes", "--tickers", ticker, "--http-port", port, "--for", "300ms", "--workbook"};
  const Words go{"go", "--tickers", "MSFT", "--http-port", port};
  const Case cases[] = {
      // What servers send.
      {quotes},
      {With(quotes, {"--csv"})},
      {With(quotes, {"--json"}), "", "\\u001b"},
      {With(quotes, {"--columns", "Last," + k})},
      {With(stream, {"--csv"})},
      {With(stream, {"--json"}), "", "\\u001b"},
      {stream},
      {With(stream, {"--socket-port", refusing}), "", "\\u0090"},
      {{"sources", "--update"}},
      {{"sources"}},
      {With(run, {"run.xlsx"})},
      {With(run, {"run.xlsx", "--set", "Seconds=0", "--source", "Source" + kFromSettings})},
      // Settings.
      {{"settings", "list"}},
      {{"settings", "export"}},
      {{"settings", "get", "WidthField\\Field" + kFromSettings}, "", "5"},
      {{"settings", "set", "Style", "Blue" + kFromSettings}},
      {{"settings", "set", kSource, "Blue" + kFromSettings}, "", ""},
      {{"settings", "get", kSource}},
      {{"settings", "get", k}},
      {{"settings", "set", k, "1"}},
      {{"settings", "set", "Seconds", k}},
      {{"settings", "delete", k}},
      {{"settings", "import", k}},
      {{"settings", "import", "-"}, "Settings\t" + kFromSettings + "\ttext\t1\n"},
      {{"settings", "export", k + "/x"}},
      // Watch lists.
      {{"list", "add", k, "MSFT"}},
      {{"list", "add", "tech", k}},
      {{"list", "add", "tech", ticker}, "", ""},
      {{"list", "show"}},
      {{"list", "show", "tech"}},
      {{"list", "remove", "tech", k}},
      {{"list", "remove", "tech", ticker}, "", ""},
      {{"list", "delete", k}},
      // Workbooks and other files.
      {{"show", "shown.xlsx"}},
      {{"show", "shown.xlsx", "--list"}},
      {{"show", "shown.xlsx", k}},
      {{"show", "shown.xlsx", "--range", k}},
      {{"show", k}},
      {{"export", "shown.xlsx", "--sheet", k}},
      {{"export", k}},
      {With(go, {"--workbook", "hostile.xlsx"})},
      {With(go, {"--workbook", k + ".xlsx"})},
      {With(run, {k + "/x.xlsx"})},
      {With(run, {"run.xlsx", "--also", k + "/x.csv"})},
      {With(run, {"run.xlsx", "--also", k})},
      // Arguments.
      {{k}, "", ""},
      {{"quotes", "--" + k, "MSFT"}},
      {{"quotes", "A," + k}},
      {With(quotes, {"--address", k})},
      {With(quotes, {"--date-format", "dd" + kFromSettings, "--columns", "Date"})},
      {{"stream", "MSFT", "--source", k}},
      {With(go, {"--set", k + "=1"})},
      {With(go, {"--set", "Seconds=" + k})},
      {With(go, {"--tick", k})},
      {With(go, {"--columns", k})},
      {{"run", "--for", k}},
      {{"calc", k}},
      {{"calc", "--headless", k + ".txt"}},
      {{"--registry", "/proc/" + k, "settings", "list"}},
      // The environment.
      {{"dialog"}, "", "\\u001B", {"DISPLAY=" + k}},
      {{"open"}, "", "\\u001B", {"DISPLAY=" + k}},
      {{"settings", "list"}, "", "\\u001B", {"XDG_DATA_HOME=/proc/" + k}},
      // Credentials, last, since the stream needs them.
      {{"credentials", "set"}, "Name" + kFromFiles + "\nsecret\n", ""},
      {{"credentials", "show-name"}},
      {{"credentials", "clear"}, "", ""},
      {{"sources", "--update", "--registry", "folder/registry.db"}, "", ""},
  };
  for (const Case& c : cases) Expect(c);

  std::set<std::string> commands;
  const auto program = FactsOf(app::MireloProgram().tree());
  for (const auto& command : program.commands) {
    Walk(command, [&](const auto& each) { commands.emplace(each.OwnName()); });
  }
  for (const std::string& command : commands) {
    EXPECT_TRUE(covered_.contains(command)) << command << " was not run";
  }
}

TEST_F(HostileTexts, ReachTheTerminalVisiblyWhereItHasColours) {
  const std::string port = std::to_string(http_.Port());
  const Case cases[] = {
      {{"quotes", "MSFT", "--http-port", port}},
      {{"stream", "MS" + kFromSettings, "--source", "A.SDF", "--seconds", "0.6"}},
      {{"settings", "list"}},
      {{"show", "shown.xlsx"}},
      {{"show", "shown.xlsx", "--list"}},
      {{"run", "--tickers", "MSFT", "--http-port", port, "--for", "600ms"}},
  };
  for (const Case& c : cases) ExpectInTerminal(c);
}

// The source list is refused in words of the server's.
TEST_F(HostileTexts, ReachTheTerminalVisiblyWhereTheServerRefuses) {
  RunMirelo(folder_.path(), {"settings", "set", "SocketPort", std::to_string(refusing_.Port())});
  const ProgramResult result =
      RunProgram("/usr/bin/timeout", folder_.path(), {"0.5", BuiltProgram("mirelo"), "sources", "--update"});
  Check({{"sources", "--update"}}, result);
}

TEST_F(HostileTexts, ReachTheTerminalVisiblyFromTheStandIn) {
  const std::string& k = kFromArguments;
  const Case cases[] = {
      {{k}},
      {{"--rate", k}},
      {{"--kinds", k}},
      {{"--stream-fault", k}},
      {{"--replay", k}},
      {{"--replay", "hostile.csv"}},
      {{"--play", k}},
  };
  for (const Case& c : cases) Expect(c, "quotetracker");
}

}  // namespace
}  // namespace mirelo::testing
