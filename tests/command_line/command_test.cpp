// What command lines are read into, and what those are told that are refused.

#include "command_line/command.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace mirelo::command_line {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

// Has the program read these words behind its name.
std::optional<Ending> Read(Program& program, std::vector<const char*> words) {
  words.insert(words.begin(), "tool");
  return program.Read(static_cast<int>(words.size()), words.data());
}

// What the program has against these words; empty where it takes them.
std::string Refusal(Program& program, std::vector<const char*> words) {
  const auto ending = Read(program, std::move(words));
  if (!ending) return {};
  EXPECT_FALSE(ending->is_asked_for);
  return ending->text;
}

std::string Refusal(const std::function<void(Program&)>& describe, std::vector<const char*> words) {
  Program program("tool", "");
  describe(program);
  return Refusal(program, std::move(words));
}

std::string Help(Program& program) {
  const auto ending = Read(program, {"--help"});
  return ending && ending->is_asked_for ? ending->text : std::string();
}

TEST(CommandLine, IsReadIntoVariablesOfEachType) {
  Program program("tool", "");
  std::string text;
  int number = 0;
  double share = 0;
  std::uint16_t port = 0;
  std::uint64_t seed = 0;
  std::filesystem::path file;
  std::optional<std::filesystem::path> other;
  std::vector<std::string> words;
  std::vector<std::filesystem::path> files;
  bool flag = false;
  program.AddOption("--text", text, "");
  program.AddOption("--number", number, "");
  program.AddOption("--share", share, "");
  program.AddOption("--port", port, "");
  program.AddOption("--seed", seed, "");
  program.AddOption("--file", file, "");
  program.AddOption("--other", other, "");
  program.AddOption("--also", files, "").Repeats();
  program.AddFlag("--flag", flag, "");
  program.AddArgument("WORD", words, "");
  EXPECT_FALSE(Read(program, {"--text", "a b",    "--number", "-7",     "--share",
                              "0.25",   "--port", "65535",    "--seed", "18446744073709551615",
                              "--file", "x.db",   "--other",  "y.db",   "--flag",
                              "--also", "p.csv",  "--also",   "q.db",   "one",
                              "two"}));
  EXPECT_EQ(text, "a b");
  EXPECT_EQ(number, -7);
  EXPECT_EQ(share, 0.25);
  EXPECT_EQ(port, 65535);
  EXPECT_EQ(seed, UINT64_MAX);
  EXPECT_EQ(file, "x.db");
  EXPECT_EQ(other, "y.db");
  EXPECT_THAT(files, ElementsAre("p.csv", "q.db"));
  EXPECT_TRUE(flag);
  EXPECT_THAT(words, ElementsAre("one", "two"));
}

TEST(CommandLine, LeavesVariablesThatItDoesNotName) {
  Program program("tool", "");
  std::string text = "as it was";
  std::optional<std::filesystem::path> file;
  bool flag = false;
  const Option option = program.AddOption("--text", text, "");
  program.AddOption("--file", file, "");
  program.AddFlag("--flag", flag, "");
  EXPECT_FALSE(Read(program, {}));
  EXPECT_EQ(text, "as it was");
  EXPECT_FALSE(file);
  EXPECT_FALSE(flag);
  EXPECT_FALSE(option.IsGiven());
}

TEST(CommandLine, IsOfTheCommandThatItNames) {
  Program program("tool", "");
  program.RequireCommand();
  Command list = program.AddCommand("list", "");
  list.RequireCommand();
  const Command add = list.AddCommand("add", "");
  const Command show = list.AddCommand("show", "");
  const Command other = program.AddCommand("other", "");
  EXPECT_FALSE(Read(program, {"list", "show"}));
  EXPECT_TRUE(list.IsChosen());
  EXPECT_TRUE(show.IsChosen());
  EXPECT_FALSE(add.IsChosen());
  EXPECT_FALSE(other.IsChosen());
  ASSERT_EQ(program.Chosen().size(), 1U);
  EXPECT_EQ(program.Chosen()[0].Name(), "list");
}

TEST(CommandLine, IsRefusedWithoutACommandThatItNeeds) {
  const auto describe = [](Program& program) {
    program.RequireCommand();
    program.AddCommand("go", "");
  };
  EXPECT_EQ(Refusal(describe, {"go"}), "");
  EXPECT_NE(Refusal(describe, {}), "");
  EXPECT_NE(Refusal(describe, {"come"}), "");
}

