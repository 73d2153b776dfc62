// What manuals are made of: all that a command says of itself.

#include "command_line/command_facts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command_line/command.h"

namespace mirelo::command_line {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// An option added to a program of its own, as facts.
template <class Value>
OptionFacts FactsOfOption(
    const std::string& name, Value value, const std::function<void(Option)>& adjust = [](Option) {}) {
  Program tree("tool", "");
  adjust(tree.AddOption(name, value, "What it is"));
  const CommandFacts facts = FactsOf(tree);
  return facts.arguments.empty() ? facts.options.back() : facts.arguments.at(0);
}

TEST(CommandFacts, NameCommandsWithThoseAboveThem) {
  Program tree("tool", "");
  tree.AddCommand("settings", "").AddCommand("set", "Store a value");
  const CommandFacts facts = FactsOf(tree);
  const CommandFacts& set = facts.commands.at(0).commands.at(0);
  EXPECT_EQ(set.name, "tool settings set");
  EXPECT_EQ(set.OwnName(), "set");
  EXPECT_EQ(facts.OwnName(), "tool");
  EXPECT_EQ(set.meaning, "Store a value");
}

TEST(CommandFacts, VisitCommandsFromAboveDown) {
  Program tree("tool", "");
  tree.AddCommand("a", "").AddCommand("b", "");
  tree.AddCommand("c", "");
  std::vector<std::string> names;
  Walk(FactsOf(tree), [&](const CommandFacts& command) { names.push_back(command.name); });
  EXPECT_THAT(names, ElementsAre("tool", "tool a", "tool a b", "tool c"));
}

TEST(CommandFacts, SayAFooterOnce) {
  Program tree("tool", "");
  tree.Footer("Examples: none");
  tree.AddCommand("plain", "");
  tree.AddCommand("other", "").Footer("More of this one");
  const CommandFacts facts = FactsOf(tree);
  EXPECT_EQ(facts.footer, "Examples: none");
  EXPECT_EQ(facts.commands.at(0).footer, "");
  EXPECT_EQ(facts.commands.at(1).footer, "More of this one");
}

TEST(CommandFacts, TellOptionsFromArguments) {
  Program tree("tool", "");
  std::string text;
  tree.AddOption("-w,--workbook", text, "The file");
  tree.AddArgument("TICKER", text, "The ticker").Require();
  const CommandFacts facts = FactsOf(tree);
  EXPECT_THAT(facts.options.back().names, ElementsAre("-w", "--workbook"));
  EXPECT_EQ(facts.options.back().value, "TEXT");
  ASSERT_EQ(facts.arguments.size(), 1U);
  EXPECT_THAT(facts.arguments[0].names, IsEmpty());
  EXPECT_EQ(facts.arguments[0].value, "TICKER");
  EXPECT_TRUE(facts.arguments[0].required);
}

TEST(CommandFacts, GiveFlagsNoValue) {
  Program tree("tool", "");
  bool watch = false;
  tree.AddFlag("--watch", watch, "Ask again");
  EXPECT_EQ(FactsOf(tree).options.back().value, "");
}

TEST(CommandFacts, SayInWhichRangeAValueLies) {
  const auto range = [](const std::function<void(Option)>& bound) {
    return FactsOfOption("--n", 0, bound).range;
  };
  EXPECT_EQ(range([](Option option) { option.Between(1, 65535); }), "1 to 65535");
  EXPECT_EQ(range([](Option option) { option.Between(-0.5, 2.5); }), "-0.5 to 2.5");
  EXPECT_EQ(range([](Option option) { option.Between(1, 65535, Told::kNowhere); }), "");
  EXPECT_EQ(range([](Option option) { option.Positive(); }), "above 0");
  EXPECT_EQ(range([](Option option) { option.NotNegative(); }), "0 or above");
  EXPECT_EQ(FactsOfOption("--n", 0).range, "");
  EXPECT_EQ(FactsOfOption("--n", 0).value, "N");
}

TEST(CommandFacts, KeepTheNameThatAValueWasGiven) {
  const auto facts =
      FactsOfOption("--replay", std::string(), [](Option option) { option.ValueName("FILE"); });
  EXPECT_EQ(facts.value, "FILE");
}

TEST(CommandFacts, KnowDefaultsThatAreShown) {
  const auto facts =
      FactsOfOption("--book", std::string("quotes.xlsx"), [](Option option) { option.ShowDefault(); });
  EXPECT_EQ(facts.assumed, "quotes.xlsx");
  EXPECT_EQ(FactsOfOption("--book", std::string("quotes.xlsx")).assumed, "");
}

TEST(CommandFacts, KnowWhatTakesManyValues) {
  EXPECT_TRUE(FactsOfOption("TICKER", std::vector<std::string>()).many);
  EXPECT_FALSE(FactsOfOption("NAME", std::string()).many);
  // One that is repeated takes one value each time.
  const std::vector<std::string> values;
  EXPECT_FALSE(FactsOfOption("--also", values, [](Option option) { option.Repeats(); }).many);
}

TEST(CommandFacts, JoinDescriptionsThatWereBrokenForATerminal) {
  Program tree("tool", "");
  bool flag = false;
  tree.AddFlag("--flag", flag, "one\ntwo");
  EXPECT_EQ(FactsOf(tree).options.back().meaning, "one two");
}

}  // namespace
}  // namespace mirelo::command_line
