#include "windows/spreadsheet/stored_archive.h"

#include <cstddef>

namespace mirelo::testing {

namespace {

constexpr std::uint32_t kPart = 0x04034B50;  // what each kind of record begins with
constexpr std::uint32_t kEntry = 0x02014B50;
constexpr std::uint32_t kEnd = 0x06054B50;
constexpr std::uint16_t kVersion = 20;
constexpr std::uint16_t kFirstDay = 0x21;  // 1 January 1980: when a part was made is of no interest

std::string Number(std::uint32_t number, std::size_t bytes) {
  std::string text;
  for (std::size_t i = 0; i < bytes; ++i) text += static_cast<char>(number >> (8 * i) & 0xFF);
  return text;
}
std::string Long(std::size_t number) { return Number(static_cast<std::uint32_t>(number), 4); }
std::string Short(std::size_t number) { return Number(static_cast<std::uint32_t>(number), 2); }

std::uint32_t Checksum(std::string_view bytes) {
  std::uint32_t sum = 0xFFFFFFFF;
  for (const char byte : bytes) {
    sum ^= static_cast<unsigned char>(byte);
    for (int bit = 0; bit < 8; ++bit) sum = sum >> 1 ^ ((sum & 1) != 0 ? 0xEDB88320 : 0);
  }
  return ~sum;
}

// What stands in front of a part and in the directory alike: not packed, and how large it is.
std::string Description(std::string_view name, std::string_view bytes) {
  return Short(kVersion) + Short(0) + Short(0) + Short(0) + Short(kFirstDay) + Long(Checksum(bytes)) +
         Long(bytes.size()) + Long(bytes.size()) + Short(name.size()) + Short(0);
}

}  // namespace

void StoredArchive::Add(std::string_view name, std::string_view bytes) {
  const std::string description = Description(name, bytes);
  const std::size_t place = parts_.size();
  parts_ += Long(kPart) + description;
  parts_.append(name).append(bytes);
  directory_ +=
      Long(kEntry) + Short(kVersion) + description + Short(0) + Short(0) + Short(0) + Long(0) + Long(place);
  directory_.append(name);
  ++count_;
}

std::string StoredArchive::Bytes() const {
  return parts_ + directory_ + Long(kEnd) + Short(0) + Short(0) + Short(count_) + Short(count_) +
         Long(directory_.size()) + Long(parts_.size()) + Short(0);
}

}  // namespace mirelo::testing
