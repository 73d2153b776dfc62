// Reading one setting out of the user's registry file, as every property of the facade does, against the
// SQLite statement that it comes down to: the same value by its key and name, from a file of the same kind.

#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include <benchmark/benchmark.h>
#include <stdlib.h>

#include "adapters/sqlite/sqlite_registry.h"
#include "core/CAppSettings.h"
#include "host/host.h"
#include "support/test_host.h"

namespace mirelo {
namespace {

constexpr const char* kSection = "Settings";
constexpr const char* kKey = "ListRight";
constexpr const char* kValue = "Ticker,Last,Change,Bid,Ask,Date,Time";

// A registry file with the settings of a used system: the 30 or so of the dialog, and the list of sources.
class RegistryFile {
 public:
  RegistryFile() {
    std::string pattern = (std::filesystem::temp_directory_path() / "mirelo-bench-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) std::abort();
    folder_ = pattern;
    sqlite::SqliteRegistry registry(path());
    testing::TestHost host;
    host::HostScope scope(host.Use(registry));
    CAppSettings settings;
    settings.Init("Kestrin", "Dovanta2");
    for (int i = 0; i < 30; ++i) settings.SaveSetting(kSection, "Setting" + std::to_string(i), i);
    settings.SaveSetting(kSection, kKey, kValue);
    for (int i = 0; i < 80; ++i) {
      settings.SaveSetting("Settings\\QuoteSource\\List", "Source " + std::to_string(i), "FILE.SDF");
    }
  }
  ~RegistryFile() { std::filesystem::remove_all(folder_); }
  RegistryFile(const RegistryFile&) = delete;
  RegistryFile& operator=(const RegistryFile&) = delete;

  std::filesystem::path path() const { return folder_ / "registry.db"; }

 private:
  std::filesystem::path folder_;
};

void GetSetting(benchmark::State& state) {
  const RegistryFile file;
  sqlite::SqliteRegistry registry(file.path());
  testing::TestHost host;
  host::HostScope scope(host.Use(registry));
  CAppSettings settings;
  settings.Init("Kestrin", "Dovanta2");
  for (auto _ : state) {
    const Variant value = settings.GetSetting(kSection, kKey, "");
    if (!value.IsText() || value.IfText()->empty()) state.SkipWithError("the setting was not read");
    benchmark::DoNotOptimize(value);
  }
}

void BareStatement(benchmark::State& state) {
  const RegistryFile file;
  sqlite3* database = nullptr;
  sqlite3_open_v2(file.path().c_str(), &database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
  sqlite3_stmt* find_key = nullptr;
  sqlite3_prepare_v2(database, "SELECT id FROM key WHERE CAST(folded AS TEXT) = 'SETTINGS'", -1, &find_key,
                     nullptr);
  sqlite3_step(find_key);
  const sqlite3_int64 key = sqlite3_column_int64(find_key, 0);
  sqlite3_finalize(find_key);

  const std::string name = "LISTRIGHT";
  sqlite3_stmt* find = nullptr;
  sqlite3_prepare_v3(database, "SELECT type, data FROM value WHERE key = ? AND folded = ?", -1,
                     SQLITE_PREPARE_PERSISTENT, &find, nullptr);
  for (auto _ : state) {
    sqlite3_bind_int64(find, 1, key);
    sqlite3_bind_blob(find, 2, name.data(), static_cast<int>(name.size()), SQLITE_STATIC);
    if (sqlite3_step(find) != SQLITE_ROW) state.SkipWithError("the setting was not read");
    const auto type = sqlite3_column_int(find, 0);
    const std::string value(static_cast<const char*>(sqlite3_column_blob(find, 1)),
                            static_cast<std::size_t>(sqlite3_column_bytes(find, 1)));
    benchmark::DoNotOptimize(type);
    benchmark::DoNotOptimize(value);
    sqlite3_reset(find);
  }
  sqlite3_finalize(find);
  sqlite3_close(database);
}

BENCHMARK(GetSetting)->Name("settings/GetSetting");
BENCHMARK(BareStatement)->Name("settings/bare");

}  // namespace
}  // namespace mirelo

BENCHMARK_MAIN();
