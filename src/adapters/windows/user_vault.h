#pragma once

#include <string>
#include <string_view>

#include "host/credential_vault.h"
#include "host/registry.h"

namespace mirelo::windows {

// Credentials sealed by Windows' protection of a user's data: who is logged on as that user on that machine
// can open them, and nobody else. They stand in one value of the user's registry, which is replaced as a
// whole: so there is never the one without the other.
class UserVault : public host::CredentialVault {
 public:
  // Where they stand, below HKEY_CURRENT_USER.
  static constexpr const char* kKey = "Software\\Mirelo\\Credentials";
  static constexpr const char* kValue = "Sealed";

  // `registry` must outlive the vault.
  explicit UserVault(host::Registry& registry) : registry_(registry) {}

  // Error 53, saying how to set them, when none are stored; 5 when what is stored is damaged.
  StoredCredentials Stored() override;
  // Error 5 for a text that is damaged, or that another user or machine has sealed.
  host::Secret Decipher(const std::string& stored) override;

  // Seals and stores both. Error 5 for an empty text, 75 when the registry cannot be written to.
  void Set(std::string_view name, std::string_view secret);

 private:
  host::Registry& registry_;
};

}  // namespace mirelo::windows
