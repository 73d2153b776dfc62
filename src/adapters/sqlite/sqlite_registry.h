#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <unordered_map>
#include <vector>

#include "adapters/sqlite/database.h"
#include "adapters/sqlite/read_cache.h"
#include "adapters/sqlite/registry_path.h"
#include "host/registry.h"

namespace mirelo::sqlite {

// The registry in a database file. Several processes may have it open and write to it: each sees what the
// others wrote, and what a call has stored outlives a crash of the program and of the machine.
//
// Calls return kRegistryIoFailed when the file cannot be read or written any more, when it was taken away
// while it was open, and when it is locked for longer than the busy timeout, for which the calls after that
// do not wait again; kAccessDenied when the file may not be written.
class SqliteRegistry : public host::Registry {
 public:
  static constexpr std::chrono::milliseconds kBusyTimeout{5000};

  // Opens the file, made for its owner only if absent. RuntimeErrors that name the file: 75 when it cannot be
  // made, opened or locked, 321 when it is damaged, of another program or of a newer version of this one.
  explicit SqliteRegistry(const std::filesystem::path& path = DefaultRegistryPath(),
                          std::chrono::milliseconds busy_timeout = kBusyTimeout);

  std::int32_t RegOpenKeyExA(Key key, const std::string& sub_key, std::uint32_t access, Key& result) override;
  std::int32_t RegQueryValueExA(Key key, const std::string& name, std::uint32_t& type, char* data,
                                std::uint32_t& size) override;
  std::int32_t RegQueryInfoKeyA(Key key, std::uint32_t& value_count,
                                std::uint32_t& longest_value_name) override;
  std::int32_t RegEnumValueA(Key key, std::uint32_t index, char* name, std::uint32_t& size) override;
  std::int32_t RegCreateKeyExA(Key key, const std::string& sub_key, std::uint32_t access,
                               Key& result) override;
  std::int32_t RegSetValueExA(Key key, const std::string& name, std::uint32_t type, const char* data,
                              std::uint32_t size) override;
  std::int32_t RegDeleteKeyA(Key key, const std::string& sub_key) override;
  std::int32_t RegCloseKey(Key key) override;

  // The file is locked for others from here to the end of the transaction.
  std::int32_t BeginTransaction() override;
  std::int32_t CommitTransaction() override;
  void RollBackTransaction() override;

  // Says by whom the file was locked, if the system tells.
  std::string LastFailure() const override { return last_failure_; }

 private:
  using Id = std::int64_t;  // of a key in the database; a root key's is its handle

  struct Handle {
    Id key = 0;
    std::uint32_t access = 0;
  };

  // Reading: what the cache holds, else what the database says.
  std::int32_t FindKey(Id below, const std::string& path, Id& key);
  std::int32_t FindValue(Id key, const std::string& name, const ReadCache::Value*& value);
  std::int32_t FindNames(Id key, const std::vector<std::string>*& names);
  std::int32_t DropCacheIfChanged();
  std::int32_t CheckKey(Id key);                          // kKeyDeleted when it is gone
  std::int32_t UnlessDeleted(Id key, std::int32_t code);  // `code`, but kKeyDeleted when the key is gone

  // Writing: each is one transaction, or a part of the one that is under way.
  std::int32_t MakeKey(Id below, const std::string& path, Id& key);
  std::int32_t MakeSubKeys(Id below, const std::string& path, Id& key);
  std::int32_t BeforeWrite();

  // The code for a result of the database, whose failures are noted.
  std::int32_t CodeOf(int result);

  std::int32_t Resolve(Key key, std::uint32_t needed, Handle& handle) const;
  Key NewHandle(Id key, std::uint32_t access);

  std::chrono::milliseconds busy_timeout_;
  Database database_;
  Statement data_version_;
  Statement find_sub_key_;
  Statement key_exists_;
  Statement find_value_;
  Statement list_names_;
  Statement insert_key_;
  Statement store_value_;
  Statement delete_key_;

  ReadCache cache_;
  std::int64_t cached_version_ = 0;
  std::unordered_map<Key, Handle> handles_;
  Key last_handle_ = 0;
  bool in_transaction_ = false;
  bool locked_ = false;  // when it was last written to
  std::string last_failure_;
};

}  // namespace mirelo::sqlite
