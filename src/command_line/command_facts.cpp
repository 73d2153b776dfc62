#include "command_line/command_facts.h"

#include <CLI/CLI.hpp>

#include "command_line/command.h"

namespace mirelo::command_line {

namespace {

// The parser joins a type's name and what its checks say of themselves: "INT:INT in [1 - 65535]".
std::string TypeOf(const std::string& type_name) {
  const std::string type = type_name.substr(0, type_name.find(':'));
  return type == "INT" || type == "UINT" || type == "FLOAT" ? "N" : type;
}

std::string RangeOf(const std::string& type_name) {
  constexpr std::string_view kOpens = " in [";
  constexpr std::string_view kParts = " - ";
  if (const auto opens = type_name.find(kOpens); opens != std::string::npos) {
    const auto least = opens + kOpens.size();
    const auto parts = type_name.find(kParts, least);
    const auto most = parts + kParts.size();
    return type_name.substr(least, parts - least) + " to " +
           type_name.substr(most, type_name.find(']', most) - most);
  }
  if (type_name.find(":POSITIVE") != std::string::npos) return "above 0";
  if (type_name.find(":NONNEGATIVE") != std::string::npos) return "0 or above";
  return {};
}

// Descriptions are broken for the terminal here and there.
std::string InOneLine(std::string text) {
  for (char& letter : text) {
    if (letter == '\n') letter = ' ';
  }
  return text;
}

OptionFacts FactsOf(const CLI::Option& option) {
  OptionFacts facts;
  for (const auto& name : option.get_snames()) facts.names.push_back("-" + name);
  for (const auto& name : option.get_lnames()) facts.names.push_back("--" + name);
  const bool takes_value = option.get_type_size() != 0;
  if (takes_value) {
    const std::string type = option.get_type_name();
    facts.value = option.nonpositional() ? TypeOf(type) : option.get_name(true);
    facts.range = RangeOf(type);
    facts.assumed = option.get_default_str();
    facts.many = option.get_expected_max() >= CLI::detail::expected_max_vector_size &&
                 (option.get_allow_extra_args() || option.get_positional());
  }
  facts.meaning = InOneLine(option.get_description());
  facts.required = option.get_required();
  return facts;
}

CommandFacts FactsBelow(const CLI::App& tree, const std::string& above) {
  CommandFacts facts;
  facts.name = above + tree.get_name();
  facts.meaning = tree.get_description();
  // The parser has commands take over the footer of the one above.
  const CLI::App* parent = tree.get_parent();
  if (parent == nullptr || parent->get_footer() != tree.get_footer()) facts.footer = tree.get_footer();
  for (const CLI::Option* option : tree.get_options()) {
    (option->nonpositional() ? facts.options : facts.arguments).push_back(FactsOf(*option));
  }
  for (const CLI::App* command : tree.get_subcommands([](const CLI::App*) { return true; })) {
    facts.commands.push_back(FactsBelow(*command, facts.name + " "));
  }
  return facts;
}

}  // namespace

std::string_view CommandFacts::OwnName() const {
  const auto blank = name.rfind(' ');
  return blank == std::string::npos ? std::string_view(name) : std::string_view(name).substr(blank + 1);
}

CommandFacts FactsOf(const Command& command) { return FactsBelow(*command.parser_, ""); }

}  // namespace mirelo::command_line
