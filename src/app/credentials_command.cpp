#include "app/credentials_command.h"

#include <termios.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <iostream>
#include <string>

#include "adapters/sodium/sodium_vault.h"
#include "app/exit_code.h"
#include "automation/runtime_error.h"
#include "terminal/standard_streams.h"

namespace mirelo::app {

using terminal::Err;
using terminal::Out;

namespace {

using Credential = sodium::SodiumVault::Credential;

// Keeps what is typed off the screen. Where the standard input is no terminal there is nothing to keep off.
class NoEcho {
 public:
  NoEcho() : terminal_(::tcgetattr(STDIN_FILENO, &before_) == 0) {
    if (!terminal_) return;
    termios quiet = before_;
    quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &quiet);
  }
  ~NoEcho() {
    if (!terminal_) return;
    ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &before_);
    Err() << "\n";
  }
  NoEcho(const NoEcho&) = delete;
  NoEcho& operator=(const NoEcho&) = delete;

 private:
  termios before_{};
  bool terminal_;
};

std::string Ask(const char* what) {
  if (::isatty(STDIN_FILENO) == 1) {
    Err() << what << ": ";
    Err().Flush();
  }
  std::string line;
  if (!std::getline(std::cin, line) || line.empty()) throw RuntimeError(5, std::string(what) + " is missing");
  if (line.back() == '\r') line.pop_back();
  return line;
}

std::string AskInSecret(const char* what) {
  const NoEcho no_echo;
  return Ask(what);
}

int Set(sodium::SodiumVault& vault) {
  const std::string name = Ask("Application name");
  const std::string secret = AskInSecret("Application secret");
  vault.Set(Credential::ApplicationName, name);
  vault.Set(Credential::ApplicationSecret, secret);
  Err() << "Stored\n";
  return kGood;
}

}  // namespace

CredentialsCommand::CredentialsCommand(CLI::App& program) {
  command_ =
      program.add_subcommand("credentials", "Keep the application name and secret for QuoteTracker's stream");
  command_->require_subcommand(1);
  set_ = command_->add_subcommand(
      "set", "Store them: the name and the secret, one line each, from the terminal or the standard input");
  show_name_ = command_->add_subcommand("show-name", "Print the application name; the secret is never shown");
  clear_ = command_->add_subcommand("clear", "Forget both");
}

bool CredentialsCommand::IsChosen() const { return command_->parsed(); }

int CredentialsCommand::Run() {
  sodium::SodiumVault vault;
  if (set_->parsed()) return Set(vault);
  if (clear_->parsed()) {
    vault.Clear();
    return kGood;
  }
  Out() << vault.Decipher(vault.Stored(Credential::ApplicationName)) << "\n";
  return kGood;
}

}  // namespace mirelo::app
