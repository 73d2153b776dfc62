#include "app/calc/calc_errand.h"

#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "adapters/poll/descriptor.h"
#include "adapters/poll/poll_loop.h"
#include "app/calc/extension.h"
#include "app/calc/office_place.h"
#include "app/calc/office_process.h"
#include "app/exit_code.h"
#include "app/interrupt.h"
#include "app/temporary_folder.h"
#include "app/whole_file.h"
#include "automation/runtime_error.h"
#include "libreoffice/errand/lines.h"
#include "terminal/standard_streams.h"

namespace mirelo::app {

using libreoffice::Errand;
using libreoffice::News;
using terminal::Err;
using terminal::Out;

namespace {

namespace fs = std::filesystem;

constexpr int kStartedForItsProfile = 81;  // the office wants to be started once more
constexpr std::chrono::milliseconds kBetweenLooks{20};
constexpr std::chrono::seconds kForTheFirstWord{60};
constexpr std::chrono::seconds kForTheEnd{15};

// Ends of a line between two processes.
struct Ends {
  poll::Descriptor ours;
  poll::Descriptor theirs;
};

Ends OpenLine() {
  int ends[2] = {-1, -1};
  const int opened = ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends);
  return {poll::Descriptor(opened < 0 ? opened : ends[0]), poll::Descriptor(ends[1])};
}

std::string BytesOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

// An office from its start to its end.
class OfficeOnErrand {
 public:
  OfficeOnErrand(const OfficePlace& office, Errand errand, fs::path file, bool headless)
      : file_(std::move(file)), ends_(OpenLine()), line_(ends_.ours.Number()) {
    if (!file_.empty()) errand.store = folder_.Path() / ("stored" + file_.extension().string());
    stored_ = errand.store;
    PutExtensionInto(folder_.Path() / "extensions", office);
    start_.program = office.programs / "soffice.bin";
    start_.arguments = {"-env:UserInstallation=" + FileAddress(folder_.Path() / "profile"),
                        "-env:BUNDLED_EXTENSIONS=" + FileAddress(folder_.Path() / "extensions"),
                        "--norestore", "--nologo", "--nodefault"};
    if (headless) {
      start_.arguments.push_back("--headless");
      start_.variables.push_back("SAL_USE_VCLPLUGIN=svp");
    }
    start_.arguments.push_back(libreoffice::kErrandCommand);
    start_.line = ends_.theirs.Number();
    start_.variables.push_back(std::string(libreoffice::kErrandVariable) + "=" +
                               std::to_string(*start_.line));
    start_.variables.push_back("TMPDIR=" + folder_.Path().string());
    start_.output = folder_.Path() / "office.log";
    line_.Send(LineOf(errand));
  }

  int Run() {
    interrupt_.emplace(loop_);
    interrupt_->Stopped.Subscribe([this] { EndInOrder(); });
    loop_.Watch(ends_.ours.Number(), host::MessageLoop::kRead, [this](unsigned) { Listen(); });
    Start();
    GiveUpIn(kForTheFirstWord, "LibreOffice did not start");
    loop_.RunUntil([&] { return code_.has_value(); });
    return Report();
  }

 private:
  void Start() {
    process_ = std::make_unique<OfficeProcess>(start_);
    LookLater();
  }

  void LookLater() {
    loop_.StartTimer(kBetweenLooks, [this] { Look(); });
  }

  // Whether the office has ended.
  void Look() {
    const auto code = process_->ExitCode();
    if (!code) return LookLater();
    if (*code == kStartedForItsProfile && !has_spoken_) return Start();
    Listen();
    code_ = code;
  }

  void Listen() {
    line_.Receive();
    while (const auto text = line_.Next()) {
      if (const auto news = libreoffice::NewsOf(*text)) Take(*news);
    }
  }

  void Take(const News& news) {
    if (!std::exchange(has_spoken_, true)) loop_.StopTimer(std::exchange(giving_up_, 0));
    if (news.kind == News::Kind::kTold) {
      Err() << news.text << "\n";
      return;
    }
    outcome_ = news;
    GiveUpIn(kForTheEnd, "LibreOffice did not end");
  }

  void EndInOrder() {
    Err() << "Ending the day; Ctrl-C once more kills LibreOffice\n";
    line_.Send(std::string(libreoffice::kEndErrand));
    GiveUpIn(kForTheFirstWord, "LibreOffice did not end");
    // Behind the handler, which is the old one's.
    loop_.StartTimer(std::chrono::milliseconds(0), [this] {
      interrupt_.reset();
      interrupt_.emplace(loop_);
      interrupt_->Stopped.Subscribe([this] { GiveUp("LibreOffice was killed"); });
    });
  }

  void GiveUpIn(std::chrono::milliseconds time, const char* why) {
    loop_.StopTimer(giving_up_);
    giving_up_ = loop_.StartTimer(time, [this, why] { GiveUp(why); });
  }

  void GiveUp(const char* why) {
    given_up_ = why;
    process_->Kill();
  }

  int Report() {
    if (!outcome_) return TellWithoutOutcome();
    if (outcome_->kind == News::Kind::kComplaint) {
      Err() << "error: " << terminal::Indented(outcome_->text) << "\nNothing was committed.\n";
      return outcome_->is_of_wish ? kWrongUsage : kFailed;
    }
    if (outcome_->kind == News::Kind::kFailed) {
      Err() << "error: " << terminal::Indented(outcome_->text) << "\n";
      return kFailed;
    }
    WriteWhole(file_, BytesOf(stored_), NewFile::kUsual);
    Out() << file_.string() << ": " << outcome_->quotes << (outcome_->quotes == 1 ? " quote" : " quotes")
          << " came\n";
    if (outcome_->quotes > 0) return kGood;
    Err() << "error: no quote came in the whole day\n";
    return kFailed;
  }

  // Without a file a person ends the office.
  int TellWithoutOutcome() {
    if (file_.empty() && *code_ == 0 && has_spoken_) return kGood;
    const std::string said = BytesOf(start_.output);
    Err() << "error: " << (given_up_.empty() ? "LibreOffice ended before the day was over" : given_up_)
          << " (exit code " << *code_ << ")" << (file_.empty() ? "" : "; nothing was saved") << "\n";
    if (!said.empty()) Err() << "It said:\n  " << terminal::Indented(said) << "\n";
    return kFailed;
  }

  const fs::path file_;
  TemporaryFolder folder_;
  fs::path stored_;
  Ends ends_;
  libreoffice::Lines line_;
  OfficeStart start_;
  poll::PollLoop loop_;
  std::optional<Interrupt> interrupt_;
  std::unique_ptr<OfficeProcess> process_;
  bool has_spoken_ = false;
  std::optional<News> outcome_;
  std::optional<int> code_;
  std::string given_up_;
  host::MessageLoop::Token giving_up_ = 0;
};

}  // namespace

int RunErrand(const OfficePlace& office, Errand errand, const fs::path& file, bool headless) {
  return OfficeOnErrand(office, std::move(errand), file, headless).Run();
}

}  // namespace mirelo::app
