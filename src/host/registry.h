#pragma once

#include <cstdint>
#include <string>

namespace mirelo::host {

// The registry: keys in a tree below root handles, each holding named values of a kind. The eight calls, with
// the return codes that callers know. Strings are bytes in the ANSI code page. Key and value names are found
// without regard to case and keep the case they were made with; "" is a key's unnamed value. A path joins
// keys with "\".
class Registry {
 public:
  using Key = std::uint32_t;  // a root handle below, or one that was opened and not yet closed

  static constexpr Key kClassesRoot = 0x80000000;
  static constexpr Key kCurrentUser = 0x80000001;
  static constexpr Key kLocalMachine = 0x80000002;
  static constexpr Key kUsers = 0x80000003;

  // Kinds of value.
  static constexpr std::uint32_t kSz = 1;  // text with its terminating NUL
  static constexpr std::uint32_t kBinary = 3;
  static constexpr std::uint32_t kDword = 4;  // 4 bytes, little-endian

  // Return codes, as winerror.h numbers them.
  static constexpr std::int32_t kSuccess = 0;
  static constexpr std::int32_t kFileNotFound = 2;
  static constexpr std::int32_t kAccessDenied = 5;  // also: deleting a key that has subkeys
  static constexpr std::int32_t kInvalidHandle = 6;
  static constexpr std::int32_t kInvalidParameter = 87;
  static constexpr std::int32_t kMoreData = 234;
  static constexpr std::int32_t kNoMoreItems = 259;
  static constexpr std::int32_t kRegistryIoFailed = 1016;
  static constexpr std::int32_t kKeyDeleted =
      1018;  // the handle's key is gone, whatever names the call gives

  // Access rights (bits of samDesired). A call on a handle opened without the right it needs is
  // kAccessDenied.
  static constexpr std::uint32_t kQueryValue = 0x0001;
  static constexpr std::uint32_t kSetValue = 0x0002;
  static constexpr std::uint32_t kCreateSubKey = 0x0004;
  static constexpr std::uint32_t kEnumerateSubKeys = 0x0008;
  static constexpr std::uint32_t kRead = 0x20019;
  static constexpr std::uint32_t kAllAccess = 0x003F;

  virtual ~Registry() = default;

  virtual std::int32_t RegOpenKeyExA(Key key, const std::string& sub_key, std::uint32_t access,
                                     Key& result) = 0;

  // `type` receives the kind. With `data` null only `size` is set, to the bytes stored. Otherwise `size` is
  // the buffer's size on entry and the bytes stored on return; a buffer too small is kMoreData and stays
  // untouched.
  virtual std::int32_t RegQueryValueExA(Key key, const std::string& name, std::uint32_t& type, char* data,
                                        std::uint32_t& size) = 0;

  // The number of values and the length of the longest value name, in bytes without terminator.
  virtual std::int32_t RegQueryInfoKeyA(Key key, std::uint32_t& value_count,
                                        std::uint32_t& longest_value_name) = 0;

  // The name of value `index` (from 0, in an order that holds while nothing is written). `size` is the
  // buffer's size in bytes on entry, terminator included, and the name's length without it on return.
  virtual std::int32_t RegEnumValueA(Key key, std::uint32_t index, char* name, std::uint32_t& size) = 0;

  // Opens the key, made with all keys above it if it is absent.
  virtual std::int32_t RegCreateKeyExA(Key key, const std::string& sub_key, std::uint32_t access,
                                       Key& result) = 0;

  // When it returns kSuccess the value is stored for good: a crash right after the call does not lose it.
  virtual std::int32_t RegSetValueExA(Key key, const std::string& name, std::uint32_t type, const char* data,
                                      std::uint32_t size) = 0;

  // Deletes a key with its values; one that has subkeys stays (kAccessDenied).
  virtual std::int32_t RegDeleteKeyA(Key key, const std::string& sub_key) = 0;

  // Closing a root handle does nothing and succeeds.
  virtual std::int32_t RegCloseKey(Key key) = 0;

  // Beside the eight calls: several writes as one. RegistryTransaction (host/registry_transaction.h) is the
  // way to use these.

  // Begins a transaction: what is written from now on is stored together by CommitTransaction, or not at all
  // when it is rolled back, or when the process or the machine ends before the commit. This registry reads
  // its own writes at once; others see them when they are stored. One at a time: kInvalidParameter while one
  // is under way. A handle that was opened meanwhile must be closed before the end.
  virtual std::int32_t BeginTransaction() = 0;
  // For good, as RegSetValueExA. When it fails, nothing is stored and the transaction stays under way.
  // kInvalidParameter when none is.
  virtual std::int32_t CommitTransaction() = 0;
  // Does nothing when none is under way.
  virtual void RollBackTransaction() = 0;

  // Why the store behind the registry failed a call: it is locked, damaged or full. A sentence for people
  // that names the store. Of several such calls the last one counts; empty when the store works again, and
  // when nothing is known.
  virtual std::string LastFailure() const { return {}; }
};

}  // namespace mirelo::host