TEST(CommandLine, HasOptionsOfTheProgramBehindACommandWhereItTakesThemAnywhere) {
  for (const bool anywhere : {false, true}) {
    Program program("tool", "");
    std::string registry;
    if (anywhere) program.TakeOptionsAnywhere();
    program.AddOption("--registry", registry, "");
    program.AddCommand("go", "");
    EXPECT_EQ(Refusal(program, {"go", "--registry", "x.db"}).empty(), anywhere);
    EXPECT_EQ(registry, anywhere ? "x.db" : "");
  }
}

TEST(CommandLine, IsRefusedForAValueThatACheckFindsWrong) {
  const auto describe = [](Program& program) {
    static std::vector<std::string> words;
    program.AddOption("--word", words, "").Check([](const std::string& word) {
      return word == "bad" ? "\"" + word + "\" is no word" : std::string();
    });
  };
  EXPECT_EQ(Refusal(describe, {"--word", "good", "better"}), "");
  EXPECT_EQ(Refusal(describe, {"--word", "good", "bad"}), "--word: \"bad\" is no word");
}

TEST(CommandLine, IsRefusedForANumberOutOfItsBounds) {
  const auto refuses = [](const std::function<void(Option)>& bound, const char* value) {
    double number = 0;
    return !Refusal([&](Program& program) { bound(program.AddOption("--n", number, "")); }, {"--n", value})
                .empty();
  };
  for (const Told told : {Told::kInHelp, Told::kNowhere}) {
    const auto whole = [&](Option option) { option.Between(1, 9, told); };
    EXPECT_TRUE(refuses(whole, "0"));
    EXPECT_FALSE(refuses(whole, "1"));
    EXPECT_FALSE(refuses(whole, "9"));
    EXPECT_TRUE(refuses(whole, "10"));
    const auto share = [&](Option option) { option.Between(0.5, 1.5, told); };
    EXPECT_TRUE(refuses(share, "0.4"));
    EXPECT_FALSE(refuses(share, "1.5"));
  }
  const auto positive = [](Option option) { option.Positive(); };
  EXPECT_TRUE(refuses(positive, "0"));
  EXPECT_FALSE(refuses(positive, "0.1"));
  const auto not_negative = [](Option option) { option.NotNegative(); };
  EXPECT_TRUE(refuses(not_negative, "-0.1"));
  EXPECT_FALSE(refuses(not_negative, "0"));
  EXPECT_TRUE(refuses(not_negative, "none"));
}

TEST(CommandLine, IsRefusedForATextThatIsNoneOfThoseToChooseFrom) {
  std::string kind;
  const auto describe = [&](Program& program) { program.AddOption("--kind", kind, "").OneOf({"a", "b"}); };
  EXPECT_EQ(Refusal(describe, {"--kind", "b"}), "");
  EXPECT_EQ(kind, "b");
  EXPECT_EQ(Refusal(describe, {"--kind", "c"}), "--kind: c not in {a,b}");
}

TEST(CommandLine, IsRefusedWithOptionsThatExcludeEachOther) {
  bool first = false, second = false;
  const auto describe = [&](Program& program) {
    program.AddFlag("--first", first, "").Excludes(program.AddFlag("--second", second, ""));
  };
  EXPECT_EQ(Refusal(describe, {"--second"}), "");
  EXPECT_EQ(Refusal(describe, {"--first", "--second"}), "--first excludes --second");
}

// The heap hands out last what it was given back first, so that what is made later stands lower in it.
void HaveTheHeapGrowDown() {
  std::vector<std::unique_ptr<char[]>> blocks;
  for (std::size_t size = 16; size <= 1024; size += 16) {
    for (int i = 0; i < 7; ++i) blocks.push_back(std::make_unique<char[]>(size));
  }
  for (auto& block : blocks) block.reset();
}

TEST(CommandLine, IsRefusedByTheFirstOptionsThatExcludeEachOther) {
  HaveTheHeapGrowDown();
  bool flag = false;
  const auto describe = [&](Program& program) {
    Command show = program.AddCommand("show", "");
    Option list = show.AddFlag("--list", flag, "");
    for (const char* name : {"--sheet", "--all", "--range"}) list.Excludes(show.AddFlag(name, flag, ""));
  };
  EXPECT_EQ(Refusal(describe, {"show", "--range", "--all", "--sheet", "--list"}), "--list excludes --sheet");
  EXPECT_EQ(Refusal(describe, {"show", "--range", "--all", "--list"}), "--list excludes --all");
}

