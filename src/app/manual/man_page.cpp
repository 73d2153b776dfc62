#include "app/manual/man_page.h"

#include <algorithm>
#include <string_view>

#include "automation/text.h"

namespace mirelo::app {

using command_line::CommandFacts;
using command_line::OptionFacts;

namespace {

// Text as the formatter takes it literally: a hyphen stays one that can be copied into a shell. A list
// without blanks may be broken behind its commas.
std::string Literal(std::string_view text) {
  std::string literal;
  for (const char letter : text) {
    switch (letter) {
      case '\\':
        literal += "\\e";
        break;
      case '-':
        literal += "\\-";
        break;
      case ',':
        literal += ",\\:";
        break;
      default:
        literal += letter;
    }
  }
  // A line that begins with one of these would be a request to the formatter.
  if (!literal.empty() && (literal.front() == '.' || literal.front() == '\'')) literal.insert(0, "\\&");
  return literal;
}

std::string Bold(std::string_view text) { return "\\fB" + Literal(text) + "\\fR"; }
std::string Italic(std::string_view text) { return "\\fI" + Literal(text) + "\\fR"; }

bool IsLaidOut(const std::string& paragraph) {
  return paragraph.front() == ' ' || paragraph.find("\n ") != std::string::npos ||
         paragraph.find("  ") != std::string::npos;
}

// Paragraphs are parted by empty lines. One in which blanks make columns stays as it is.
std::string Prose(const std::string& text) {
  std::string page;
  for (const std::string& paragraph : Split(text, "\n\n")) {
    if (paragraph.empty()) continue;
    const bool laid_out = IsLaidOut(paragraph);
    page += ".PP\n";
    if (laid_out) page += ".nf\n";
    for (const std::string& line : Split(paragraph, "\n")) {
      if (!line.empty()) page += Literal(line) + '\n';
    }
    if (laid_out) page += ".fi\n";
  }
  return page;
}

std::string Synopsis(const CommandFacts& command) {
  std::string line = Bold(command.name);
  if (!command.options.empty()) line += " [\\fIOPTION\\fR...]";
  for (const auto& argument : command.arguments) {
    const std::string name = Italic(argument.value) + (argument.many ? "..." : "");
    line += argument.required ? " " + name : " [" + name + "]";
  }
  if (!command.commands.empty()) line += " \\fICOMMAND\\fR ...";
  return line + '\n';
}

std::string Entry(const OptionFacts& option) {
  std::string page = ".TP\n";
  if (option.names.empty()) {
    page += Italic(option.value);
  } else {
    for (const auto& name : option.names) {
      page += (&name == &option.names.front() ? "" : ", ") + Bold(name);
    }
    if (!option.value.empty()) page += ' ' + Italic(option.value);
  }
  page += (option.many ? "...\n" : "\n") + Literal(option.meaning);
  if (!option.range.empty()) page += " (" + Literal(option.range) + ')';
  if (!option.assumed.empty()) page += ". Without it: " + Literal(option.assumed);
  return page + '\n';
}

std::string Entries(const CommandFacts& command) {
  std::string page;
  for (const auto& argument : command.arguments) page += Entry(argument);
  for (const auto& option : command.options) page += Entry(option);
  return page;
}

// Every command has --help; the page says it once, of the program.
CommandFacts WithoutHelp(CommandFacts command) {
  std::erase_if(command.options, [](const OptionFacts& option) {
    return std::count(option.names.begin(), option.names.end(), "--help") > 0;
  });
  return command;
}

std::string Commands(const CommandFacts& program) {
  std::string page;
  for (const auto& command : program.commands) {
    Walk(command, [&](const CommandFacts& each) {
      page += ".SS " + Synopsis(each) + Prose(each.meaning + ".");
      page += Entries(WithoutHelp(each)) + Prose(each.footer);
    });
  }
  return page;
}

std::string Definitions(const std::vector<std::pair<std::string, std::string>>& list) {
  std::string page;
  for (const auto& [term, meaning] : list) page += ".TP\n" + Bold(term) + '\n' + Literal(meaning) + '\n';
  return page;
}

}  // namespace

std::string ManPage(const CommandFacts& program, const PageNotes& notes) {
  std::string page = ".TH " + Literal(UCase(program.name)) + " 1 \"\" \"" + Literal(notes.version) +
                     "\" \"User Commands\"\n";
  page += ".ad l\n.nh\n";  // names of settings are not to be hyphenated
  page += ".SH NAME\n" + Literal(program.name) + " \\- " + Literal(notes.summary) + '\n';
  page += ".SH SYNOPSIS\n" + Synopsis(program);
  page += ".SH DESCRIPTION\n" + Prose(program.meaning);
  page += ".SH OPTIONS\n" + Entries(program);
  page += Prose(program.footer);
  if (!program.commands.empty()) page += ".SH COMMANDS\n" + Commands(program);
  if (!notes.files.empty()) page += ".SH FILES\n" + Definitions(notes.files);
  if (!notes.examples.empty()) page += ".SH EXAMPLES\n" + Definitions(notes.examples);
  if (!notes.see_also.empty()) {
    page += ".SH \"SEE ALSO\"\n";
    for (const auto& other : notes.see_also) {
      const auto bracket = other.find('(');
      page += ".BR " + Literal(other.substr(0, bracket)) + ' ' + other.substr(bracket) +
              (&other == &notes.see_also.back() ? "\n" : ",\n");
    }
  }
  return page;
}

}  // namespace mirelo::app
