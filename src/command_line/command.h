#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "command_line/option.h"

namespace CLI {
class App;
}

namespace mirelo::command_line {

struct CommandFacts;

// A command of a program, or the program itself: options, arguments and commands, which the help shows in the
// order in which they are added. Copies are the same command; it lives as long as its program.
//
// The variables of options and arguments keep what they have where the command line does not name them, and
// must outlive its reading. Of these types there are some: bool for flags; std::string, int, double,
// std::uint16_t, std::uint64_t, std::filesystem::path, an optional path, vectors of strings and of paths.
class Command {
 public:
  Command AddCommand(const std::string& name, const std::string& meaning);
  // `names` is joined by commas: "--port", "-p,--port"; one without dashes, as in "SHEET,--sheet", makes it
  // an argument besides.
  template <class Value>
  Option AddOption(const std::string& names, Value& value, const std::string& meaning);
  // A value without a name in front of it.
  template <class Value>
  Option AddArgument(const std::string& name, Value& value, const std::string& meaning) {
    return AddOption(name, value, meaning);
  }
  // An option without a value: true where it is given.
  Option AddFlag(const std::string& names, bool& value, const std::string& meaning);
  // What the help ends with, and that of the commands added below from now on.
  void Footer(const std::string& text);

  // A command line that names none of the commands below, or more than one, is refused.
  void RequireCommand();
  // Called at the end of reading a command line that chooses this command; a text that it gives refuses the
  // line, as something wrong with the value of `blamed`. There is one such function a command.
  void WhenRead(Option blamed, std::function<std::string()> why_not);

  // Of an option or argument of its own that there is: "--list", "FILE".
  Option Find(const std::string& name) const;
  bool Has(const std::string& name) const;

  // Of the command line that was read.
  bool IsChosen() const;
  // The options and flags that it gives this command, by name, in the order in which they were added.
  std::vector<std::string> GivenOptions() const;

  // The option that it is given and that must be given once more to take this word; empty where none looks
  // so.
  std::string OptionToRepeat(const std::string& word) const;

  std::string Name() const;

 private:
  friend class Program;
  friend CommandFacts FactsOf(const Command& command);
  explicit Command(CLI::App& parser) : parser_(&parser) {}

  CLI::App* parser_;
};

// What a program is to print in place of what it is there for.
struct Ending {
  bool is_asked_for = false;                // help or version; otherwise it is a mistake
  std::string text;                         // whole lines; of a mistake, one without its end
  std::vector<std::string> left_over = {};  // the words that nothing takes, where they are what is wrong
};

// A program's command line.
class Program : public Command {
 public:
  // It has the flags -h and --help.
  Program(const std::string& name, const std::string& meaning);
  ~Program();
  Program(Program&& other) noexcept;
  Program& operator=(Program&&) = delete;

  // What these two say holds for commands that are added from then on.
  void DescribeHelp(const std::string& meaning);
  // Options of the program may stand behind its commands as well.
  void TakeOptionsAnywhere();
  // Adds the flag --version, which asks for `text`.
  void AddVersion(const std::string& text, const std::string& meaning);

  // Reads the command line into the variables. To be called once.
  std::optional<Ending> Read(int argc, const char* const* argv);

  // The commands right below the program that the command line has chosen, also where it was refused.
  std::vector<Command> Chosen() const;

 private:
  explicit Program(std::unique_ptr<CLI::App> parser);

  std::unique_ptr<CLI::App> owned_;
};

}  // namespace mirelo::command_line
