#include "app/commands/credentials_command.h"

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

CredentialsCommand::CredentialsCommand(command_line::Command& program)
    : command_(program.AddCommand("credentials",
                                  "Keep the application name and secret for QuoteTracker's stream")),
      set_(command_.AddCommand(
          "set",
          "Store them: the name and the secret, one line each, from the terminal or the standard input")),
      show_name_(command_.AddCommand("show-name", "Print the application name; the secret is never shown")),
      clear_(command_.AddCommand("clear", "Forget both")) {
  command_.RequireCommand();
}

bool CredentialsCommand::IsChosen() const { return command_.IsChosen(); }

int CredentialsCommand::Run() {
  sodium::SodiumVault vault;
  if (set_.IsChosen()) return Set(vault);
  if (clear_.IsChosen()) {
    vault.Clear();
    return kGood;
  }
  Out() << vault.Decipher(vault.Stored().name).text() << "\n";
  return kGood;
}

}  // namespace mirelo::app
