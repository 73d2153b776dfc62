#include "quotetracker/session_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <utility>

namespace mirelo::quotetracker {
namespace {

using std::chrono::microseconds;

constexpr std::string_view kMagic = "QTSESS\r\n";
constexpr std::uint32_t kVersion = 1;
constexpr std::size_t kHeaderLength = 16;
constexpr std::size_t kChunkHeaderLength = 16;

template <typename Number>
void PutNumber(std::string& bytes, Number number) {
  for (std::size_t i = 0; i < sizeof number; ++i) bytes += static_cast<char>(number >> (8 * i));
}

template <typename Number>
Number NumberAt(std::string_view bytes, std::size_t at) {
  Number number = 0;
  for (std::size_t i = 0; i < sizeof number; ++i) {
    number |= static_cast<Number>(static_cast<unsigned char>(bytes[at + i])) << (8 * i);
  }
  return number;
}

constexpr std::array<std::uint32_t, 256> MakeCrcTable() {
  std::array<std::uint32_t, 256> table{};
  for (std::uint32_t i = 0; i < 256; ++i) {
    std::uint32_t remainder = i;
    for (int bit = 0; bit < 8; ++bit)
      remainder = (remainder >> 1) ^ ((remainder & 1) != 0 ? 0xEDB88320U : 0U);
    table[i] = remainder;
  }
  return table;
}

std::uint32_t Crc32(std::string_view bytes) {
  static constexpr auto kTable = MakeCrcTable();
  std::uint32_t crc = 0xFFFFFFFFU;
  for (const char c : bytes) crc = (crc >> 8) ^ kTable[(crc ^ static_cast<unsigned char>(c)) & 0xFFU];
  return ~crc;
}

}  // namespace

SessionWriter::SessionWriter(const std::string& path)
    : path_(path), file_(path, std::ios::binary | std::ios::trunc) {
  std::string header(kMagic);
  PutNumber(header, kVersion);
  PutNumber(header, std::uint32_t{0});
  Put(header);
}

void SessionWriter::Add(microseconds offset, std::string_view bytes) {
  if (bytes.empty()) return;
  if (bytes.size() > kMostChunk)
    throw std::runtime_error(path_ + ": a chunk of this size cannot be recorded");
  last_ = std::max(last_, offset);
  std::string chunk;
  chunk.reserve(kChunkHeaderLength + bytes.size());
  PutNumber(chunk, static_cast<std::uint64_t>(last_.count()));
  PutNumber(chunk, static_cast<std::uint32_t>(bytes.size()));
  PutNumber(chunk, Crc32(bytes));
  chunk += bytes;
  Put(chunk);
}

void SessionWriter::Put(std::string_view bytes) {
  file_.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file_.flush();
  if (!file_) throw std::runtime_error(path_ + ": cannot be written: " + std::strerror(errno));
}

SessionReader::SessionReader(const std::string& path) : path_(path), file_(path, std::ios::binary) {
  if (!file_) throw std::runtime_error(path_ + ": cannot be read: " + std::strerror(errno));
  std::string header(kHeaderLength, '\0');
  file_.read(header.data(), kHeaderLength);
  if (!file_ || !header.starts_with(kMagic)) throw std::runtime_error(path_ + ": is no recorded session");
  const auto version = NumberAt<std::uint32_t>(header, kMagic.size());
  if (version != kVersion) {
    throw std::runtime_error(path_ + ": is a session of version " + std::to_string(version) +
                             ", which this program does not know");
  }
  end_ = kHeaderLength;
}

std::optional<SessionChunk> SessionReader::Next() {
  if (file_.peek() == std::ifstream::traits_type::eof()) return std::nullopt;

  const std::string header = Take(kChunkHeaderLength, "the head of a chunk");
  const auto offset = NumberAt<std::uint64_t>(header, 0);
  const auto length = NumberAt<std::uint32_t>(header, 8);
  const auto crc = NumberAt<std::uint32_t>(header, 12);
  if (offset > static_cast<std::uint64_t>(microseconds::max().count())) Damaged("a time that no session has");
  const microseconds time{static_cast<microseconds::rep>(offset)};
  if (time < last_) Damaged("a chunk that is earlier than the one before it");
  if (length == 0 || length > kMostChunk) Damaged("a chunk of " + std::to_string(length) + " bytes");

  std::string bytes = Take(length, "a chunk");
  if (Crc32(bytes) != crc) Damaged("bytes that are not the recorded ones");
  last_ = time;
  return SessionChunk{time, std::move(bytes)};
}

std::string SessionReader::Take(std::size_t count, const char* what) {
  position_ = end_;
  // In steps: a length that lies must not cost more memory than the file has bytes.
  constexpr std::size_t kStep = std::size_t{64} * 1024;
  std::string bytes;
  while (bytes.size() < count) {
    const std::size_t held = bytes.size();
    const std::size_t step = std::min(kStep, count - held);
    bytes.resize(held + step);
    file_.read(bytes.data() + held, static_cast<std::streamsize>(step));
    if (!file_) Damaged(std::string(what) + " that is cut off");
  }
  end_ += count;
  return bytes;
}

void SessionReader::Damaged(const std::string& what) const {
  throw std::runtime_error(path_ + ": is damaged at byte " + std::to_string(position_) + ": " + what);
}

std::size_t CheckSession(const std::string& path) {
  SessionReader reader(path);
  std::size_t chunks = 0;
  while (reader.Next()) ++chunks;
  return chunks;
}

}  // namespace mirelo::quotetracker
