#include "app/manual/bash_completion.h"

#include <algorithm>
#include <vector>

#include "app/manual/inherited_options.h"

namespace mirelo::app {

using command_line::CommandFacts;
using command_line::OptionFacts;

namespace {

std::string ShellQuoted(const std::string& text) { return "'" + text + "'"; }

std::string Joined(const std::vector<std::string>& texts, const std::string& by) {
  std::string joined;
  for (const auto& text : texts) joined += (joined.empty() ? "" : by) + text;
  return joined;
}

// What can stand next behind a command and is known by name.
std::vector<std::string> WordsBehind(const CommandFacts& command, const CommandFacts& program) {
  std::vector<std::string> words;
  for (const auto& below : command.commands) words.emplace_back(below.OwnName());
  for (const auto& argument : command.arguments) {
    words.insert(words.end(), argument.words.begin(), argument.words.end());
  }
  for (const auto& option : WithInherited(command, program)) {
    words.insert(words.end(), option.names.begin(), option.names.end());
  }
  return words;
}

bool TakesAFile(const CommandFacts& command) {
  return std::any_of(command.arguments.begin(), command.arguments.end(),
                     [](const OptionFacts& argument) { return argument.value == "FILE"; });
}

}  // namespace

std::string BashCompletion(const CommandFacts& program) {
  std::vector<std::string> below, awaiting;
  std::string choices;
  Walk(program, [&](const CommandFacts& command) {
    if (&command != &program) below.push_back(ShellQuoted(command.name));
    for (const auto& option : WithInherited(command, program)) {
      if (option.value.empty()) continue;
      for (const auto& name : option.names) awaiting.push_back(ShellQuoted(command.name + " " + name));
    }
    choices += "    " + ShellQuoted(command.name) +
               ") words=" + ShellQuoted(Joined(WordsBehind(command, program), " ")) +
               (TakesAFile(command) ? " files=yes" : "") + " ;;\n";
  });

  std::string function = "_" + program.name;
  for (char& letter : function) {
    if (letter == '-') letter = '_';
  }
  std::string script = "# Has bash complete " + program.name + ". Made of its options while it was built.\n";
  script += function + "() {\n";
  script += "  local command=" + program.name + " words= files= i\n";
  if (!below.empty()) {
    script += "  for ((i = 1; i < COMP_CWORD; i++)); do\n";
    script += "    case \"$command ${COMP_WORDS[i]}\" in\n";
    script += "      " + Joined(below, " | ") + ") command+=\" ${COMP_WORDS[i]}\" ;;\n";
    script += "    esac\n  done\n";
  }
  script += "  COMPREPLY=()\n";
  if (!awaiting.empty()) {
    script += "  case \"$command ${COMP_WORDS[COMP_CWORD - 1]}\" in\n";
    script += "    " + Joined(awaiting, " | ") + ") return ;;\n  esac\n";
  }
  script += "  case \"$command\" in\n" + choices + "  esac\n";
  script += "  [[ $files && ${COMP_WORDS[COMP_CWORD]} != -* ]] && return\n";
  script += "  COMPREPLY=($(compgen -W \"$words\" -- \"${COMP_WORDS[COMP_CWORD]}\"))\n}\n";
  script += "complete -o default -F " + function + " " + program.name + "\n";
  return script;
}

}  // namespace mirelo::app
