#include "app/commands/credentials_command.h"

#include <CLI/CLI.hpp>

#include "adapters/sodium/sodium_vault.h"
#include "app/exit_code.h"
#include "app/secret_input.h"
#include "host/secret.h"
#include "terminal/standard_streams.h"

namespace mirelo::app {

using terminal::Err;
using terminal::Out;

namespace {

int Set(sodium::SodiumVault& vault) {
  const host::Secret name = Ask("Application name");
  const host::Secret secret = AskInSecret("Application secret");
  vault.Set({.name = name.text(), .secret = secret.text()});
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
  Out() << vault.Decipher(vault.Stored().name).text() << "\n";
  return kGood;
}

}  // namespace mirelo::app
