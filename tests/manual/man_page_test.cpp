#include "app/manual/man_page.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "app/mirelo_program.h"
#include "command_line/command.h"

namespace mirelo::app {
namespace {

using command_line::CommandFacts;
using command_line::OptionFacts;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

std::string PageOf(const CommandFacts& facts) {
  PageNotes notes;
  notes.summary = "a tool";
  notes.version = "tool 1.2.3";
  return ManPage(facts, notes);
}

std::string PageWithDescription(const std::string& description) {
  CommandFacts facts;
  facts.name = "tool";
  facts.meaning = description;
  return PageOf(facts);
}

TEST(ManPage, BeginsWithTitleAndName) {
  EXPECT_THAT(PageWithDescription("Does it."), StartsWith(".TH TOOL 1 \"\" \"tool 1.2.3\" \"User Commands\"\n"
                                                          ".ad l\n.nh\n"
                                                          ".SH NAME\ntool \\- a tool\n"));
}

TEST(ManPage, KeepsTextFromBeingTakenForRequests) {
  const struct {
    const char* text;
    const char* written;
  } kCases[] = {
      {".SH is no heading here", "\n\\&.SH is no heading here\n"},
      {"'quoted' at the line's begin", "\n\\&'quoted' at the line's begin\n"},
      {"a back\\slash", "\na back\\eslash\n"},
      {"use --help", "\nuse \\-\\-help\n"},
      {"Bid,Ask, all", "\nBid,\\:Ask,\\: all\n"},
  };
  for (const auto& [text, written] : kCases) {
    SCOPED_TRACE(text);
    EXPECT_THAT(PageWithDescription(text), HasSubstr(written));
  }
}

TEST(ManPage, FillsProseAndLeavesColumnsAsTheyAre) {
  const std::string page = PageWithDescription("Prose\nof two lines.\n\nExamples:\n  tool --a  b");
  EXPECT_THAT(page, HasSubstr(".PP\nProse\nof two lines.\n.PP\n.nf\nExamples:\n  tool \\-\\-a  b\n.fi\n"));
}

TEST(ManPage, ShowsValueRangeAndDefaultOfAnOption) {
  CommandFacts facts;
  facts.name = "tool";
  OptionFacts port;
  port.names = {"-p", "--port"};
  port.value = "N";
  port.range = "1 to 65535";
  port.assumed = "16239";
  port.meaning = "The port";
  facts.options = {port};
  EXPECT_THAT(PageOf(facts), HasSubstr(".TP\n\\fB\\-p\\fR, \\fB\\-\\-port\\fR \\fIN\\fR\n"
                                       "The port (1 to 65535). Without it: 16239\n"));
}

TEST(ManPage, ShowsArgumentsInTheSynopsis) {
  CommandFacts facts;
  facts.name = "tool";
  OptionFacts tickers, file;
  tickers.value = "TICKER";
  tickers.required = tickers.many = true;
  file.value = "FILE";
  facts.arguments = {tickers, file};
  EXPECT_THAT(PageOf(facts), HasSubstr(".SH SYNOPSIS\n\\fBtool\\fR \\fITICKER\\fR... [\\fIFILE\\fR]\n"));
}

TEST(ManPage, SaysHelpOfTheProgramOnly) {
  command_line::Program tree("tool", "");
  tree.AddCommand("go", "Go");
  const std::string page = PageOf(FactsOf(tree));
  const std::string help = "\\-\\-help";
  EXPECT_NE(page.find(help), std::string::npos);
  EXPECT_EQ(page.find(help), page.rfind(help));
}

TEST(ManPage, LeavesOutSectionsThatHoldNothing) {
  const std::string page = PageWithDescription("Does it.");
  for (const char* section : {".SH COMMANDS", ".SH FILES", ".SH EXAMPLES", "SEE ALSO"}) {
    EXPECT_THAT(page, Not(HasSubstr(section)));
  }
}

TEST(ManPage, ShowsFilesExamplesAndOtherPages) {
  CommandFacts facts;
  facts.name = "tool";
  PageNotes notes;
  notes.files = {{"~/.tool", "Its settings."}};
  notes.examples = {{"tool -a", "Does a."}};
  notes.see_also = {"one(1)", "other(5)"};
  const std::string page = ManPage(facts, notes);
  EXPECT_THAT(page, HasSubstr(".SH FILES\n.TP\n\\fB~/.tool\\fR\nIts settings.\n"));
  EXPECT_THAT(page, HasSubstr(".SH EXAMPLES\n.TP\n\\fBtool \\-a\\fR\nDoes a.\n"));
  EXPECT_THAT(page, HasSubstr(".SH \"SEE ALSO\"\n.BR one (1),\n.BR other (5)\n"));
}

// The page as a reader sees its words.
std::string Words(std::string page) {
  for (const std::string escape : {"\\fB", "\\fI", "\\fR", "\\:"}) {
    for (auto at = page.find(escape); at != std::string::npos; at = page.find(escape)) {
      page.erase(at, escape.size());
    }
  }
  std::erase(page, '\\');
  return page;
}

TEST(ManPageOfMirelo, HasEveryCommandWithEveryOption) {
  MireloProgram program;
  const CommandFacts facts = FactsOf(program.tree());
  ASSERT_GE(facts.commands.size(), 8U);
  const std::string page = Words(PageOf(facts));
  Walk(facts, [&](const CommandFacts& command) {
    const bool top = &command == &facts;
    const auto begin = page.find(top ? ".SH OPTIONS" : ".SS " + command.name + " ");
    ASSERT_NE(begin, std::string::npos) << command.name;
    const std::string section = page.substr(begin, page.find("\n.S", begin + 1) - begin);
    for (const auto& option : command.options) {
      const std::string& name = option.names.back();
      if (name == "--help" && !top) continue;
      EXPECT_THAT(section, HasSubstr(name)) << command.name;
    }
    for (const auto& argument : command.arguments) {
      EXPECT_THAT(section, HasSubstr(".TP\n" + argument.value)) << command.name;
    }
  });
}

}  // namespace
}  // namespace mirelo::app
