#include "app/manual/zsh_completion.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "app/manual/inherited_options.h"

namespace mirelo::app {

using command_line::CommandFacts;
using command_line::OptionFacts;

namespace {

std::string InQuotes(std::string_view text) {
  std::string quoted = "'";
  for (const char letter : text) {
    if (letter == '\'') {
      quoted += "'\\''";
    } else {
      quoted += letter;
    }
  }
  return quoted + "'";
}

// A word that is offered, and what is shown beside it, behind the first colon.
std::string Offer(std::string_view word, const std::string& meaning) {
  std::string offer;
  for (const char letter : word) {
    if (letter == ':' || letter == '\\') offer += '\\';
    offer += letter;
  }
  return InQuotes(meaning.empty() ? offer : offer + ':' + meaning);
}

std::string OneOf(const std::vector<std::string>& patterns) {
  std::string joined;
  for (const auto& pattern : patterns) joined += (joined.empty() ? "" : "|") + InQuotes(pattern);
  return "(" + joined + ")";
}

bool ExpectsAFile(const CommandFacts& command) {
  return std::ranges::any_of(command.arguments,
                             [](const OptionFacts& argument) { return argument.value == "FILE"; });
}

std::string ChoiceOf(const CommandFacts& command, const CommandFacts& program) {
  std::string words;
  for (const auto& below : command.commands) words += ' ' + Offer(below.OwnName(), below.meaning);
  for (const auto& argument : command.arguments) {
    for (const auto& word : argument.words) words += ' ' + Offer(word, "");
  }
  std::string options;
  for (const auto& option : WithInherited(command, program)) {
    for (const auto& name : option.names) options += ' ' + Offer(name, option.meaning);
  }
  return "  (" + InQuotes(command.name) + ")\n    offered=(" + words + " )\n    options=(" + options + " )" +
         (ExpectsAFile(command) ? "\n    files=yes" : "") + " ;;\n";
}

}  // namespace

std::string ZshCompletion(const CommandFacts& program) {
  std::vector<std::string> below;
  std::vector<std::string> awaiting;
  std::string choices;
  Walk(program, [&](const CommandFacts& command) {
    if (&command != &program) below.push_back(command.name);
    for (const auto& option : WithInherited(command, program)) {
      if (option.value.empty()) continue;
      for (const auto& name : option.names) awaiting.push_back(command.name + " " + name);
    }
    choices += ChoiceOf(command, program);
  });

  std::string script = "#compdef " + program.name + "\n";
  script += "# Has zsh complete " + program.name + ". Made of its options while it was built.\n";
  script +=
      "local command=" + InQuotes(program.name) + " files=\nlocal -i i ret=1\nlocal -a offered options\n";
  if (!below.empty()) {
    script += "for ((i = 2; i < CURRENT; ++i)); do\n  case \"$command ${words[i]}\" in\n    " + OneOf(below) +
              " command+=\" ${words[i]}\" ;;\n  esac\ndone\n";
  }
  if (!awaiting.empty()) {
    script +=
        "case \"$command ${words[CURRENT - 1]}\" in\n  " + OneOf(awaiting) + " _files; return ;;\nesac\n";
  }
  script += "case $command in\n" + choices + "esac\n";
  script += "_describe 'command' offered && ret=0\n_describe -o 'option' options && ret=0\n";
  script += "[[ -n $files ]] && _files && ret=0\nreturn ret\n";
  return script;
}

}  // namespace mirelo::app
