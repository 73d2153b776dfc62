// Chunks of quote records from anywhere: the quotes and errors that they give are those that the rules give,
// written down once more and slowly.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "automation/runtime_error.h"
#include "chunks.h"
#include "streaming/reference_stream.h"
#include "support/idle_loop.h"
#include "support/stream_rig.h"

namespace {

using namespace mirelo;
using testing::ReferenceStream;
using Outcome = ReferenceStream::Outcome;

// The reference knows quote records only.
bool IsControlMessage(std::string_view chunk) {
  return chunk.starts_with("OK") || chunk.starts_with("LO") || chunk.starts_with("ES");
}

Outcome Receive(testing::StreamRig& rig, std::string_view chunk) {
  try {
    rig.Deliver(chunk);
  } catch (const RuntimeError& error) {
    switch (error.Number()) {
      case 9:
        return Outcome::SubscriptOutOfRange;
      case 6:
        return Outcome::Overflow;
      case cQTStreaming::kEndlessWalk:
        return Outcome::Endless;
      default:
        std::abort();
    }
  }
  return Outcome::Done;
}

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "the decoder and the rules differ in %s\n", what);
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  testing::IdleLoop loop;
  testing::StreamRig rig(loop);
  rig.stream->StopEndlessWalks(true);
  rig.stream->connect();
  ReferenceStream reference;
  std::size_t compared = 0;
  for (const std::string& chunk : fuzzing::Chunks(data, size)) {
    if (IsControlMessage(chunk)) continue;
    const Outcome outcome = reference.Receive(chunk);
    Require(Receive(rig, chunk) == outcome, "the outcome of a chunk");
    for (const auto& quote : rig.Take()) {
      // A walk that goes round for ever may publish the quotes of its circle again before that is found out.
      if (outcome == Outcome::Endless && compared == reference.published.size()) return 0;
      Require(compared < reference.published.size(), "the number of quotes");
      Require(testing::Flat(*quote) == reference.published[compared], "a quote");
      ++compared;
    }
    Require(compared == reference.published.size(), "the number of quotes");
    if (outcome == Outcome::Endless) return 0;  // both may stand at other places now
  }
  return 0;
}
