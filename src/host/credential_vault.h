#pragma once

#include <string>

#include "host/secret.h"

namespace mirelo::host {

// Keeps the two texts that prove this application to QuoteTracker's stream, enciphered.
class CredentialVault {
 public:
  enum class Credential { ApplicationName, ApplicationSecret };

  virtual ~CredentialVault() = default;
  // The stored form: two lines of base64 joined with CR LF. Raises an error that says how to set the
  // credential when none is stored.
  virtual std::string Stored(Credential credential) = 0;
  // The plain text, for as long as it is needed. Raises an error when the stored form is damaged or was
  // enciphered with another key.
  virtual Secret Decipher(const std::string& stored) = 0;
};

}  // namespace mirelo::host
