#include "command_line/command.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <sstream>
#include <string>
#include <utility>

namespace mirelo::command_line {

namespace {

CLI::Validator Silent(CLI::Validator rule, Told told) {
  return told == Told::kInHelp ? rule : rule.description("");
}

// The rule of an option's values in which it is kept what they look like. The parser leaves it alone.
constexpr const char* kLooks = "looks";

bool LooksLikeAValue(CLI::Option& option, const std::string& word) try {
  const CLI::Validator& looks = *option.get_validator(kLooks);
  return looks.active(true)(word).empty();
} catch (const CLI::OptionNotFound&) {
  return false;
}

// The options of a command and of those chosen below it, in the order in which they were added.
std::vector<const CLI::Option*> OptionsFrom(const CLI::App& command) {
  std::vector<const CLI::Option*> options = command.get_options();
  for (const CLI::App* below : command.get_subcommands()) {
    const auto more = OptionsFrom(*below);
    options.insert(options.end(), more.begin(), more.end());
  }
  return options;
}

// Says which options exclude each other, as the parser does, which takes the one with the lowest address of
// those that the first one excludes: that differs between builds and runs. Here it is the one added first.
// Nothing where it is not two options that do.
std::optional<std::string> Excluded(const CLI::App& program) {
  auto options = OptionsFrom(program);
  std::erase_if(options, [](const CLI::Option* option) { return option->empty(); });
  for (const CLI::Option* option : options) {
    const auto excluded = option->get_excludes();
    const auto other = std::ranges::find_if(
        options, [&](const CLI::Option* each) { return excluded.contains(const_cast<CLI::Option*>(each)); });
    if (other != options.end()) return CLI::ExcludesError(option->get_name(), (*other)->get_name()).what();
  }
  return std::nullopt;
}

// The parser keeps the options that one excludes by their addresses, which differ between builds and runs.
class Formatter final : public CLI::Formatter {
 public:
  std::string make_option_opts(const CLI::Option* option) const override {
    std::string text = CLI::Formatter::make_option_opts(option);
    const std::string label = " " + get_label("Excludes") + ":";
    const auto excludes = option->get_excludes().empty() ? text.npos : text.rfind(label);
    if (excludes == text.npos) return text;
    std::vector<std::string> names;
    for (const CLI::Option* other : option->get_excludes()) names.push_back(other->get_name());
    std::ranges::sort(names);
    text.resize(excludes + label.size());
    for (const std::string& name : names) text += " " + name;
    return text;
  }
};

}  // namespace

Option Option::ValueName(const std::string& name) {
  parsed_->type_name(name);
  return *this;
}

Option Option::ShowDefault() {
  parsed_->capture_default_str();
  return *this;
}

Option Option::Require() {
  parsed_->required();
  return *this;
}

Option Option::Check(WhyNot why_not) {
  parsed_->check(std::move(why_not));
  return *this;
}

Option Option::Between(int least, int most, Told told) {
  parsed_->check(Silent(CLI::Range(least, most), told));
  return *this;
}

Option Option::Between(double least, double most, Told told) {
  parsed_->check(Silent(CLI::Range(least, most), told));
  return *this;
}

Option Option::Positive() {
  parsed_->check(CLI::PositiveNumber);
  return *this;
}

Option Option::NotNegative() {
  parsed_->check(CLI::NonNegativeNumber);
  return *this;
}

Option Option::OneOf(std::vector<std::string> values, Told told) {
  parsed_->check(Silent(CLI::IsMember(std::move(values)), told));
  return *this;
}

Option Option::Excludes(Option other) {
  parsed_->excludes(other.parsed_);
  return *this;
}

Option Option::SplitAt(char delimiter) {
  parsed_->delimiter(delimiter);
  return *this;
}

Option Option::Repeats(IsOfKind looks_like_a_value) {
  parsed_->expected(1)->take_all()->allow_extra_args(false);
  if (looks_like_a_value == nullptr) return *this;
  CLI::Validator looks(
      [looks_like = std::move(looks_like_a_value)](const std::string& word) {
        return looks_like(word) ? std::string() : "is something else";
      },
      "", kLooks);
  parsed_->check(looks.active(false));
  return *this;
}

Option Option::ValueMayLack() {
  parsed_->expected(0, 1);
  return *this;
}

bool Option::IsGiven() const { return !parsed_->empty(); }

Command Command::AddCommand(const std::string& name, const std::string& meaning) {
  return Command(*parser_->add_subcommand(name, meaning));
}

template <class Value>
Option Command::AddOption(const std::string& names, Value& value, const std::string& meaning) {
  return Option(*parser_->add_option(names, value, meaning));
}

template Option Command::AddOption(const std::string&, std::string&, const std::string&);
template Option Command::AddOption(const std::string&, int&, const std::string&);
template Option Command::AddOption(const std::string&, double&, const std::string&);
template Option Command::AddOption(const std::string&, std::uint16_t&, const std::string&);
template Option Command::AddOption(const std::string&, std::uint64_t&, const std::string&);
template Option Command::AddOption(const std::string&, std::filesystem::path&, const std::string&);
template Option Command::AddOption(const std::string&, std::optional<std::filesystem::path>&,
                                   const std::string&);
template Option Command::AddOption(const std::string&, std::vector<std::string>&, const std::string&);
template Option Command::AddOption(const std::string&, std::vector<std::filesystem::path>&,
                                   const std::string&);

Option Command::AddFlag(const std::string& names, bool& value, const std::string& meaning) {
  return Option(*parser_->add_flag(names, value, meaning));
}

void Command::Footer(const std::string& text) { parser_->footer(text); }

void Command::RequireCommand() { parser_->require_subcommand(1); }

void Command::WhenRead(Option blamed, std::function<std::string()> why_not) {
  parser_->callback([option = blamed.parsed_, why_not = std::move(why_not)] {
    if (const std::string why = why_not(); !why.empty()) throw CLI::ValidationError(option->get_name(), why);
  });
}

Option Command::Find(const std::string& name) const { return Option(*parser_->get_option(name)); }

bool Command::Has(const std::string& name) const { return parser_->get_option_no_throw(name) != nullptr; }

bool Command::IsChosen() const { return parser_->parsed(); }

std::vector<std::string> Command::GivenOptions() const {
  std::vector<std::string> names;
  for (const CLI::Option* option : parser_->get_options()) {
    if (option->nonpositional() && !option->empty()) names.push_back(option->get_name());
  }
  return names;
}

std::string Command::OptionToRepeat(const std::string& word) const {
  const auto options = parser_->get_options(
      [&](CLI::Option* option) { return !option->empty() && LooksLikeAValue(*option, word); });
  return options.empty() ? std::string() : options.front()->get_name();
}

std::string Command::Name() const { return parser_->get_name(); }

Program::Program(const std::string& name, const std::string& meaning)
    : Program(std::make_unique<CLI::App>(meaning, name)) {}

Program::Program(std::unique_ptr<CLI::App> parser) : Command(*parser), owned_(std::move(parser)) {
  owned_->formatter(std::make_shared<Formatter>());
}

Program::Program(Program&& other) noexcept = default;

Program::~Program() = default;

void Program::DescribeHelp(const std::string& meaning) { owned_->set_help_flag("-h,--help", meaning); }

void Program::TakeOptionsAnywhere() { owned_->fallthrough(); }

void Program::AddVersion(const std::string& text, const std::string& meaning) {
  owned_->set_version_flag("--version", text, meaning);
}

std::optional<Ending> Program::Read(int argc, const char* const* argv) {
  try {
    owned_->parse(argc, argv);
    return std::nullopt;
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) {
      std::ostringstream asked_for;
      owned_->exit(error, asked_for, asked_for);
      return Ending{.is_asked_for = true, .text = asked_for.str()};
    }
    Ending ending{.text = error.what()};
    if (dynamic_cast<const CLI::ExcludesError*>(&error) != nullptr)
      ending.text = Excluded(*owned_).value_or(ending.text);
    if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr) ending.left_over = owned_->remaining(true);
    return ending;
  }
}

std::vector<Command> Program::Chosen() const {
  std::vector<Command> commands;
  for (CLI::App* command : owned_->get_subcommands()) commands.push_back(Command(*command));
  return commands;
}

}  // namespace mirelo::command_line
