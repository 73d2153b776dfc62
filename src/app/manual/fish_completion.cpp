#include "app/manual/fish_completion.h"

namespace mirelo::app {

using command_line::CommandFacts;
using command_line::OptionFacts;

namespace {

std::string Quoted(std::string_view text) {
  std::string quoted = "'";
  for (const char letter : text) {
    if (letter == '\'' || letter == '\\') quoted += '\\';
    quoted += letter;
  }
  return quoted + "'";
}

std::string Names(const CommandFacts& command) {
  std::string names;
  for (const auto& below : command.commands) names.append(" ").append(below.OwnName());
  return names;
}

// Whether this command was chosen and none below it; the program's own options may stand anywhere.
std::string Condition(const CommandFacts& command, const CommandFacts* above) {
  std::string condition;
  if (above != nullptr && above->name.find(' ') != std::string::npos) {
    condition.append("__fish_seen_subcommand_from ").append(above->OwnName()).append("; and ");
  }
  condition.append("__fish_seen_subcommand_from ").append(command.OwnName());
  if (!command.commands.empty()) {
    condition.append("; and not __fish_seen_subcommand_from").append(Names(command));
  }
  return condition;
}

std::string Line(const std::string& head, const OptionFacts& option) {
  std::string line = head;
  for (const auto& name : option.names) {
    line += name[1] == '-' ? " -l " + name.substr(2) : " -s " + name.substr(1);
  }
  return line + (option.value.empty() ? "" : " -r") + " -d " + Quoted(option.meaning) + '\n';
}

void Describe(const CommandFacts& command, const CommandFacts* above, const CommandFacts& program,
              std::string& script) {
  const bool top = above == nullptr;
  const std::string head = "complete -c " + program.name;
  const std::string condition = top ? "__fish_use_subcommand" : Condition(command, above);
  for (const auto& option : command.options) {
    script += Line(top ? head : head + " -n " + Quoted(condition), option);
  }
  for (const auto& argument : command.arguments) {
    for (const auto& word : argument.words) {
      script += head + " -f -n " + Quoted(condition) + " -a " + Quoted(word) + '\n';
    }
  }
  for (const auto& below : command.commands) {
    script += head + " -f -n " + Quoted(condition) + " -a " + std::string(below.OwnName()) + " -d " +
              Quoted(below.meaning) + '\n';
    Describe(below, &command, program, script);
  }
}

}  // namespace

std::string FishCompletion(const CommandFacts& program) {
  std::string script = "# Has fish complete " + program.name + ". Made of its options while it was built.\n";
  Describe(program, nullptr, program, script);
  return script;
}

}  // namespace mirelo::app
