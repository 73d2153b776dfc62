// Files of credentials from anywhere: they are opened, or refused in words for people; and whatever was
// there, credentials that are stored then are those that are read, and can be cleared.
//
// An input is one byte, as many bytes of the key's file, and behind these up to three files parted by zero
// bytes: name and secret as they are stored, and the two files of an older version. A file that the input
// does not reach is absent.

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "adapters/sodium/sodium_vault.h"
#include "automation/runtime_error.h"

namespace {

namespace fs = std::filesystem;

using mirelo::RuntimeError;
using mirelo::sodium::SodiumVault;

constexpr SodiumVault::Credentials kNew{.name = "Demo", .secret = "demo-secret"};

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "%s\n", what);
  std::abort();
}

// In memory: credentials are written through to the disk each time.
const fs::path& Folder() {
  static const fs::path folder = "/dev/shm/mirelo-fuzz-" + std::to_string(::getpid());
  return folder;
}

void Put(const char* name, std::string_view bytes) {
  std::ofstream(Folder() / name, std::ios::binary) << bytes;
}

void PutFiles(std::string_view input) {
  fs::remove_all(Folder());
  fs::create_directory(Folder());
  if (input.empty()) return;
  const std::size_t key = static_cast<std::uint8_t>(input.front());
  Put("credentials.key", input.substr(1, key));
  input.remove_prefix(std::min(1 + key, input.size()));
  for (const char* name : {"credentials", "application-name", "application-secret"}) {
    if (input.empty()) return;
    const std::size_t end = std::min(input.find('\0'), input.size());
    Put(name, input.substr(0, end));
    input.remove_prefix(std::min(end + 1, input.size()));
  }
}

bool IsRefusal(const RuntimeError& error) {
  const bool is_known = error.Number() == 5 || error.Number() == 53 || error.Number() == 75;
  return is_known && !error.Description().empty();
}

void Open(SodiumVault& vault) {
  try {
    const auto stored = vault.Stored();
    for (const std::string& text : {stored.name, stored.secret}) {
      const auto opened = vault.Decipher(text);
      Require(opened.text().size() < text.size(), "a sealed text is longer");
    }
  } catch (const RuntimeError& error) {
    Require(IsRefusal(error), "a refusal");
  }
}

void Renew(SodiumVault& vault) {
  vault.Set(kNew);
  const auto stored = vault.Stored();
  Require(vault.Decipher(stored.name).text() == kNew.name, "the new name");
  Require(vault.Decipher(stored.secret).text() == kNew.secret, "the new secret");
  vault.Clear();
  Require(fs::is_empty(Folder()), "nothing is left");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  PutFiles({reinterpret_cast<const char*>(data), size});
  SodiumVault vault(Folder());
  Open(vault);
  Renew(vault);
  fs::remove_all(Folder());
  return 0;
}
