#pragma once

#include <string>

#include "host/secret.h"

namespace mirelo::host {

// Keeps the two texts that prove this application to QuoteTracker's stream, enciphered.
class CredentialVault {
 public:
  // The stored forms: two lines of base64 each, joined with CR LF.
  struct StoredCredentials {
    std::string name;
    std::string secret;
  };

  virtual ~CredentialVault() = default;
  // Both as they were stored together, whatever another process stores meanwhile. Raises an error that says
  // how to set them when none are stored.
  virtual StoredCredentials Stored() = 0;
  // The plain text, for as long as it is needed. Raises an error when the stored form is damaged or was
  // enciphered with another key.
  virtual Secret Decipher(const std::string& stored) = 0;
};

}  // namespace mirelo::host
