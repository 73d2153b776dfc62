// A source list from anywhere, whole or in chunks: what it stores are names with files, and it ends with the
// owner told of success, with a status text, or with error 5.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "automation/runtime_error.h"
#include "chunks.h"
#include "support/idle_loop.h"
#include "support/stream_rig.h"

namespace {

using namespace mirelo;

constexpr char kList[] = "Settings\\QuoteSource\\List";

void Require(bool holds) {
  if (!holds) std::abort();
}

// What a list raises (5), and what quote records do: a position that is too far, a text without end, a lost
// place.
bool IsErrorOfTheStream(std::int32_t number) {
  return number == 5 || number == 6 || number == 9 || number == cQTStreaming::kEndlessWalk;
}

// The registry's names end at a zero, so a list with zeros in it may store what it can't find again.
void RequireSoundList(testing::StreamRig& rig, bool holds_zeros) {
  Array<std::string> names;
  mGlobal::AppSettings().GetAllKeys(kList, names);
  if (!names.IsAllocated()) return;
  for (const std::string& name : names) {
    const std::string file = mGlobal::AppSettings().GetSetting(kList, name, "").ToText();
    Require(holds_zeros || (!name.empty() && !file.empty()));
    rig.stream->GiveStreamerFile(name);
  }
  Require(rig.desktop.reports.empty());
  Require(rig.registry.OpenKeys() == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  testing::IdleLoop loop;
  testing::StreamRig rig(loop);
  std::string status;
  rig.stream->OnStatusText.Subscribe([&](const std::string& text) { status = text; });
  rig.stream->PerformanceFollowingProcess.Subscribe([&](std::int16_t process) {
    Require(process == 1 && status == "Data source list updated successfully");
  });
  // Chunks behind a whole list may read as quote records, and a walk over those need not end.
  rig.stream->StopEndlessWalks(true);
  rig.stream->connect();
  std::string_view kind = "ES";
  bool holds_zeros = false;
  for (const std::string& chunk : fuzzing::Chunks(data, size)) {
    try {
      rig.Deliver(std::string(kind) + chunk);
    } catch (const RuntimeError& error) {
      Require(IsErrorOfTheStream(error.Number()));
    }
    kind = "";
    holds_zeros |= chunk.find('\0') != std::string::npos;
  }
  RequireSoundList(rig, holds_zeros);
  return 0;
}
