// What every command has in common, asked of the program itself.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/program.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class CommandLine : public ::testing::Test {
 protected:
  ProgramResult Run(const std::vector<std::string>& arguments) {
    return RunMirelo(folder_.path(), arguments);
  }

  TempDirectory folder_;
};

TEST_F(CommandLine, PrintsTheVersion) {
  const auto result = Run({"--version"});
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_THAT(result.out, StartsWith("mirelo "));
}

TEST_F(CommandLine, HelpsWithEveryCommand) {
  for (const char* command : {"quotes", "run", "dialog", "open", "go", "settings", "show", "sources",
                              "stream", "list", "credentials"}) {
    SCOPED_TRACE(command);
    EXPECT_THAT(Run({"--help"}).out, HasSubstr(command));
    const auto result = Run({command, "--help"});
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_THAT(result.out, HasSubstr("--help"));
    EXPECT_THAT(result.err, IsEmpty());
  }
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
    EXPECT_THAT(result.err, ::testing::Not(IsEmpty()));
  }
}

TEST_F(CommandLine, SaysWhereTickersGo) {
  for (const char* command : {"run", "go"}) {
    const auto result = Run({command, "MSFT", "IBM"});
    EXPECT_EQ(result.exit_code, 2);
    EXPECT_THAT(result.err, HasSubstr(std::string("Tickers go behind --tickers: mirelo ") + command +
                                      " --tickers MSFT,IBM\n"));
  }
  EXPECT_THAT(Run({"run", "--tcikers", "MSFT"}).err, ::testing::Not(HasSubstr("Tickers go behind")));
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
