// The scripts for shells, as texts. tests/packaging has shells run them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/manual/bash_completion.h"
#include "app/manual/fish_completion.h"
#include "app/manual/inherited_options.h"
#include "app/manual/zsh_completion.h"

namespace mirelo::app {
namespace {

using command_line::CommandFacts;
using command_line::OptionFacts;
using ::testing::AllOf;
using ::testing::HasSubstr;

OptionFacts Option(std::vector<std::string> names, std::string value, std::string meaning) {
  OptionFacts option;
  option.names = std::move(names);
  option.value = std::move(value);
  option.meaning = std::move(meaning);
  return option;
}

// tool [--verbose] [--registry FILE] with the command set NAME.
CommandFacts Tool() {
  CommandFacts tool, set;
  tool.name = "my-tool";
  tool.options = {Option({"--verbose"}, "", "Say more"), Option({"--registry"}, "FILE", "Another's file")};
  set.name = "my-tool set";
  set.meaning = "Store";
  OptionFacts name;
  name.value = "NAME";
  name.words = {"Seconds", "Style"};
  set.arguments = {name};
  tool.commands = {set};
  return tool;
}

TEST(InheritedOptions, AreTheProgramsThatTakeAValue) {
  const CommandFacts tool = Tool();
  const auto options = WithInherited(tool.commands[0], tool);
  ASSERT_EQ(options.size(), 1U);
  EXPECT_EQ(options[0].names[0], "--registry");
  EXPECT_EQ(WithInherited(tool, tool).size(), 2U);
}

TEST(ZshCompletion, OffersCommandsWordsAndOptionsWithTheirMeanings) {
  EXPECT_THAT(ZshCompletion(Tool()),
              AllOf(HasSubstr("#compdef my-tool\n"), HasSubstr("'set:Store'"), HasSubstr("'Seconds' 'Style'"),
                    HasSubstr("'--registry:Another'\\''s file'")));
}

TEST(ZshCompletion, LeavesValuesOfOptionsToTheShell) {
  EXPECT_THAT(ZshCompletion(Tool()),
              HasSubstr("('my-tool --registry'|'my-tool set --registry') _files; return ;;"));
}

TEST(BashCompletion, HasAFunctionOfANameThatShellsTake) {
  EXPECT_THAT(BashCompletion(Tool()),
              AllOf(HasSubstr("\n_my_tool() {"), HasSubstr("\ncomplete -o default -F _my_tool my-tool\n")));
}

TEST(BashCompletion, OffersCommandsWordsAndOptions) {
  EXPECT_THAT(BashCompletion(Tool()), AllOf(HasSubstr("'my-tool') words='set --verbose --registry'"),
                                            HasSubstr("'my-tool set') words='Seconds Style --registry'")));
}

TEST(BashCompletion, HasNoLoopWithoutCommands) {
  CommandFacts tool = Tool();
  tool.commands.clear();
  EXPECT_THAT(BashCompletion(tool), ::testing::Not(HasSubstr("for ((")));
}

TEST(BashCompletion, HasNoPatternWithoutValues) {
  CommandFacts tool = Tool();
  tool.options.pop_back();
  EXPECT_THAT(BashCompletion(tool), ::testing::Not(HasSubstr("COMP_CWORD - 1")));
}

TEST(FishCompletion, QuotesMeanings) {
  EXPECT_THAT(FishCompletion(Tool()),
              HasSubstr("complete -c my-tool -l registry -r -d 'Another\\'s file'\n"));
}

TEST(FishCompletion, OffersCommandsWhereNoneWasChosen) {
  EXPECT_THAT(FishCompletion(Tool()),
              HasSubstr("complete -c my-tool -f -n '__fish_use_subcommand' -a set -d 'Store'\n"));
}

TEST(FishCompletion, OffersWordsBehindTheirCommand) {
  EXPECT_THAT(FishCompletion(Tool()),
              HasSubstr("complete -c my-tool -f -n '__fish_seen_subcommand_from set' -a 'Style'\n"));
}

}  // namespace
}  // namespace mirelo::app
