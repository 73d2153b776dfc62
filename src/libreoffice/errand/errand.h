#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "person/dialog_wishes.h"

namespace mirelo::libreoffice {

// What a program has an office of its own do, told over a line between the two processes: a socket, whose
// number in the office is in the environment. Each side sends lines of text: the program an Errand and later
// perhaps kEndErrand, the office its News. An office that is to run a command line says that it begins and,
// right before it ends with the exit code, that it has come to its end.
inline constexpr char kErrandVariable[] = "MIRELO_ERRAND";
inline constexpr char kErrandCommand[] = "service:mirelo.Errand";
// End now, as if the time had passed.
inline constexpr std::string_view kEndErrand = "end";
inline constexpr std::string_view kCommandBegins = "begins";
inline constexpr std::string_view kCommandIsOver = "over";

// A command line of the program, to be run in the office as if that were the program.
struct CommandLine {
  std::vector<std::string> words;  // behind the program's name
  std::filesystem::path programs;  // the folder in which the program lies
  // The descriptors that are to be its standard output and its standard error stream; the office's own say
  // what nobody asks for.
  int output = -1;
  int errors = -1;
};

// A working day in a document, unless there is a command line to run.
struct Errand {
  std::optional<CommandLine> command;

  // In place of the user's settings and credentials, where there is a folder.
  std::filesystem::path folder;
  int http_port = 0;
  int stream_port = 0;

  std::filesystem::path open;  // empty for a new document
  DialogWishes wishes;
  std::chrono::milliseconds time{0};  // until the day ends; 0 for no end
  // Where the document is stored at the end, whereupon the office ends. Empty: it is left to the person.
  std::filesystem::path store;
};

// What the office tells.
struct News {
  enum class Kind {
    kTold,       // `text` is a line for a person
    kComplaint,  // the settings dialog could not be filled as it was wished, or was not committed
    kFailed,     // `text` is why the errand ended; what was stored is said before
    kStored,     // `quotes` came in all
  };
  Kind kind = Kind::kTold;
  std::string text;
  bool is_of_wish = false;  // of a complaint
  std::int64_t quotes = 0;
};

// Both as one line of text, without its end. What is read back of a text that is no such line is nothing.
std::string LineOf(const Errand& errand);
std::string LineOf(const News& news);
std::optional<Errand> ErrandOf(std::string_view line);
std::optional<News> NewsOf(std::string_view line);

}  // namespace mirelo::libreoffice
