#include "adapters/windows/system.h"

// In this order.
#include <dpapi.h>
#include <wincrypt.h>

#include "adapters/windows/user_vault.h"

#include <cstddef>
#include <cstdint>
#include <vector>

#include "automation/runtime_error.h"
#include "automation/text.h"
#include "automation/wipe.h"

namespace mirelo::windows {

namespace {

using host::Registry;

constexpr std::string_view kCrLf = "\r\n";
constexpr std::size_t kLinesOfBoth = 4;  // two for the name and two for the secret
constexpr DWORD kBase64 = CRYPT_STRING_BASE64 | CRYPT_STRING_NOCRLF;

RuntimeError DamagedCredential() {
  return RuntimeError(
      5, "A stored credential cannot be opened. Set it again with StoreCredentials of Mirelo.cMachine");
}

BYTE* BytesIn(std::string& text) { return reinterpret_cast<BYTE*>(text.data()); }

std::string TwoLinesOf(const DATA_BLOB& sealed) {
  DWORD length = 0;
  ::CryptBinaryToStringA(sealed.pbData, sealed.cbData, kBase64, nullptr, &length);
  std::string text(length, '\0');
  ::CryptBinaryToStringA(sealed.pbData, sealed.cbData, kBase64, text.data(), &length);
  text.resize(length);
  return text.insert((text.size() + 1) / 2, kCrLf);
}

std::string SealedIn(const std::string& stored) {
  const std::string text = Replace(stored, kCrLf, "");
  DWORD size = static_cast<DWORD>(text.size());
  std::string sealed(text.size(), '\0');
  if (!::CryptStringToBinaryA(text.data(), static_cast<DWORD>(text.size()), CRYPT_STRING_BASE64,
                              BytesIn(sealed), &size, nullptr, nullptr)) {
    throw DamagedCredential();
  }
  sealed.resize(size);
  return sealed;
}

std::string Sealed(std::string_view plain) {
  if (plain.empty()) throw Errors::InvalidProcedureCall();
  DATA_BLOB in{static_cast<DWORD>(plain.size()),
               reinterpret_cast<BYTE*>(const_cast<char*>(plain.data()))};  // which is not written to
  DATA_BLOB out{};
  if (!::CryptProtectData(&in, nullptr, nullptr, nullptr, nullptr, CRYPTPROTECT_UI_FORBIDDEN, &out)) {
    throw RuntimeError(75, "Windows does not seal credentials for this user");
  }
  std::string text = TwoLinesOf(out);
  ::LocalFree(out.pbData);
  return text;
}

// A key of the registry until the end of a block.
class OpenKey {
 public:
  OpenKey(Registry& registry, bool makes) : registry_(registry) {
    error_ =
        makes ? registry.RegCreateKeyExA(Registry::kCurrentUser, UserVault::kKey, Registry::kSetValue, key_)
              : registry.RegOpenKeyExA(Registry::kCurrentUser, UserVault::kKey, Registry::kRead, key_);
  }
  ~OpenKey() {
    if (IsOpen()) registry_.RegCloseKey(key_);
  }
  OpenKey(const OpenKey&) = delete;
  OpenKey& operator=(const OpenKey&) = delete;

  bool IsOpen() const { return error_ == Registry::kSuccess; }
  Registry::Key Number() const { return key_; }

 private:
  Registry& registry_;
  Registry::Key key_ = 0;
  std::int32_t error_;
};

}  // namespace

host::CredentialVault::StoredCredentials UserVault::Stored() {
  const OpenKey key(registry_, false);
  std::uint32_t type = 0;
  std::uint32_t size = 0;
  if (!key.IsOpen() ||
      registry_.RegQueryValueExA(key.Number(), kValue, type, nullptr, size) != Registry::kSuccess) {
    throw RuntimeError(
        53,
        "No credentials for QuoteTracker's stream are stored. Set them with StoreCredentials of "
        "Mirelo.cMachine");
  }
  std::string stored(size, '\0');
  const auto error = registry_.RegQueryValueExA(key.Number(), kValue, type, stored.data(), size);
  const std::vector<std::string> lines = Split(stored, kCrLf);
  if (error != Registry::kSuccess || lines.size() != kLinesOfBoth) throw DamagedCredential();
  return {.name = lines[0] + std::string(kCrLf) + lines[1],
          .secret = lines[2] + std::string(kCrLf) + lines[3]};
}

host::Secret UserVault::Decipher(const std::string& stored) {
  std::string sealed = SealedIn(stored);
  DATA_BLOB in{static_cast<DWORD>(sealed.size()), BytesIn(sealed)};
  DATA_BLOB out{};
  if (!::CryptUnprotectData(&in, nullptr, nullptr, nullptr, nullptr, CRYPTPROTECT_UI_FORBIDDEN, &out)) {
    throw DamagedCredential();
  }
  return host::Secret(reinterpret_cast<char*>(out.pbData), out.cbData, [](char* memory, std::size_t size) {
    Wipe(memory, size);
    ::LocalFree(memory);
  });
}

void UserVault::Set(std::string_view name, std::string_view secret) {
  const std::string stored = Sealed(name) + std::string(kCrLf) + Sealed(secret);
  const OpenKey key(registry_, true);
  const auto size = static_cast<std::uint32_t>(stored.size());
  if (!key.IsOpen() || registry_.RegSetValueExA(key.Number(), kValue, Registry::kBinary, stored.data(),
                                                size) != Registry::kSuccess) {
    throw RuntimeError(75, "The credentials cannot be written to the registry");
  }
}

}  // namespace mirelo::windows
