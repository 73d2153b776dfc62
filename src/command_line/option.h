#pragma once

#include <functional>
#include <string>
#include <vector>

namespace CLI {
class Option;
}

namespace mirelo::command_line {

// What is wrong with a value, for people; empty where it is good.
using WhyNot = std::function<std::string(const std::string& value)>;

// Whether a word is of some kind.
using IsOfKind = std::function<bool(const std::string& word)>;

// Whether the help tells of a rule by itself, or leaves that to the option's meaning.
enum class Told { kInHelp, kNowhere };

// An option, a flag or an argument of a command. Copies are the same one; it lives as long as its program.
class Option {
 public:
  // How the help calls its value: "FILE". Otherwise by its type: TEXT, INT, UINT or FLOAT.
  Option ValueName(const std::string& name);
  // The help shows the value that the variable has now.
  Option ShowDefault();
  // A command line without it is refused.
  Option Require();

  // Refuses what `why_not` finds something wrong with; of several values, each is asked about.
  Option Check(WhyNot why_not);
  // The value is a number from `least` to `most`.
  Option Between(int least, int most, Told told = Told::kInHelp);
  Option Between(double least, double most, Told told = Told::kInHelp);
  // The value is a number above 0.
  Option Positive();
  // The value is a number, 0 or above.
  Option NotNegative();
  // The value is one of these, in this spelling.
  Option OneOf(std::vector<std::string> values, Told told = Told::kInHelp);

  // A command line with both is refused.
  Option Excludes(Option other);

  // For a variable of several values. Without these they stand one behind the other, and the help shows that.
  // Each word is several values, parted by `delimiter`.
  Option SplitAt(char delimiter);
  // One value behind the option, which is given once more for the next; the help shows one. A word that
  // nothing takes, where the option is given and `looks_like_a_value` holds, was likely meant as the next:
  // see Command::OptionToRepeat.
  Option Repeats(IsOfKind looks_like_a_value = {});
  // It has one value, or none.
  Option ValueMayLack();

  // Whether the command line that was read has it.
  bool IsGiven() const;

 private:
  friend class Command;
  explicit Option(CLI::Option& parsed) : parsed_(&parsed) {}

  CLI::Option* parsed_;
};

}  // namespace mirelo::command_line
