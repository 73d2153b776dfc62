#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace mirelo::sqlite {

// What a database's header says of whose it is, which is looked at before SQLite may change the file: it puts
// what an earlier crash has left beside a file into it.
enum class FileKind {
  Empty,  // a file without bytes, or one whose making was broken off, of zeros
  Ours,
  OfOthers,
  NoDatabase,
};

// How much of a file's beginning that takes.
inline constexpr std::size_t kHeaderSize = 100;

// `beginning` is the file's, of that size where the file has as much.
FileKind KindOf(std::string_view beginning, std::int64_t application_id);

}  // namespace mirelo::sqlite
