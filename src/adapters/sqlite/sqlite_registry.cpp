#include "adapters/sqlite/sqlite_registry.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

#include "adapters/sqlite/registry_file.h"
#include "host/registry_names.h"

namespace mirelo::sqlite {

namespace {

// Who stores twenty settings must not wait twenty times.
constexpr int kBusyCallsInATimeout = 50;

bool IsRoot(std::int64_t key) { return key >= host::Registry::kClassesRoot && key <= host::Registry::kUsers; }

}  // namespace

SqliteRegistry::SqliteRegistry(const std::filesystem::path& path, std::chrono::milliseconds busy_timeout)
    : busy_timeout_(busy_timeout),
      database_(OpenRegistryFile(path, busy_timeout)),
      data_version_(PrepareForLayout(database_, "PRAGMA data_version")),
      find_sub_key_(PrepareForLayout(database_, "SELECT id FROM key WHERE parent = ? AND folded = ?")),
      key_exists_(PrepareForLayout(database_, "SELECT 1 FROM key WHERE id = ?")),
      find_value_(PrepareForLayout(database_, "SELECT type, data FROM value WHERE key = ? AND folded = ?")),
      list_names_(PrepareForLayout(database_, "SELECT name FROM value WHERE key = ? ORDER BY id")),
      insert_key_(PrepareForLayout(database_, "INSERT INTO key (parent, folded, name) VALUES (?, ?, ?)")),
      // The name stays as it was first written.
      store_value_(PrepareForLayout(
          database_,
          "INSERT INTO value (key, folded, name, type, data) VALUES (?, ?, ?, ?, ?) "
          "ON CONFLICT (key, folded) DO UPDATE SET type = excluded.type, data = excluded.data")),
      delete_key_(PrepareForLayout(database_, "DELETE FROM key WHERE id = ?")) {}

std::int32_t SqliteRegistry::RegOpenKeyExA(Key key, const std::string& sub_key, std::uint32_t access,
                                           Key& result) {
  Handle handle;
  if (const auto error = Resolve(key, 0, handle); error != kSuccess) return error;
  Id found = 0;
  if (const auto error = FindKey(handle.key, sub_key, found); error != kSuccess) return error;
  result = NewHandle(found, access);
  return kSuccess;
}

std::int32_t SqliteRegistry::RegQueryValueExA(Key key, const std::string& name, std::uint32_t& type,
                                              char* data, std::uint32_t& size) {
  Handle handle;
  if (const auto error = Resolve(key, kQueryValue, handle); error != kSuccess) return error;
  const ReadCache::Value* value = nullptr;
  if (const auto error = FindValue(handle.key, name, value); error != kSuccess) return error;

  type = value->type;
  const std::uint32_t capacity = std::exchange(size, static_cast<std::uint32_t>(value->data.size()));
  if (data == nullptr) return kSuccess;
  if (capacity < size) return kMoreData;
  std::memcpy(data, value->data.data(), size);
  return kSuccess;
}

std::int32_t SqliteRegistry::RegQueryInfoKeyA(Key key, std::uint32_t& value_count,
                                              std::uint32_t& longest_value_name) {
  Handle handle;
  if (const auto error = Resolve(key, kQueryValue, handle); error != kSuccess) return error;
  const std::vector<std::string>* names = nullptr;
  if (const auto error = FindNames(handle.key, names); error != kSuccess) return error;

  std::size_t longest = 0;
  for (const std::string& name : *names) longest = std::max(longest, name.size());
  value_count = static_cast<std::uint32_t>(names->size());
  longest_value_name = static_cast<std::uint32_t>(longest);
  return kSuccess;
}

std::int32_t SqliteRegistry::RegEnumValueA(Key key, std::uint32_t index, char* name, std::uint32_t& size) {
  Handle handle;
  if (const auto error = Resolve(key, kQueryValue, handle); error != kSuccess) return error;
  const std::vector<std::string>* names = nullptr;
  if (const auto error = FindNames(handle.key, names); error != kSuccess) return error;

  if (index >= names->size()) return kNoMoreItems;
  const std::string& found = (*names)[index];
  if (size <= found.size()) return kMoreData;
  std::memcpy(name, found.c_str(), found.size() + 1);
  size = static_cast<std::uint32_t>(found.size());
  return kSuccess;
}

std::int32_t SqliteRegistry::RegCreateKeyExA(Key key, const std::string& sub_key, std::uint32_t access,
                                             Key& result) {
  Handle handle;
  if (const auto error = Resolve(key, 0, handle); error != kSuccess) return error;
  Id found = 0;
  auto error = FindKey(handle.key, sub_key, found);
  if (error == kFileNotFound) {
    if ((handle.access & kCreateSubKey) == 0) return kAccessDenied;
    error = MakeKey(handle.key, sub_key, found);
  }
  if (error != kSuccess) return error;
  result = NewHandle(found, access);
  return kSuccess;
}

std::int32_t SqliteRegistry::RegSetValueExA(Key key, const std::string& name, std::uint32_t type,
                                            const char* data, std::uint32_t size) {
  Handle handle;
  if (const auto error = Resolve(key, kSetValue, handle); error != kSuccess) return error;
  const std::string_view given = host::TerminatedName(name);
  if (given.size() > host::kLongestValueName || (data == nullptr && size > 0)) {
    return UnlessDeleted(handle.key, kInvalidParameter);
  }
  if (const auto error = BeforeWrite(); error != kSuccess) return error;

  const std::string folded = host::FoldName(given);
  Run run(store_value_);
  run.Bind(handle.key).Bind(folded).Bind(given).Bind(type).Bind(std::string_view(data, size));
  const int stored = run.Step();
  return stored == SQLITE_CONSTRAINT_FOREIGNKEY ? kKeyDeleted : CodeOf(stored);
}

std::int32_t SqliteRegistry::RegDeleteKeyA(Key key, const std::string& sub_key) {
  Handle handle;
  if (const auto error = Resolve(key, 0, handle); error != kSuccess) return error;
  Id found = 0;
  if (const auto error = FindKey(handle.key, sub_key, found); error != kSuccess) return error;
  if (IsRoot(found)) return kAccessDenied;
  if (const auto error = BeforeWrite(); error != kSuccess) return error;

  const int deleted = Run(delete_key_).Bind(found).Step();
  if (deleted == SQLITE_CONSTRAINT_FOREIGNKEY) return kAccessDenied;  // it has subkeys
  if (const auto error = CodeOf(deleted); error != kSuccess) return error;
  return database_.Changes() == 0 ? kFileNotFound : kSuccess;
}

std::int32_t SqliteRegistry::RegCloseKey(Key key) {
  if (IsRoot(key)) return kSuccess;
  return handles_.erase(key) == 1 ? kSuccess : kInvalidHandle;
}

std::int32_t SqliteRegistry::BeginTransaction() {
  if (in_transaction_) return kInvalidParameter;
  if (const auto error = BeforeWrite(); error != kSuccess) return error;
  const auto error = CodeOf(database_.Execute("BEGIN IMMEDIATE"));
  in_transaction_ = error == kSuccess;
  return error;
}

std::int32_t SqliteRegistry::CommitTransaction() {
  if (!in_transaction_) return kInvalidParameter;
  if (const auto error = BeforeWrite(); error != kSuccess) return error;
  const auto error = CodeOf(database_.Execute("COMMIT"));
  in_transaction_ = error != kSuccess;
  return error;
}

void SqliteRegistry::RollBackTransaction() {
  if (!std::exchange(in_transaction_, false)) return;
  cache_.Clear();
  if (database_.IsInTransaction()) database_.Execute("ROLLBACK");
}

std::int32_t SqliteRegistry::FindKey(Id below, const std::string& path, Id& key) {
  if (const auto error = DropCacheIfChanged(); error != kSuccess) return error;
  if (const Id* known = cache_.FindKey(below, path)) {
    key = *known;
    return kSuccess;
  }
  if (host::HasTooLongName(path)) return UnlessDeleted(below, kInvalidParameter);

  Id found = below;
  for (const std::string_view name : host::SplitPath(host::TerminatedName(path))) {
    const std::string folded = host::FoldName(name);
    Run run(find_sub_key_);
    const int result = run.Bind(found).Bind(folded).Step();
    if (result == SQLITE_DONE) return UnlessDeleted(below, kFileNotFound);
    if (result != SQLITE_ROW) return CodeOf(result);
    found = run.Integer(0);
  }
  if (found == below) {
    if (const auto error = CheckKey(below); error != kSuccess) return error;
  }
  cache_.KeepKey(below, path, found);
  key = found;
  return kSuccess;
}

std::int32_t SqliteRegistry::FindValue(Id key, const std::string& name, const ReadCache::Value*& value) {
  if (const auto error = DropCacheIfChanged(); error != kSuccess) return error;
  value = cache_.FindValue(key, name);
  if (value != nullptr) return kSuccess;

  const std::string folded = host::FoldName(host::TerminatedName(name));
  Run run(find_value_);
  const int result = run.Bind(key).Bind(folded).Step();
  if (result == SQLITE_DONE) return UnlessDeleted(key, kFileNotFound);
  if (result != SQLITE_ROW) return CodeOf(result);
  value =
      cache_.KeepValue(key, name, {static_cast<std::uint32_t>(run.Integer(0)), std::string(run.Bytes(1))});
  return kSuccess;
}

std::int32_t SqliteRegistry::FindNames(Id key, const std::vector<std::string>*& names) {
  if (const auto error = DropCacheIfChanged(); error != kSuccess) return error;
  names = cache_.FindNames(key);
  if (names != nullptr) return kSuccess;

  std::vector<std::string> read;
  Run run(list_names_);
  run.Bind(key);
  int result = run.Step();
  for (; result == SQLITE_ROW; result = run.Step()) read.emplace_back(run.Bytes(0));
  if (result != SQLITE_DONE) return CodeOf(result);
  if (read.empty()) {
    if (const auto error = CheckKey(key); error != kSuccess) return error;
  }
  names = cache_.KeepNames(key, std::move(read));
  return kSuccess;
}

// The version changes with every commit of another connection. One that comes between this question and the
// reading after it does no harm: what is kept then is newer than the version, and goes at the next question.
std::int32_t SqliteRegistry::DropCacheIfChanged() {
  Run run(data_version_);
  const int result = run.Step();
  if (result != SQLITE_ROW) return CodeOf(result);
  const std::int64_t version = run.Integer(0);
  if (version != std::exchange(cached_version_, version)) cache_.Clear();
  return kSuccess;
}

std::int32_t SqliteRegistry::UnlessDeleted(Id key, std::int32_t code) {
  const auto error = CheckKey(key);
  return error == kSuccess ? code : error;
}

std::int32_t SqliteRegistry::CheckKey(Id key) {
  const int result = Run(key_exists_).Bind(key).Step();
  return result == SQLITE_DONE ? kKeyDeleted : CodeOf(result);
}

std::int32_t SqliteRegistry::MakeKey(Id below, const std::string& path, Id& key) {
  if (const auto error = BeforeWrite(); error != kSuccess) return error;
  // A savepoint is all or nothing within what is under way; by itself it would take the lock too late.
  const char* begin = in_transaction_ ? "SAVEPOINT path" : "BEGIN IMMEDIATE";
  const char* keep = in_transaction_ ? "RELEASE path" : "COMMIT";
  const char* undo = in_transaction_ ? "ROLLBACK TO path; RELEASE path" : "ROLLBACK";
  if (const auto error = CodeOf(database_.Execute(begin)); error != kSuccess) return error;
  auto error = MakeSubKeys(below, path, key);
  if (error == kSuccess) error = CodeOf(database_.Execute(keep));
  if (error != kSuccess) database_.Execute(undo);
  return error;
}

std::int32_t SqliteRegistry::MakeSubKeys(Id below, const std::string& path, Id& key) {
  key = below;
  for (const std::string_view name : host::SplitPath(host::TerminatedName(path))) {
    const std::string folded = host::FoldName(name);
    Run find(find_sub_key_);
    int result = find.Bind(key).Bind(folded).Step();
    if (result == SQLITE_ROW) {
      key = find.Integer(0);
      continue;
    }
    if (result != SQLITE_DONE) return CodeOf(result);
    Run insert(insert_key_);
    result = insert.Bind(key).Bind(folded).Bind(name).Step();
    if (result == SQLITE_CONSTRAINT_FOREIGNKEY) return kKeyDeleted;
    if (result != SQLITE_DONE) return CodeOf(result);
    key = database_.LastInsertedId();
  }
  return kSuccess;
}

// Our own writes do not change the version, so they drop the cache themselves.
std::int32_t SqliteRegistry::BeforeWrite() {
  cache_.Clear();
  if (database_.HasMoved()) {
    last_failure_ = "The settings file " + database_.path() + " was taken away while it was in use";
    return kRegistryIoFailed;
  }
  // What ended the transaction early has been noted by then.
  return in_transaction_ && !database_.IsInTransaction() ? kRegistryIoFailed : kSuccess;
}

std::int32_t SqliteRegistry::CodeOf(int result) {
  const bool locked = (result & 0xFF) == SQLITE_BUSY;
  if (std::exchange(locked_, locked) != locked) {
    database_.BusyTimeout(locked ? busy_timeout_ / kBusyCallsInATimeout : busy_timeout_);
  }
  switch (result & 0xFF) {
    case SQLITE_OK:
    case SQLITE_ROW:
    case SQLITE_DONE:
      last_failure_.clear();
      return kSuccess;
    case SQLITE_READONLY:
    case SQLITE_PERM:
      last_failure_ = WhyRefused(database_, result);
      return kAccessDenied;
    default:
      last_failure_ = WhyRefused(database_, result);
      return kRegistryIoFailed;
  }
}

std::int32_t SqliteRegistry::Resolve(Key key, std::uint32_t needed, Handle& handle) const {
  if (IsRoot(key)) {
    handle = {key, ~0U};
    return kSuccess;
  }
  const auto open = handles_.find(key);
  if (open == handles_.end()) return kInvalidHandle;
  if ((open->second.access & needed) != needed) return kAccessDenied;
  handle = open->second;
  return kSuccess;
}

host::Registry::Key SqliteRegistry::NewHandle(Id key, std::uint32_t access) {
  do {
    last_handle_ = (last_handle_ + 1) % kClassesRoot;
  } while (last_handle_ == 0 || handles_.count(last_handle_) != 0);
  handles_[last_handle_] = {key, access};
  return last_handle_;
}

}  // namespace mirelo::sqlite
