#include <sys/mman.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>

#include "quotetracker/fault_rule.h"
#include "quotetracker/http_fault.h"
#include "quotetracker/replay.h"
#include "quotetracker/session_file.h"
#include "quotetracker/stream_fault.h"

using namespace mirelo::quotetracker;

namespace {

void ReadAsReplay(const std::string& text) {
  std::istringstream stream(text);
  try {
    Replay replay(stream, "text", 1, [] { return Moment{}; });
    replay.Look("A");
    replay.Subscribe({"A"})->Next();
  } catch (const std::runtime_error&) {
  }
}

// The path of a file that lives in memory.
std::string MemoryFile(const char* name) {
  return "/proc/self/fd/" + std::to_string(::memfd_create(name, 0));
}

// A session that is read and written again is the same file.
void ReadAsSession(const std::string& text) {
  static const std::string original = MemoryFile("original");
  static const std::string copy = MemoryFile("copy");
  std::ofstream(original, std::ios::binary) << text;
  try {
    SessionReader reader(original);
    SessionWriter writer(copy);
    while (const auto chunk = reader.Next()) writer.Add(chunk->offset, chunk->bytes);
  } catch (const std::runtime_error&) {
    return;
  }
  std::ostringstream copied;
  copied << std::ifstream(copy, std::ios::binary).rdbuf();
  // The four bytes behind the version are not read.
  if (copied.str().substr(16) != text.substr(16)) std::abort();
}

void ReadAsFaults(std::string_view text) {
  try {
    HttpFaultPlan::Parse(text, 1).Next();
  } catch (const std::invalid_argument&) {
  }
  try {
    StreamFaultPlan::Parse(text, 1).Next(StreamStep::kQuotes);
  } catch (const std::invalid_argument&) {
  }
}

}  // namespace

// What the program reads from files and arguments.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  ReadAsReplay(text);
  ReadAsSession(text);
  ReadAsFaults(text);
  return 0;
}