TEST(CommandLine, KnowsWhichOptionMustBeGivenOnceMoreToTakeAWord) {
  Program program("tool", "");
  Command go = program.AddCommand("go", "");
  std::vector<std::string> settings, files, others;
  go.AddOption("--file", files, "").Repeats([](const std::string& word) { return word.ends_with(".db"); });
  go.AddOption("--set", settings, "").Repeats([](const std::string& word) {
    return word.find('=') != word.npos;
  });
  go.AddOption("--other", others, "").Repeats();
  const auto ending = Read(program, {"go", "--set", "a=1", "--other", "x", "b=2"});
  ASSERT_TRUE(ending);
  EXPECT_EQ(ending->left_over, std::vector<std::string>{"b=2"});
  EXPECT_EQ(go.OptionToRepeat("b=2"), "--set");
  EXPECT_EQ(go.OptionToRepeat("c.db"), "") << "--file was not given";
  EXPECT_EQ(go.OptionToRepeat("y"), "") << "nobody knows what values of --other look like";
  EXPECT_EQ(settings, std::vector<std::string>{"a=1"}) << "and what is given is taken whatever it looks like";
  EXPECT_EQ(others, std::vector<std::string>{"x"});
}

TEST(CommandLine, IsRefusedWithoutWhatIsRequired) {
  std::string file;
  const auto describe = [&](Program& program) { program.AddArgument("FILE", file, "").Require(); };
  EXPECT_EQ(Refusal(describe, {}), "FILE is required");
  EXPECT_EQ(Refusal(describe, {"x"}), "");
}

TEST(CommandLine, IsRefusedAtItsEndByTheCommandThatItChooses) {
  Program program("tool", "");
  std::string file = "usual.ods";
  Command go = program.AddCommand("go", "");
  program.AddCommand("stay", "");
  const Option option = go.AddOption("--file", file, "");
  std::vector<std::string> asked;
  go.WhenRead(option, [&] {
    asked.push_back(file + (option.IsGiven() ? " given" : ""));
    return file == "bad" ? "cannot be" : "";
  });
  EXPECT_EQ(Refusal(program, {"stay"}), "");
  EXPECT_THAT(asked, IsEmpty());
  EXPECT_EQ(Refusal(program, {"go"}), "");
  EXPECT_EQ(Refusal(program, {"go", "--file", "bad"}), "--file: cannot be");
  EXPECT_THAT(asked, ElementsAre("usual.ods", "bad given"));
}

TEST(CommandLine, TellsWordsThatNothingTakes) {
  Program program("tool", "");
  std::string tickers;
  program.AddCommand("run", "").AddOption("--tickers", tickers, "");
  const auto ending = Read(program, {"run", "MSFT", "IBM"});
  ASSERT_TRUE(ending);
  EXPECT_FALSE(ending->is_asked_for);
  EXPECT_THAT(ending->left_over, ElementsAre("MSFT", "IBM"));
  ASSERT_EQ(program.Chosen().size(), 1U);
  EXPECT_TRUE(program.Chosen()[0].Has("--tickers"));
  EXPECT_FALSE(program.Chosen()[0].Has("--list"));
}

TEST(CommandLine, SplitsWordsOfSeveralValues) {
  Program program("tool", "");
  std::vector<std::string> columns;
  program.AddOption("--columns", columns, "").SplitAt(',');
  EXPECT_FALSE(Read(program, {"--columns", "Last,Bid", "Ask"}));
  EXPECT_THAT(columns, ElementsAre("Last", "Bid", "Ask"));
}

TEST(CommandLine, TakesOneValueEachTimeAnOptionIsRepeated) {
  Program program("tool", "");
  std::vector<std::string> files, rest;
  program.AddOption("--also", files, "").Repeats();
  program.AddArgument("REST", rest, "");
  EXPECT_FALSE(Read(program, {"--also", "a.db", "more", "--also", "b.db"}));
  EXPECT_THAT(files, ElementsAre("a.db", "b.db"));
  EXPECT_THAT(rest, ElementsAre("more"));
}

TEST(CommandLine, MayLackAValue) {
  for (const bool has_value : {false, true}) {
    Program program("tool", "");
    std::vector<std::string> fields;
    const Option option = program.AddOption("--history", fields, "").ValueMayLack();
    EXPECT_FALSE(has_value ? Read(program, {"--history", "Last"}) : Read(program, {"--history"}));
    EXPECT_TRUE(option.IsGiven());
    EXPECT_EQ(fields, std::vector<std::string>({has_value ? "Last" : ""}));
  }
}

