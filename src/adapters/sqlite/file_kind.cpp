#include "adapters/sqlite/file_kind.h"

namespace mirelo::sqlite {

namespace {

constexpr std::string_view kMagic("SQLite format 3\0", 16);
constexpr std::size_t kApplicationIdAt = 68;

std::int64_t BigEndianWord(std::string_view bytes) {
  std::int64_t word = 0;
  for (const char byte : bytes.substr(0, 4)) word = word << 8 | static_cast<unsigned char>(byte);
  return word;
}

}  // namespace

FileKind KindOf(std::string_view beginning, std::int64_t application_id) {
  if (beginning.find_first_not_of('\0') == std::string_view::npos) return FileKind::Empty;
  if (!beginning.starts_with(kMagic) || beginning.size() < kHeaderSize) return FileKind::NoDatabase;
  return BigEndianWord(beginning.substr(kApplicationIdAt)) == application_id ? FileKind::Ours
                                                                             : FileKind::OfOthers;
}

}  // namespace mirelo::sqlite
