#include "adapters/sodium/sodium_vault.h"

#include <sodium.h>

#include <cstdlib>
#include <utility>

#include "adapters/sodium/private_file.h"
#include "automation/runtime_error.h"

namespace mirelo::sodium {

namespace {

constexpr std::size_t kOverhead = crypto_secretbox_NONCEBYTES + crypto_secretbox_MACBYTES;

unsigned char* Bytes(std::string& text) { return reinterpret_cast<unsigned char*>(text.data()); }
const unsigned char* Bytes(const std::string& text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}

std::string ToTwoLines(const std::string& bytes) {
  std::string text(sodium_base64_ENCODED_LEN(bytes.size(), sodium_base64_VARIANT_ORIGINAL), '\0');
  sodium_bin2base64(text.data(), text.size(), Bytes(bytes), bytes.size(), sodium_base64_VARIANT_ORIGINAL);
  text.pop_back();  // the terminator
  return text.insert((text.size() + 1) / 2, "\r\n");
}

std::string FromLines(const std::string& text) {
  std::string bytes(text.size(), '\0');
  std::size_t count = 0;
  if (sodium_base642bin(Bytes(bytes), bytes.size(), text.data(), text.size(), "\r\n", &count, nullptr,
                        sodium_base64_VARIANT_ORIGINAL) != 0 ||
      count < kOverhead) {
    throw RuntimeError(5, "A stored credential is damaged. Set it again with: mirelo credentials set");
  }
  bytes.resize(count);
  return bytes;
}

}  // namespace

std::filesystem::path SodiumVault::DefaultFolder() {
  if (const char* data = std::getenv("XDG_DATA_HOME"); data != nullptr && *data == '/') {
    return std::filesystem::path(data) / "mirelo";
  }
  if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0') {
    return std::filesystem::path(home) / ".local/share/mirelo";
  }
  throw RuntimeError(75, "neither XDG_DATA_HOME nor HOME says where credentials are kept");
}

SodiumVault::SodiumVault(std::filesystem::path folder) : folder_(std::move(folder)) {
  if (sodium_init() < 0) throw Errors::OutOfMemory();
}

std::string SodiumVault::Stored(Credential credential) {
  if (auto stored = ReadPrivateFile(FileOf(credential))) return *std::move(stored);
  throw RuntimeError(
      53, "No credentials for QuoteTracker's stream are stored. Set them with: mirelo credentials set");
}

std::string SodiumVault::Decipher(const std::string& stored) {
  const std::string sealed = FromLines(stored);
  std::string key = Key(false);
  std::string plain(sealed.size() - kOverhead, '\0');
  const bool opened =
      crypto_secretbox_open_easy(Bytes(plain), Bytes(sealed) + crypto_secretbox_NONCEBYTES,
                                 sealed.size() - crypto_secretbox_NONCEBYTES, Bytes(sealed), Bytes(key)) == 0;
  sodium_memzero(key.data(), key.size());
  if (opened) return plain;
  throw RuntimeError(
      5,
      "A stored credential is damaged or was sealed with another key. Set it again with: mirelo "
      "credentials set");
}

bool SodiumVault::Has(Credential credential) const { return ReadPrivateFile(FileOf(credential)).has_value(); }

void SodiumVault::Set(Credential credential, const std::string& plain) {
  if (plain.empty()) throw RuntimeError(5, "A credential cannot be empty");
  std::string key = Key(true);
  std::string sealed(kOverhead + plain.size(), '\0');
  randombytes_buf(sealed.data(), crypto_secretbox_NONCEBYTES);
  crypto_secretbox_easy(Bytes(sealed) + crypto_secretbox_NONCEBYTES, Bytes(plain), plain.size(),
                        Bytes(sealed), Bytes(key));
  sodium_memzero(key.data(), key.size());
  WritePrivateFile(FileOf(credential), ToTwoLines(sealed));
}

void SodiumVault::Clear() {
  RemovePrivateFile(FileOf(Credential::ApplicationName));
  RemovePrivateFile(FileOf(Credential::ApplicationSecret));
  RemovePrivateFile(KeyFile());
}

std::filesystem::path SodiumVault::FileOf(Credential credential) const {
  return folder_ / (credential == Credential::ApplicationName ? "application-name" : "application-secret");
}

std::string SodiumVault::Key(bool make_if_absent) {
  auto key = ReadPrivateFile(KeyFile());
  if (key && key->size() == crypto_secretbox_KEYBYTES) return *std::move(key);
  if (!make_if_absent) {
    throw RuntimeError(75, "cannot read the key of the credentials in " + KeyFile().string());
  }
  std::string made(crypto_secretbox_KEYBYTES, '\0');
  crypto_secretbox_keygen(Bytes(made));
  WritePrivateFile(KeyFile(), made);
  return made;
}

}  // namespace mirelo::sodium
