#include "app/calc/own_office.h"

#include <sys/socket.h>

#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

#include "app/calc/extension.h"
#include "app/calc/office_place.h"
#include "terminal/standard_streams.h"

namespace mirelo::app {

using terminal::Err;

namespace {

namespace fs = std::filesystem;

constexpr int kStartedForItsProfile = 81;  // the office wants to be started once more
constexpr std::chrono::milliseconds kBetweenLooks{20};
constexpr std::chrono::seconds kForTheFirstWord{60};

std::string TextOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

// A version that is new to its profile first draws hundreds of pictures to try out the graphics, which takes
// five times as long as the rest of the start. An office that cannot read this only starts more slowly.
void WriteProfile(const fs::path& profile) {
  std::error_code ignored;
  fs::create_directories(profile / "user", ignored);
  std::ofstream(profile / "user" / "registrymodifications.xcu") << R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:items xmlns:oor="http://openoffice.org/2001/registry"><item oor:path="/org.openoffice.Setup/Product">
<prop oor:name="ooSetupLastVersion" oor:op="fuse"><value>999.9</value></prop></item></oor:items>
)";
}

}  // namespace

OwnOffice::OwnOffice(host::MessageLoop& loop, const OfficePlace& place, Manner manner)
    : loop_(loop), line_(-1) {
  int ends[2] = {-1, -1};
  const int opened = ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends);
  ours_ = poll::Descriptor::Opened(opened < 0 ? opened : ends[0]);
  theirs_ = poll::Descriptor(ends[1]);
  line_ = libreoffice::Lines(ours_.Number());
  PutExtensionInto(folder_.Path() / "extensions", place);
  WriteProfile(folder_.Path() / "profile");
  start_.program = place.programs / "soffice.bin";
  start_.arguments = {"-env:UserInstallation=" + FileAddress(folder_.Path() / "profile"),
                      "-env:BUNDLED_EXTENSIONS=" + FileAddress(folder_.Path() / "extensions"), "--norestore",
                      "--nologo", "--nodefault"};
  if (manner.headless) {
    start_.arguments.push_back("--headless");
    start_.variables.push_back("SAL_USE_VCLPLUGIN=svp");
  }
  start_.arguments.push_back(libreoffice::kErrandCommand);
  start_.variables.push_back(std::string(libreoffice::kErrandVariable) + "=" +
                             std::to_string(theirs_.Number()));
  start_.variables.push_back("TMPDIR=" + folder_.Path().string());
  start_.output = folder_.Path() / "office.log";
  start_.at_terminal = manner.at_terminal;
  Keep(theirs_.Number());
}

OwnOffice::~OwnOffice() {
  loop_.Unwatch(watch_);
  for (const auto timer : {looking_, giving_up_}) loop_.StopTimer(timer);
}

int OwnOffice::Run(const libreoffice::Errand& errand) {
  Send(LineOf(errand));
  watch_ = loop_.Watch(ours_.Number(), host::MessageLoop::kRead, [this](unsigned) { Listen(); });
  Start();
  GiveUpIn(kForTheFirstWord, "LibreOffice did not start");
  loop_.RunUntil([this] { return code_.has_value(); });
  return *code_;
}

void OwnOffice::Start() {
  process_.reset();  // it may have the terminal
  process_ = std::make_unique<OfficeProcess>(start_);
  LookLater();
}

void OwnOffice::LookLater() {
  looking_ = loop_.StartTimer(kBetweenLooks, [this] { Look(); });
}

// Whether it has ended.
void OwnOffice::Look() {
  const auto code = process_->ExitCode();
  if (!code) return LookLater();
  if (*code == kStartedForItsProfile && !has_spoken_) return Start();
  Listen();
  code_ = code;
}

void OwnOffice::Listen() {
  line_.Receive();
  while (const auto text = line_.Next()) {
    if (!std::exchange(has_spoken_, true)) loop_.StopTimer(std::exchange(giving_up_, 0));
    Said.Raise(*text);
  }
}

void OwnOffice::GiveUpIn(std::chrono::milliseconds time, const std::string& why) {
  loop_.StopTimer(giving_up_);
  giving_up_ = loop_.StartTimer(time, [this, why] { GiveUp(why); });
}

void OwnOffice::GiveUp(const std::string& why) {
  given_up_ = why;
  process_->Kill();
}

void OwnOffice::TellOfEarlyEnd(int code, const std::string& what_is_lost) const {
  Err() << "error: " << (given_up_.empty() ? "LibreOffice ended before the day was over" : given_up_)
        << " (exit code " << code << ")" << what_is_lost << "\n";
  const std::string said = TextOf(start_.output);
  if (!said.empty()) Err() << "It said:\n  " << terminal::Indented(said) << "\n";
}

}  // namespace mirelo::app
