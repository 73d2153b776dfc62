#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>

namespace mirelo::quotetracker {

// A file that holds what a stream connection received, chunk by chunk as it came, so that the session can be
// played again. All numbers are little-endian.
//
//   header   8 bytes   "QTSESS\r\n", which a transfer as text would damage
//            4 bytes   version, 1
//            4 bytes   0
//   chunk    8 bytes   microseconds since the session began; never less than the chunk before
//            4 bytes   number of bytes, 1 to kMostChunk
//            4 bytes   CRC-32 (that of zip and Ethernet) of the bytes
//            n bytes   the bytes as received
//   ...      up to the end of the file
struct SessionChunk {
  std::chrono::microseconds offset{0};
  std::string bytes;
  friend bool operator==(const SessionChunk&, const SessionChunk&) = default;
};

inline constexpr std::size_t kMostChunk = std::size_t{16} * 1024 * 1024;

// Writes a session. A file that stood there is replaced.
class SessionWriter {
 public:
  // Raises std::runtime_error, as all members do, with the file's name and what failed.
  explicit SessionWriter(const std::string& path);

  // Adds a chunk and hands it to the machine, so that a session broken off is whole up to its last chunk.
  // Without bytes nothing is added. An offset before the last one counts as that one. Not more than
  // kMostChunk bytes.
  void Add(std::chrono::microseconds offset, std::string_view bytes);

 private:
  void Put(std::string_view bytes);

  std::string path_;
  std::ofstream file_;
  std::chrono::microseconds last_{0};
};

// Reads a session and trusts nothing in it.
class SessionReader {
 public:
  // Raises std::runtime_error, as all members do, with the file's name and what is wrong with it: it cannot
  // be read, is no session, is of another version, or is damaged at a stated byte.
  explicit SessionReader(const std::string& path);

  // The next chunk; nothing at the end.
  std::optional<SessionChunk> Next();

 private:
  std::string Take(std::size_t count, const char* what);
  [[noreturn]] void Damaged(const std::string& what) const;

  std::string path_;
  std::ifstream file_;
  std::uint64_t position_ = 0;  // of the bytes taken last
  std::uint64_t end_ = 0;       // behind them
  std::chrono::microseconds last_{0};
};

// Reads a session from end to end. Raises what SessionReader raises; returns its number of chunks.
std::size_t CheckSession(const std::string& path);

}  // namespace mirelo::quotetracker
