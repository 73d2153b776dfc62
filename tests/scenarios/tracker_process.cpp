#include "scenarios/tracker_process.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>

#include "automation/number.h"
#include "support/built_program.h"

namespace mirelo::testing {

namespace {

constexpr std::chrono::seconds kTrackersPatience(60);

}  // namespace

void TrackerProcess::Start(const std::vector<std::string>& more) {
  std::vector<std::string> arguments{"--listen",          address_,
                                     "--http-port",       std::to_string(http_port_),
                                     "--stream-port",     std::to_string(stream_port_),
                                     "--exit-with-parent"};
  arguments.insert(arguments.end(), more.begin(), more.end());
  process_ = std::make_unique<app::ChildProcess>(BuiltProgram("quotetracker"), arguments);
  http_port_ = Number("HTTP port ");
  stream_port_ = Number("stream port ");
}

void TrackerProcess::Kill() {
  process_->Signal(SIGKILL);
  process_->Wait(kTrackersPatience);
  process_.reset();
}

void TrackerProcess::Stall() { process_->Signal(SIGSTOP); }
void TrackerProcess::GoOn() { process_->Signal(SIGCONT); }

int TrackerProcess::Number(const std::string& head) {
  const std::string line = process_->ReadLine(kTrackersPatience).value_or("");
  EXPECT_TRUE(line.starts_with(head)) << line;
  return RoundToInt32(Val(line.substr(std::min(line.size(), head.size()))));
}

}  // namespace mirelo::testing
