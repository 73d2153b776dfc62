#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "host/credential_vault.h"
#include "host/secret.h"

namespace mirelo::sodium {

// Credentials sealed with a key of the user's own. The key and the sealed texts are files of mode 0600 in one
// folder: whoever may read the key may read the credentials, so the sealing keeps them out of copies and logs
// of the sealed file alone, not from the user's own programs.
//
// A stored credential is base64 of a nonce and a sealed text (XSalsa20 and Poly1305), in two lines parted by
// CR LF. Name and secret are one file of four lines, which is replaced as a whole, so that there is never the
// one without the other. Vaults of older versions have a file for each; they are read as they are, and gone
// when credentials are stored anew.
//
// Texts and key are in guarded memory while they are open.
class SodiumVault : public host::CredentialVault {
 public:
  // $XDG_DATA_HOME/mirelo, or ~/.local/share/mirelo. Error 75 when neither variable is set.
  static std::filesystem::path DefaultFolder();

  // How long another process that stores or clears is waited for.
  static constexpr std::chrono::seconds kPatience{5};

  // Nothing is made before something is stored. Error 7 when the library cannot start.
  explicit SodiumVault(std::filesystem::path folder = DefaultFolder(),
                       std::chrono::milliseconds patience = kPatience);

  // Needs no right to write, and waits for nobody. Error 53, saying how to set them, when not both are
  // stored; 5 when what is stored is damaged.
  StoredCredentials Stored() override;
  // Error 75 when the key cannot be read, 5 when the text is damaged or was sealed with another key.
  host::Secret Decipher(const std::string& stored) override;

  struct Credentials {
    std::string_view name;
    std::string_view secret;
  };
  // Seals and stores both, with a new key when there is none yet; they are on the disk when this returns.
  // Error 75 when a file cannot be written, or another process is in the midst of this for too long, which is
  // named; 5 for an empty text.
  void Set(const Credentials& credentials);
  // Removes the stored texts and the key. Error 75 as with Set.
  void Clear();

 private:
  std::filesystem::path SealedFile() const { return folder_ / "credentials"; }
  std::filesystem::path KeyFile() const { return folder_ / "credentials.key"; }
  // Where older versions keep them.
  std::filesystem::path OlderNameFile() const { return folder_ / "application-name"; }
  std::filesystem::path OlderSecretFile() const { return folder_ / "application-secret"; }

  // Nothing when there are none.
  std::optional<StoredCredentials> StoredTogether() const;
  std::optional<StoredCredentials> StoredByOlderVersion() const;
  void TryToTidyUp() const;
  void RemoveOlderFiles() const;
  host::Secret Key() const;
  host::Secret KeyMadeIfAbsent() const;

  std::filesystem::path folder_;
  std::chrono::milliseconds patience_;
};

}  // namespace mirelo::sodium
