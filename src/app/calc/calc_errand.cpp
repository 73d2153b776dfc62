#include "app/calc/calc_errand.h"

#include <chrono>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <utility>

#include "adapters/poll/poll_loop.h"
#include "app/calc/office_place.h"
#include "app/calc/own_office.h"
#include "app/exit_code.h"
#include "app/interrupt.h"
#include "app/whole_file.h"
#include "terminal/standard_streams.h"

namespace mirelo::app {

using libreoffice::Errand;
using libreoffice::News;
using terminal::Err;
using terminal::Out;

namespace {

namespace fs = std::filesystem;

constexpr std::chrono::seconds kForTheLastSteps{60};
constexpr std::chrono::seconds kForTheEnd{15};

std::string BytesOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

// An office from its start to its end.
class OfficeOnErrand {
 public:
  OfficeOnErrand(const OfficePlace& place, Errand errand, fs::path file, bool headless)
      : file_(std::move(file)),
        errand_(std::move(errand)),
        office_(loop_, place, {.headless = headless, .at_terminal = false}) {
    if (!file_.empty()) errand_.store = office_.Folder() / ("stored" + file_.extension().string());
  }

  int Run() {
    Interrupt interrupt(loop_, Interrupt::Second::kIsCounted);
    interrupt.Stopped.Subscribe([this] { End(); });
    office_.Said.Subscribe([this](const std::string& text) {
      if (const auto news = libreoffice::NewsOf(text)) Take(*news);
    });
    return Report(office_.Run(errand_));
  }

 private:
  void Take(const News& news) {
    if (news.kind == News::Kind::kTold) {
      Err() << news.text << "\n";
      return;
    }
    outcome_ = news;
    office_.GiveUpIn(kForTheEnd, "LibreOffice did not end");
  }

  // In order at first, and at once when that is asked for again.
  void End() {
    if (std::exchange(is_ending_, true)) return office_.GiveUp("LibreOffice was killed");
    office_.Send(std::string(libreoffice::kEndErrand));
    if (file_.empty()) {
      Err() << "Ending the day. LibreOffice goes on: close its windows. Ctrl-C once more kills it, with what "
               "is not saved\n";
    } else {
      Err() << "Ending the day; Ctrl-C once more kills LibreOffice\n";
      office_.GiveUpIn(kForTheLastSteps, "LibreOffice did not end");
    }
  }

  int Report(int code) {
    if (!outcome_) return TellWithoutOutcome(code);
    if (outcome_->kind == News::Kind::kComplaint) {
      Err() << "error: " << terminal::Indented(outcome_->text) << "\nNothing was committed.\n";
      return outcome_->is_of_wish ? kWrongUsage : kFailed;
    }
    if (outcome_->kind == News::Kind::kFailed) {
      Err() << "error: " << terminal::Indented(outcome_->text) << "\n";
      return kFailed;
    }
    WriteWhole(file_, BytesOf(errand_.store), NewFile::kUsual);
    Out() << file_.string() << ": " << outcome_->quotes << (outcome_->quotes == 1 ? " quote" : " quotes")
          << " came\n";
    if (outcome_->quotes > 0) return kGood;
    Err() << "error: no quote came in the whole day\n";
    return kFailed;
  }

  // Without a file a person ends the office.
  int TellWithoutOutcome(int code) const {
    if (file_.empty() && code == 0 && office_.HasSpoken()) return kGood;
    office_.TellOfEarlyEnd(code, file_.empty() ? "" : "; nothing was saved");
    return kFailed;
  }

  const fs::path file_;
  poll::PollLoop loop_;
  Errand errand_;
  OwnOffice office_;
  bool is_ending_ = false;
  std::optional<News> outcome_;
};

}  // namespace

int RunErrand(const OfficePlace& office, Errand errand, const fs::path& file, bool headless) {
  return OfficeOnErrand(office, std::move(errand), file, headless).Run();
}

}  // namespace mirelo::app
