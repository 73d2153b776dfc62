#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mirelo::command_line {

class Command;

// An option of a command, or an argument without a name in front of it.
struct OptionFacts {
  std::vector<std::string> names;  // "-h", "--help"; none for an argument
  std::string value;               // what stands for its value: "N", "FILE"; empty for a flag
  std::string range;               // "1 to 65535"; empty where nothing bounds it
  std::string assumed;             // the value that it has when it is left out
  std::string meaning;
  bool required = false;
  bool many = false;               // takes several values, one behind the other
  std::vector<std::string> words;  // values that a shell can offer
};

// A program or a command of one, as its help shows it.
struct CommandFacts {
  std::string name;  // with those above it: "mirelo settings set"
  std::string meaning;
  std::string footer;
  std::vector<OptionFacts> options;
  std::vector<OptionFacts> arguments;
  std::vector<CommandFacts> commands;

  // The name without those above it.
  std::string_view OwnName() const;
};

// All that a command says of itself and of those below it.
CommandFacts FactsOf(const Command& command);

// Calls `look` for the command and all below it, the upper ones first.
template <class Look>
void Walk(const CommandFacts& command, Look look) {
  look(command);
  for (const auto& below : command.commands) Walk(below, look);
}

}  // namespace mirelo::command_line
