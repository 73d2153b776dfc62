// What manuals are made of: the tree of a program's options.

#include "app/manual/command_facts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <CLI/CLI.hpp>

namespace mirelo::app {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// An option added to a program of its own, as facts.
template <class Value>
OptionFacts FactsOfOption(
    const std::string& name, Value value,
    const std::function<void(CLI::Option&)>& adjust = [](CLI::Option&) {}) {
  CLI::App tree("", "tool");
  tree.set_help_flag();
  adjust(*tree.add_option(name, value, "What it is"));
  const CommandFacts facts = FactsOf(tree);
  return facts.options.empty() ? facts.arguments.at(0) : facts.options.at(0);
}

TEST(CommandFacts, NameCommandsWithThoseAboveThem) {
  CLI::App tree("", "tool");
  tree.add_subcommand("settings", "")->add_subcommand("set", "Store a value");
  const CommandFacts facts = FactsOf(tree);
  const CommandFacts& set = facts.commands.at(0).commands.at(0);
  EXPECT_EQ(set.name, "tool settings set");
  EXPECT_EQ(set.OwnName(), "set");
  EXPECT_EQ(facts.OwnName(), "tool");
  EXPECT_EQ(set.meaning, "Store a value");
}

TEST(CommandFacts, VisitCommandsFromAboveDown) {
  CLI::App tree("", "tool");
  tree.add_subcommand("a", "")->add_subcommand("b", "");
  tree.add_subcommand("c", "");
  std::vector<std::string> names;
  Walk(FactsOf(tree), [&](const CommandFacts& command) { names.push_back(command.name); });
  EXPECT_THAT(names, ElementsAre("tool", "tool a", "tool a b", "tool c"));
}

TEST(CommandFacts, SayAFooterOnce) {
  CLI::App tree("", "tool");
  tree.footer("Examples: none");
  CLI::App* plain = tree.add_subcommand("plain", "");
  CLI::App* other = tree.add_subcommand("other", "");
  other->footer("More of this one");
  ASSERT_EQ(plain->get_footer(), tree.get_footer());
  const CommandFacts facts = FactsOf(tree);
  EXPECT_EQ(facts.footer, "Examples: none");
  EXPECT_EQ(facts.commands.at(0).footer, "");
  EXPECT_EQ(facts.commands.at(1).footer, "More of this one");
}

TEST(CommandFacts, TellOptionsFromArguments) {
  CLI::App tree("", "tool");
  std::string text;
  tree.add_option("-w,--workbook", text, "The file");
  tree.add_option("TICKER", text, "The ticker")->required();
  const CommandFacts facts = FactsOf(tree);
  EXPECT_THAT(facts.options.back().names, ElementsAre("-w", "--workbook"));
  EXPECT_EQ(facts.options.back().value, "TEXT");
  ASSERT_EQ(facts.arguments.size(), 1U);
  EXPECT_THAT(facts.arguments[0].names, IsEmpty());
  EXPECT_EQ(facts.arguments[0].value, "TICKER");
  EXPECT_TRUE(facts.arguments[0].required);
}

TEST(CommandFacts, GiveFlagsNoValue) {
  CLI::App tree("", "tool");
  bool watch = false;
  tree.add_flag("--watch", watch, "Ask again");
  EXPECT_EQ(FactsOf(tree).options.back().value, "");
}

TEST(CommandFacts, SayInWhichRangeAValueLies) {
  const auto range = [](const CLI::Validator& check) {
    return FactsOfOption("--n", 0, [&](CLI::Option& option) { option.check(check); }).range;
  };
  EXPECT_EQ(range(CLI::Range(1, 65535)), "1 to 65535");
  EXPECT_EQ(range(CLI::PositiveNumber), "above 0");
  EXPECT_EQ(range(CLI::NonNegativeNumber), "0 or above");
  EXPECT_EQ(FactsOfOption("--n", 0).range, "");
  EXPECT_EQ(FactsOfOption("--n", 0).value, "N");
}

TEST(CommandFacts, KeepTheTypeNameThatTheOptionWasGiven) {
  const auto facts =
      FactsOfOption("--replay", std::string(), [](CLI::Option& option) { option.type_name("FILE"); });
  EXPECT_EQ(facts.value, "FILE");
}

TEST(CommandFacts, KnowDefaultsThatAreShown) {
  const auto facts =
      FactsOfOption("--book", std::string(), [](CLI::Option& option) { option.default_str("quotes.xlsx"); });
  EXPECT_EQ(facts.assumed, "quotes.xlsx");
}

TEST(CommandFacts, KnowWhatTakesManyValues) {
  EXPECT_TRUE(FactsOfOption("TICKER", std::vector<std::string>()).many);
  EXPECT_FALSE(FactsOfOption("NAME", std::string()).many);
  // One that is repeated takes one value each time.
  EXPECT_FALSE(FactsOfOption("--set", std::vector<std::string>(), [](CLI::Option& option) {
                 option.expected(1)->take_all();
               }).many);
}

TEST(CommandFacts, JoinDescriptionsThatWereBrokenForATerminal) {
  CLI::App tree("", "tool");
  bool flag = false;
  tree.add_flag("--flag", flag, "one\ntwo");
  EXPECT_EQ(FactsOf(tree).options.back().meaning, "one two");
}

}  // namespace
}  // namespace mirelo::app