TEST(CommandLine, KnowsWhichOptionsOfACommandItHas) {
  Program program("tool", "");
  Command calc = program.AddCommand("calc", "");
  std::string file, tickers, list;
  bool demo = false;
  calc.AddArgument("FILE", file, "");
  calc.AddOption("-t,--tickers", tickers, "");
  calc.AddOption("--list", list, "");
  calc.AddFlag("--demo", demo, "");
  EXPECT_FALSE(Read(program, {"calc", "--demo", "x.ods", "-t", "MSFT"}));
  EXPECT_THAT(calc.GivenOptions(), ElementsAre("--tickers", "--demo"));
  EXPECT_TRUE(calc.Find("--tickers").IsGiven());
  EXPECT_FALSE(calc.Find("--list").IsGiven());
  EXPECT_TRUE(calc.Find("FILE").IsGiven());
}

TEST(Help, NamesWhatAnOptionExcludesByTheAlphabet) {
  Program program("tool", "");
  Command show = program.AddCommand("show", "");
  bool list = false, other = false;
  Option shown = show.AddFlag("--list", list, "");
  for (const char* name : {"--sheet", "--all", "--range", "--comments", "--format"})
    shown.Excludes(show.AddFlag(name, other, ""));
  const char* const arguments[] = {"tool", "show", "--help"};
  const auto help = program.Read(3, arguments);
  ASSERT_TRUE(help);
  EXPECT_THAT(help->text, HasSubstr("--list Excludes: --all --comments --format --range --sheet\n"));
  EXPECT_THAT(help->text, HasSubstr("--all Excludes: --list "));
}

TEST(Help, TellsOfEachOptionWhatHoldsForItsValue) {
  Program program("tool", "It does.");
  program.DescribeHelp("Print this");
  program.AddVersion("tool 1.2", "Say which");
  program.Footer("At the end.");
  std::string file = "usual.db", kind, level;
  int port = 0;
  double share = 0;
  std::vector<std::string> words, one;
  program.AddOption("--file", file, "").ValueName("FILE").ShowDefault();
  program.AddOption("--port", port, "").Between(1, 65535);
  program.AddOption("--share", share, "").Between(0.5, 1.5, Told::kNowhere);
  program.AddOption("--kind", kind, "").OneOf({"a", "b"});
  program.AddOption("--level", level, "").OneOf({"low", "high"}, Told::kNowhere);
  program.AddOption("--words", words, "");
  program.AddOption("--one", one, "").Repeats();
  const std::string help = Help(program);
  EXPECT_THAT(help, HasSubstr("It does.\nUsage: tool [OPTIONS]\n"));
  EXPECT_THAT(help, HasSubstr("Print this\n"));
  EXPECT_THAT(help, HasSubstr("--version"));
  EXPECT_THAT(help, HasSubstr("--file FILE=usual.db  "));
  EXPECT_THAT(help, HasSubstr("--port INT:INT in [1 - 65535]\n"));
  EXPECT_THAT(help, HasSubstr("--share FLOAT  "));
  EXPECT_THAT(help, HasSubstr("--kind TEXT:{a,b}  "));
  EXPECT_THAT(help, HasSubstr("--level TEXT  "));
  EXPECT_THAT(help, HasSubstr("--words TEXT ...  "));
  EXPECT_THAT(help, HasSubstr("--one TEXT  "));
  EXPECT_THAT(help, HasSubstr("\nAt the end.\n"));
}

TEST(Help, IsThatOfTheCommandItIsAskedOf) {
  Program program("tool", "The tool.");
  program.AddCommand("go", "It goes.");
  const auto ending = Read(program, {"go", "--help"});
  ASSERT_TRUE(ending);
  EXPECT_TRUE(ending->is_asked_for);
  EXPECT_THAT(ending->text, HasSubstr("It goes.\nUsage: tool go [OPTIONS]\n"));
  EXPECT_THAT(ending->text, Not(HasSubstr("The tool.")));
}

TEST(Version, IsToldInALine) {
  Program program("tool", "");
  program.AddVersion("tool 1.2", "Say which");
  const auto ending = Read(program, {"--version"});
  ASSERT_TRUE(ending);
  EXPECT_TRUE(ending->is_asked_for);
  EXPECT_EQ(ending->text, "tool 1.2\n");
}

// A program is described by a function and kept by whoever has it read.
TEST(Program, IsTheSameWhereItIsMovedTo) {
  bool flag = false;
  Program described("tool", "");
  described.AddFlag("--flag", flag, "");
  Program program = std::move(described);
  EXPECT_FALSE(Read(program, {"--flag"}));
  EXPECT_TRUE(flag);
}

}  // namespace
}  // namespace mirelo::command_line
