// What every command has in common, asked of the program itself.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "app/mirelo_program.h"
#include "app/program.h"
#include "automation/text.h"
#include "command_line/command_facts.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

using command_line::CommandFacts;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

class CommandLine : public ::testing::Test {
 protected:
  ProgramResult Run(const std::vector<std::string>& arguments) {
    return RunMirelo(folder_.path(), arguments);
  }

  // Below what it does, how it is called, with what, and what can be chosen below it.
  void ExpectHelpOf(const CommandFacts& command) {
    SCOPED_TRACE(command.name);
    std::vector<std::string> words = Split(command.name + " --help", " ");
    words.erase(words.begin());  // the program's name
    const auto result = Run(words);

    EXPECT_EQ(result.exit_code, 0);
    EXPECT_THAT(result.err, IsEmpty());
    EXPECT_THAT(command.meaning, Not(IsEmpty()));
    const std::string help = InALine(result.out);
    EXPECT_THAT(help, StartsWith(InALine(command.meaning) + " Usage: " + command.name + " [OPTIONS]"));
    for (const auto& option : command.options) {
      EXPECT_THAT(result.out, HasSubstr("\n  " + Join(option.names, ",") + " ")) << "an option";
      EXPECT_THAT(help, HasSubstr(option.meaning)) << option.names.back();
    }
    for (const auto& argument : command.arguments) EXPECT_THAT(help, HasSubstr(argument.meaning));
    ExpectList(command.commands, result.out);
  }

  static void ExpectList(const std::vector<CommandFacts>& commands, const std::string& help) {
    for (const auto& command : commands) {
      EXPECT_THAT(help, HasSubstr("\n  " + std::string(command.OwnName()) + "  ")) << "a command";
      EXPECT_THAT(InALine(help),
                  HasSubstr(' ' + std::string(command.OwnName()) + ' ' + InALine(command.meaning)));
    }
  }

  // Lines of a terminal, and what is in columns of them, as a sentence.
  static std::string InALine(const std::string& lines) {
    return std::regex_replace(lines, std::regex("\\s+"), " ");
  }

  TempDirectory folder_;
};

TEST_F(CommandLine, PrintsTheVersion) {
  const auto result = Run({"--version"});
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_THAT(result.out, StartsWith("mirelo "));
}

TEST_F(CommandLine, HelpsWithEveryCommand) {
  const auto program = FactsOf(app::MireloProgram().tree());
  ASSERT_THAT(program.commands, Not(IsEmpty()));
  for (const auto& chosen : program.commands)
    Walk(chosen, [&](const auto& command) { ExpectHelpOf(command); });
}

TEST_F(CommandLine, ListsItsCommandsAndTellsItsExitCodes) {
  const auto program = FactsOf(app::MireloProgram().tree());
  const auto result = Run({"--help"});
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_THAT(result.err, IsEmpty());
  ExpectList(program.commands, result.out);
  EXPECT_THAT(InALine(result.out),
              HasSubstr("Exit codes: 0 good, 1 the operation failed, 2 wrong usage, 141 whoever read the "
                        "output reads no more."));
}

TEST_F(CommandLine, EndsWithTwoWhenItIsNotUnderstood) {
  const std::vector<std::vector<std::string>> wrong{{},
                                                    {"dance"},
                                                    {"quotes"},
                                                    {"quotes", "MSFT", "--csv", "--json"},
                                                    {"quotes", "A(B"},
                                                    {"quotes", "MSFT", "--http-port", "0"},
                                                    {"quotes", "MSFT", "--address", ""},
                                                    {"quotes", "MSFT", "--columns", ""},
                                                    {"stream", "MSFT", "--address", ""},
                                                    {"run"},
                                                    {"run", "--demo", "--for", "soon"},
                                                    {"run", "--window", "--through", "calc"},
                                                    {"stream"},
                                                    {"stream", "MSFT", "--seconds", "0"},
                                                    {"settings"},
                                                    {"show"},
                                                    {"show", "a.xlsx", "--rows", "-1"}};
  for (const auto& arguments : wrong) {
    SCOPED_TRACE(::testing::PrintToString(arguments));
    const auto result = Run(arguments);
    EXPECT_EQ(result.exit_code, 2);
    EXPECT_THAT(result.out, IsEmpty());
    EXPECT_THAT(result.err, Not(IsEmpty()));
  }
}

TEST_F(CommandLine, SaysWhereTickersGo) {
  for (const char* command : {"run", "go"}) {
    const auto result = Run({command, "MSFT", "IBM"});
    EXPECT_EQ(result.exit_code, 2);
    EXPECT_THAT(result.err, HasSubstr(std::string("Tickers go behind --tickers: mirelo ") + command +
                                      " --tickers MSFT,IBM\n"));
  }
  EXPECT_THAT(Run({"run", "--tcikers", "MSFT"}).err, Not(HasSubstr("Tickers go behind")));
}

TEST_F(CommandLine, SaysHowAnOptionIsGivenForAnotherValue) {
  const struct {
    const char* option;
    const char* first;
    const char* second;
  } cases[] = {{"--set", "Seconds=15", "RowsLimit=0"},
               {"--tick", "MSFT:Last", "MSFT:Charts"},
               {"--also", "a.db", "b.csv"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.option);
    const std::string option = c.option;
    const auto result = Run({"run", option, c.first, c.second});
    EXPECT_EQ(result.exit_code, 2);
    EXPECT_THAT(result.err, HasSubstr(option + " takes one value each time: write " + option +
                                      " once more, in front of " + c.second + "\n"));
    EXPECT_THAT(Run({"run", c.second}).err, HasSubstr("Tickers go behind")) << "without the option";
  }
}

TEST_F(CommandLine, ReadsNoSettingsForHelp) {
  Run({"quotes", "--help"});
  EXPECT_FALSE(std::filesystem::exists(folder_ / "home/.local"));
}

TEST_F(CommandLine, NamesTheRegistryFileThatCannotBeUsed) {
  const auto result = Run({"--registry", "/proc/nothing/registry.db", "settings", "list"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, HasSubstr("/proc/nothing/registry.db"));
}

}  // namespace
}  // namespace mirelo::testing
