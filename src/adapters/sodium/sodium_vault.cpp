#include "adapters/sodium/sodium_vault.h"

#include <sodium.h>

#include <cstddef>
#include <cstdlib>
#include <system_error>
#include <utility>

#include "adapters/sodium/folder_lock.h"
#include "adapters/sodium/guarded_memory.h"
#include "adapters/sodium/private_file.h"
#include "automation/runtime_error.h"
#include "automation/text.h"

namespace mirelo::sodium {

namespace {

constexpr std::size_t kOverhead = crypto_secretbox_NONCEBYTES + crypto_secretbox_MACBYTES;
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::size_t kLines = 4;  // two for the name and two for the secret

unsigned char* Bytes(char* text) { return reinterpret_cast<unsigned char*>(text); }
const unsigned char* Bytes(std::string_view text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}

RuntimeError Damaged() {
  return RuntimeError(5, "A stored credential is damaged. Set it again with: mirelo credentials set");
}

std::string ToTwoLines(const std::string& bytes) {
  std::string text(sodium_base64_ENCODED_LEN(bytes.size(), sodium_base64_VARIANT_ORIGINAL), '\0');
  sodium_bin2base64(text.data(), text.size(), Bytes(bytes), bytes.size(), sodium_base64_VARIANT_ORIGINAL);
  text.pop_back();  // the terminator
  return text.insert((text.size() + 1) / 2, kLineEnd);
}

std::string FromLines(const std::string& text) {
  std::string bytes(text.size(), '\0');
  std::size_t count = 0;
  if (sodium_base642bin(Bytes(bytes.data()), bytes.size(), text.data(), text.size(), "\r\n", &count, nullptr,
                        sodium_base64_VARIANT_ORIGINAL) != 0 ||
      count < kOverhead) {
    throw Damaged();
  }
  bytes.resize(count);
  return bytes;
}

std::string Seal(std::string_view plain, const host::Secret& key) {
  std::string sealed(kOverhead + plain.size(), '\0');
  randombytes_buf(sealed.data(), crypto_secretbox_NONCEBYTES);
  crypto_secretbox_easy(Bytes(sealed.data()) + crypto_secretbox_NONCEBYTES, Bytes(plain), plain.size(),
                        Bytes(sealed), Bytes(key.text()));
  return ToTwoLines(sealed);
}

}  // namespace

std::filesystem::path SodiumVault::DefaultFolder() {
  if (const char* data = std::getenv("XDG_DATA_HOME"); data != nullptr && *data == '/') {
    return std::filesystem::path(data) / "mirelo";
  }
  if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0') {
    return std::filesystem::path(home) / ".local/share/mirelo";
  }
  throw RuntimeError(75, "neither XDG_DATA_HOME nor HOME says where credentials are kept. Set one of them.");
}

SodiumVault::SodiumVault(std::filesystem::path folder, std::chrono::milliseconds patience)
    : folder_(std::move(folder)), patience_(patience) {
  if (sodium_init() < 0) throw Errors::OutOfMemory();
}

SodiumVault::StoredCredentials SodiumVault::Stored() {
  if (auto stored = StoredTogether()) {
    TryToTidyUp();
    return *std::move(stored);
  }
  auto older = StoredByOlderVersion();
  // What was stored anew meanwhile stands in one file before the two of the older version go.
  if (auto stored = StoredTogether()) return *std::move(stored);
  if (older) return *std::move(older);
  throw RuntimeError(
      53, "No credentials for QuoteTracker's stream are stored. Set them with: mirelo credentials set");
}

std::optional<SodiumVault::StoredCredentials> SodiumVault::StoredTogether() const {
  const auto sealed = ReadPrivateFile(SealedFile());
  if (!sealed) return std::nullopt;
  const auto lines = Split(*sealed, kLineEnd);
  if (lines.size() != kLines) throw Damaged();
  return StoredCredentials{.name = lines[0] + std::string(kLineEnd) + lines[1],
                           .secret = lines[2] + std::string(kLineEnd) + lines[3]};
}

std::optional<SodiumVault::StoredCredentials> SodiumVault::StoredByOlderVersion() const {
  auto name = ReadPrivateFile(OlderNameFile());
  auto secret = ReadPrivateFile(OlderSecretFile());
  if (!name || !secret) return std::nullopt;
  return StoredCredentials{.name = *std::move(name), .secret = *std::move(secret)};
}

// Removes what a Set that was killed before its end has left of an older version. Whoever only reads may have
// no right to, or meet somebody who stores; then that, or a later reader, does it.
void SodiumVault::TryToTidyUp() const {
  std::error_code unknown;
  const auto is_there = [&](const std::filesystem::path& file) {
    return std::filesystem::exists(file, unknown);
  };
  if (!is_there(OlderNameFile()) && !is_there(OlderSecretFile())) return;
  try {
    const FolderLock lock(folder_, std::chrono::milliseconds(0));
    if (is_there(SealedFile())) RemoveOlderFiles();
  } catch (const RuntimeError&) {
    return;
  }
}

host::Secret SodiumVault::Decipher(const std::string& stored) {
  const std::string sealed = FromLines(stored);
  const host::Secret key = Key();
  host::Secret plain = MakeGuarded(sealed.size() - kOverhead);
  const bool opened = crypto_secretbox_open_easy(
                          Bytes(plain.data()), Bytes(sealed) + crypto_secretbox_NONCEBYTES,
                          sealed.size() - crypto_secretbox_NONCEBYTES, Bytes(sealed), Bytes(key.text())) == 0;
  if (opened) return plain;
  throw RuntimeError(
      5,
      "A stored credential is damaged or was sealed with another key. Set it again with: mirelo "
      "credentials set");
}

void SodiumVault::Set(const Credentials& credentials) {
  if (credentials.name.empty() || credentials.secret.empty()) {
    throw RuntimeError(5, "A credential cannot be empty");
  }
  const FolderLock lock(folder_, patience_);
  const host::Secret key = KeyMadeIfAbsent();
  WritePrivateFile(SealedFile(),
                   Seal(credentials.name, key).append(kLineEnd).append(Seal(credentials.secret, key)));
  RemoveOlderFiles();
}

// The file that outranks the others goes after them: whoever is killed in between must not bring them back.
void SodiumVault::Clear() {
  if (!std::filesystem::exists(folder_)) return;
  const FolderLock lock(folder_, patience_);
  RemoveOlderFiles();
  RemovePrivateFile(SealedFile());
  RemovePrivateFile(KeyFile());
}

void SodiumVault::RemoveOlderFiles() const {
  RemovePrivateFile(OlderNameFile());
  RemovePrivateFile(OlderSecretFile());
}

host::Secret SodiumVault::Key() const {
  auto key = ReadSecretFile(KeyFile());
  if (key && key->text().size() == crypto_secretbox_KEYBYTES) return *std::move(key);
  throw RuntimeError(75, "cannot read the key of the credentials in " + KeyFile().string());
}

host::Secret SodiumVault::KeyMadeIfAbsent() const {
  auto key = ReadSecretFile(KeyFile());
  if (key && key->text().size() == crypto_secretbox_KEYBYTES) return *std::move(key);
  host::Secret made = MakeGuarded(crypto_secretbox_KEYBYTES);
  crypto_secretbox_keygen(Bytes(made.data()));
  WritePrivateFile(KeyFile(), made.text());
  return made;
}

}  // namespace mirelo::sodium
