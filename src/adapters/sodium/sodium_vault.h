#pragma once

#include <filesystem>
#include <string>

#include "host/credential_vault.h"

namespace mirelo::sodium {

// Credentials sealed with a key of the user's own. The key and the sealed texts are files of mode 0600 in one
// folder: whoever may read the key may read the credentials, so the sealing keeps them out of copies and logs
// of the sealed files alone, not from the user's own programs.
//
// A stored credential is base64 of a nonce and a sealed text (XSalsa20 and Poly1305), in two lines parted by
// CR LF.
class SodiumVault : public host::CredentialVault {
 public:
  // $XDG_DATA_HOME/mirelo, or ~/.local/share/mirelo. Error 75 when neither variable is set.
  static std::filesystem::path DefaultFolder();

  // Nothing is made before something is stored. Error 7 when the library cannot start.
  explicit SodiumVault(std::filesystem::path folder = DefaultFolder());

  // Error 53, saying how to set it, when nothing is stored.
  std::string Stored(Credential credential) override;
  // Error 75 when the key cannot be read, 5 when the text is damaged or was sealed with another key.
  std::string Decipher(const std::string& stored) override;

  bool Has(Credential credential) const;
  // Seals and stores, with a new key when there is none yet. Error 75 when a file cannot be written, 5 for an
  // empty text.
  void Set(Credential credential, const std::string& plain);
  // Removes the stored texts and the key.
  void Clear();

 private:
  std::filesystem::path FileOf(Credential credential) const;
  std::filesystem::path KeyFile() const { return folder_ / "credentials.key"; }
  std::string Key(bool make_if_absent);

  std::filesystem::path folder_;
};

}  // namespace mirelo::sodium
