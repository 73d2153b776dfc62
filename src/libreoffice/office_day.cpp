#include "libreoffice/office_day.h"

#include <algorithm>
#include <chrono>
#include <com/sun/star/frame/XController.hpp>
#include <exception>
#include <functional>
#include <utility>

#include "automation/runtime_error.h"
#include "core/cMirelo.h"
#include "host/desktop.h"
#include "libreoffice/document_day.h"
#include "libreoffice/functions/quote_answers.h"
#include "libreoffice/machine.h"
#include "libreoffice/office_process.h"
#include "uno/errors.h"

namespace mirelo::libreoffice {

namespace {

using css::uno::Reference;

constexpr std::chrono::seconds kBetweenStatusLines{1};
constexpr std::chrono::milliseconds kBetweenSweeps{50};

constexpr const char* kWhatToDo =
    "What was written stays. If sheets were deleted or renamed, build them again with Settings...; if one is "
    "protected, take its protection off (Tools > Protect Sheet). Then press Start.";

constexpr const char* kWhatToDoInVain = "Then press Start.";

constexpr const char* kWhatToDoAboutLogin =
    "mirelo credentials set, in a terminal, gives others. Then press Stop, and Start.";

// Beside the one of the cell functions, whose connections are their own.
bool FacadeLives() { return cMirelo::Living() > (QuoteAnswers::HaveFacade() ? 1 : 0); }

// The one that the person has turned to last, of the document's windows; null where it has none any more.
Reference<css::frame::XFrame> FrameOf(const OfficeDay::Document& document) try {
  const Reference<css::frame::XController> controller = document->getCurrentController();
  return controller.is() ? controller->getFrame() : Reference<css::frame::XFrame>();
} catch (const css::uno::RuntimeException&) {
  return {};
}

}  // namespace

OfficeDay& OfficeDay::Of(const Reference<css::uno::XComponentContext>& context) {
  static OfficeDay& day = *new OfficeDay(context);
  return day;
}

OfficeDay::OfficeDay(const Reference<css::uno::XComponentContext>& context)
    : context_(context), machine_(Machine::Of(context)) {
  machine_.Ends.Subscribe([this] {
    if (day_) End("");
    if (phase_ == Phase::kDialog) AbandonDialog();
  });
  machine_.hushes = [this] {
    return std::ranges::any_of(past_, [](const auto& day) { return day->Speaks(); });
  };
  machine_.FormEnded.Subscribe([this] {
    if (phase_ == Phase::kDialog) AbandonDialog();
  });
}

std::int32_t OfficeDay::ShowSettings(const Document& document) {
  RequireFree();
  phase_ = Phase::kDialog;
  Changed.Raise();
  std::int32_t result = 0;
  try {
    const auto day = std::make_shared<DocumentDay>(machine_, context_, document);
    day->Closing().Subscribe([this, closing = std::weak_ptr(day)] {
      OnMainThread([this, closing] {
        if (!closing.expired()) AbandonDialog();
      });
    });
    const Machine::Above above(machine_, FrameOf(document));
    result = day->day().ShowDialog();
  } catch (...) {
    EndDialog();
    throw;
  }
  EndDialog();
  return result;
}

// Of what the day tells that has just begun: what comes after its end, with a call of its own that was under
// way, is nothing to the day after it.
template <class Act>
auto OfficeDay::WhileItRuns(Act act) const {
  return [this, told = std::weak_ptr(day_), act = std::move(act)](const auto&... arguments) {
    if (day_ != nullptr && day_ == told.lock()) act(arguments...);
  };
}

void OfficeDay::Start(const Document& document) {
  RequireFree();
  day_ = std::make_shared<DocumentDay>(machine_, context_, document);
  phase_ = Phase::kRunning;
  failure_.clear();
  day_->Closing().Subscribe([this, closing = std::weak_ptr(day_)] {
    OnMainThread([this, closing] {
      if (day_ != nullptr && day_ == closing.lock()) End("");
    });
  });
  day_->Status.Subscribe(WhileItRuns([this](const std::string& text) { Told.Raise(text); }));
  day_->day().Over.Subscribe(WhileItRuns([this] { EndLater(); }));
  day_->day().LoginRefused.Subscribe(
      WhileItRuns([this](const std::string& refusal) { ComplainOfLogin(refusal); }));
  machine_.take_failure = [this](const std::exception_ptr& failure) {
    day_->day().TakeFailure(failure);
    return true;
  };
  TellEverySecond();
  const std::shared_ptr<DocumentDay> starting = day_;  // it may be ended from within
  try {
    starting->Start();
  } catch (...) {
    if (day_ == starting) End("");
    throw;
  }
  Changed.Raise();
}

void OfficeDay::Stop() {
  if (!day_) return;
  machine_.host().HangUp();
  std::string why;
  try {
    day_->day().Stop();
  } catch (...) {
    why = uno::ErrorInHand().Description();
  }
  End(why);
}

std::string OfficeDay::StatusLine(const Document& document) const {
  if (!failure_.empty() && document.is() && Document(failed_) == document)
    return "Mirelo: quotes come no more: " + failure_;
  if (!day_ || day_->document() != document) return {};
  const day::Pulse& came = day_->day().Came();
  const std::string told = day_->Told().Line(came.Count());
  if (told.empty()) return "Mirelo: " + came.Text();
  return "Mirelo: " + told + (came.Count() > 0 ? " (" + came.Text() + ")" : "");
}

std::string OfficeDay::Report() const {
  if (!day_) {
    return last_.empty() ? "No quotes are coming. Settings... says which are wanted, Start begins."
                         : "No quotes are coming. The last day ended with: " + last_;
  }
  std::string report = "Quotes are coming into " + TitleOf(day_->document()) + ".\n" + day_->day().Source() +
                       "\n" + day_->day().Came().Text();
  if (const int reconnects = day_->day().Reconnects(); reconnects > 0)
    report += "\nReconnected to QuoteTracker " + std::to_string(reconnects) +
              (reconnects == 1 ? " time" : " times");
  if (!day_->Told().Lines().empty()) report += "\n\nLast told:";
  for (const std::string& line : day_->Told().Lines()) report += "\n" + line;
  return report;
}

void OfficeDay::RequireFree() {
  if (phase_ == Phase::kDialog) throw RuntimeError(5, "The settings are open. Close their window first.");
  if (day_) {
    throw RuntimeError(5, "Quotes are coming into " + TitleOf(day_->document()) +
                              ". One document has them at a time: press Stop first.");
  }
  if (machine_.loop().Depth() == 0) Sweep();
  if (!past_.empty()) throw RuntimeError(5, "The day before is still coming to its end. Try again.");
  if (FacadeLives()) {
    throw RuntimeError(
        5,
        "A macro holds Mirelo's library (an object mirelo.cMirelo), which serves one at a time. "
        "Let the macro end it, or start LibreOffice anew.");
  }
}

// What the dialog waits for is hung up, and so is what it asks for next: it is a call of the person's that
// comes to its end by itself.
void OfficeDay::AbandonDialog() {
  machine_.host().HangUp();
  machine_.loop().StopTimer(abandoning_);
  abandoning_ = machine_.loop().StartTimer(kBetweenHangUps, [this] { AbandonDialog(); });
}

void OfficeDay::EndDialog() {
  machine_.loop().StopTimer(std::exchange(abandoning_, 0));
  BecomeIdle();
}

// Whoever closes a document from another process does so on another thread.
void OfficeDay::OnMainThread(std::function<void()> act) {
  if (IsMainThread()) return act();
  OfficeOf(context_)->Post(std::move(act));
}

void OfficeDay::BecomeIdle() {
  phase_ = Phase::kIdle;
  Changed.Raise();
}

// A day may be ended from within a call of its own, which waits for QuoteTracker or for the person.
void OfficeDay::End(const std::string& why) {
  if (!day_) return;
  const std::shared_ptr<DocumentDay> ended = std::exchange(day_, nullptr);
  machine_.take_failure = nullptr;
  for (auto* const timer : {&telling_, &ending_, &complaining_})
    machine_.loop().StopTimer(std::exchange(*timer, 0));
  machine_.host().HangUp();
  last_ = ended->day().Came().Text();
  last_count_ = ended->day().Came().Count();
  failure_ = why;
  failed_ = ended->document();
  try {
    ended->day().Abandon();
  } catch (...) {
    last_ += ". " + uno::ErrorInHand().Description();
  }
  past_.push_back(ended);
  SweepLater();
  if (!why.empty()) last_ += ". " + why;
  BecomeIdle();
  Ended.Raise(why);
}

void OfficeDay::EndLater() {
  if (ending_ != 0) return;
  ending_ = machine_.loop().StartTimer(std::chrono::milliseconds(0), [this] {
    ending_ = 0;
    EndWithReason();
  });
}

void OfficeDay::EndWithReason() {
  if (!day_) return;
  const Document document = day_->document();
  const std::string title = TitleOf(document);
  const bool is_in_vain = day_->IsInVain();
  std::string why;
  try {
    day_->day().RaiseFailure();
  } catch (...) {
    if (!day_->IsClosed()) why = uno::ErrorInHand().Description();
  }
  End(why);
  if (why.empty()) return;
  Complain(document, "Quotes come into " + title + " no more: " + why + "\n" +
                         (is_in_vain ? kWhatToDoInVain : kWhatToDo));
}

// Once a day. The day goes on trying to connect, since QuoteTracker may let it in later.
void OfficeDay::ComplainOfLogin(const std::string& refusal) {
  if (complaining_ != 0) return;
  complaining_ = machine_.loop().StartTimer(std::chrono::milliseconds(0), [this, refusal] {
    if (day_) Complain(day_->document(), refusal + "\n" + kWhatToDoAboutLogin);
  });
}

void OfficeDay::Complain(const Document& document, const std::string& text) {
  const Machine::Above above(machine_, FrameOf(document));
  machine_.host().desktop().MessageBox(text, host::Desktop::kExclamation, host::Desktop::kDefaultTitle);
}

// The request of a day may have been begun by a command, outside of the loop's steps.
void OfficeDay::Sweep() {
  std::erase_if(past_, [](const auto& day) { return !day->IsAsking(); });
}

// Nothing else of a day is under way when the sweep's own step is the only one.
void OfficeDay::SweepLater() {
  if (sweeping_ != 0) return;
  sweeping_ = machine_.loop().StartTimer(kBetweenSweeps, [this] {
    sweeping_ = 0;
    if (machine_.loop().Depth() <= 1) Sweep();
    if (!past_.empty()) SweepLater();
  });
}

void OfficeDay::TellEverySecond() {
  Changed.Raise();
  telling_ = machine_.loop().StartTimer(kBetweenStatusLines, [this] { TellEverySecond(); });
}

}  // namespace mirelo::libreoffice
