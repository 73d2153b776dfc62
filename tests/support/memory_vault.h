#pragma once

#include <map>
#include <string>

#include "automation/runtime_error.h"
#include "host/credential_vault.h"

namespace mirelo::testing {

// A vault whose cipher is to write the text backwards, in two lines.
class MemoryVault : public host::CredentialVault {
 public:
  enum class Credential { ApplicationName, ApplicationSecret };

  // What is absent here is an error when it is asked for, number 32001.
  std::map<Credential, std::string> credentials;
  int deciphered = 0;  // how often Decipher was called

  StoredCredentials Stored() override {
    return {.name = Backwards(Credential::ApplicationName),
            .secret = Backwards(Credential::ApplicationSecret)};
  }
  host::Secret Decipher(const std::string& stored) override {
    ++deciphered;
    const std::string backwards = stored.substr(0, 1) + stored.substr(3);
    return host::Secret::Copy(std::string(backwards.rbegin(), backwards.rend()));
  }

 private:
  std::string Backwards(Credential credential) const {
    const auto found = credentials.find(credential);
    if (found == credentials.end()) throw RuntimeError(32001, "No credential is stored");
    const std::string backwards(found->second.rbegin(), found->second.rend());
    return backwards.substr(0, 1) + "\r\n" + backwards.substr(1);
  }
};

}  // namespace mirelo::testing
