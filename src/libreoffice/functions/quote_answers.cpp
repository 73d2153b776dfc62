#include "libreoffice/functions/quote_answers.h"

#include <algorithm>
#include <utility>

#include "adapters/curl/curl_internet.h"
#include "adapters/poll/poll_winsock_library.h"
#include "libreoffice/functions/quote_result.h"
#include "libreoffice/machine.h"
#include "libreoffice/office_process.h"

namespace mirelo::libreoffice {

namespace {

using css::uno::Reference;

bool have_facade = false;

}  // namespace

QuoteAnswers& QuoteAnswers::Of(const Reference<css::uno::XComponentContext>& context) {
  static QuoteAnswers& answers = *new QuoteAnswers(context);
  return answers;
}

bool QuoteAnswers::HaveFacade() { return have_facade; }

QuoteAnswers::QuoteAnswers(const Reference<css::uno::XComponentContext>& context) : context_(context) {}

Reference<css::sheet::XVolatileResult> QuoteAnswers::ResultFor(const day::QuoteQuestion& question) {
  day::QuoteQuestion asked = question.InOneSpelling();
  rtl::Reference<QuoteResult> result;
  Reference<css::sheet::XVolatileResult> living;  // let go of when the lock is free again, see Forget
  {
    const std::lock_guard lock(mutex_);
    auto& known = results_[asked];
    living = known;
    result = static_cast<QuoteResult*>(living.get());
    if (!result.is()) {
      result = new QuoteResult(*this, std::move(asked));
      known = Reference<css::sheet::XVolatileResult>(result.get());
    }
  }
  result->NoteCall();
  return result.get();
}

void QuoteAnswers::BeginLater(QuoteResult& result) { OnMainThread(result, &QuoteResult::Begin); }

void QuoteAnswers::EndLater(QuoteResult& result) { OnMainThread(result, &QuoteResult::End); }

// Another one may have the question by now. Ours may be the last hold on that in the end, and it would come
// here to be forgotten: so it is let go of when the lock is free again.
void QuoteAnswers::Forget(const QuoteResult& result) {
  Reference<css::sheet::XVolatileResult> other;
  const std::lock_guard lock(mutex_);
  const auto found = results_.find(result.question());
  if (found == results_.end()) return;
  other = found->second;
  if (!other.is()) results_.erase(found);
}

void QuoteAnswers::LetGo(std::unique_ptr<day::QuoteWatch::Watched> watched) {
  if (watched == nullptr || IsMainThread()) return;
  const auto kept = std::make_shared<std::unique_ptr<day::QuoteWatch::Watched>>(std::move(watched));
  try {
    if (OfficeOf(context_)->Post([kept] { kept->reset(); })) return;
  } catch (const css::uno::Exception&) {  // the office is ending
  }
  // Nobody will ask the watch any more, and this thread may not.
  static_cast<void>(kept->release());
}

void QuoteAnswers::OnMainThread(QuoteResult& result, void (QuoteResult::*act)()) {
  if (IsMainThread()) return (result.*act)();
  OfficeOf(context_)->Post([held = rtl::Reference<QuoteResult>(&result), act] { (held.get()->*act)(); });
}

std::unique_ptr<day::QuoteWatch::Watched> QuoteAnswers::Watch(const day::QuoteQuestion& question,
                                                              std::function<void()> changed) {
  day::QuoteWatch* const watch = Watch();
  if (watch == nullptr) return nullptr;
  CheckLater();
  return watch->Ask(question, std::move(changed));
}

day::QuoteWatch* QuoteAnswers::Watch() {
  if (!watch_ && !ended_) {
    Machine& machine = Machine::Of(context_);
    loop_ = &machine.loop();
    side_ = std::make_unique<wire::SideHost>(
        machine.host(),
        wire::SideHost::Parts{
            .sockets =
                [](host::MessageLoop& loop) { return std::make_unique<poll::PollWinsockLibrary>(loop); },
            .internet =
                [this](host::MessageLoop& loop) {
                  auto internet = std::make_unique<curl::CurlInternet>(loop);
                  internet->WaitForWholeReplies();
                  internet_ = internet.get();
                  return internet;
                }});
    watch_ = std::make_unique<day::QuoteWatch>(*side_);
    have_facade = true;
    machine.Ends.Subscribe([this] { End(); });
  }
  return watch_.get();
}

// Cells may listen until the very end.
void QuoteAnswers::End() {
  ended_ = true;
  watch_->HangUp();
  loop_->StopTimer(std::exchange(checking_, 0));
  HangUp();
}

// A request that waits keeps the office from ending, and the call that made it may make another one.
void QuoteAnswers::HangUp() {
  internet_->StopTransfers();
  loop_->StartTimer(kBetweenHangUps, [this] { HangUp(); });
}

// --- Results that no cell has use for any more -------------------------------------------------------------

QuoteAnswers::Results QuoteAnswers::AllThatAsk() {
  Results living;  // let go of when the lock is free again, see Forget
  {
    const std::lock_guard lock(mutex_);
    living.reserve(results_.size());
    for (const auto& [question, known] : results_)
      living.emplace_back(static_cast<QuoteResult*>(Reference<css::sheet::XVolatileResult>(known).get()));
  }
  std::erase_if(living, [](const auto& result) { return !result.is() || !result->IsAsking(); });
  return living;
}

void QuoteAnswers::CheckLater() {
  if (checking_ != 0 || reader_ || ended_) return;
  const auto pause =
      std::max<std::chrono::steady_clock::duration>(kBetweenChecks, kLeastShareOfChecks * read_for_);
  checking_ = loop_->StartTimer(std::chrono::ceil<std::chrono::milliseconds>(pause), [this] {
    checking_ = 0;
    Check();
  });
}

// Cells that are on no screen are not calculated, so they may be of use though they have not called.
void QuoteAnswers::Check() {
  doubtful_ = AllThatAsk();
  if (doubtful_.empty()) return;
  TellQuietAgain(doubtful_);
  std::erase_if(doubtful_, [](const auto& result) { return result->HasBeenHeard(); });
  if (doubtful_.empty()) return CheckLater();
  for (const auto& result : doubtful_) result->Doubt();
  const auto start = std::chrono::steady_clock::now();
  reader_.emplace(context_);
  read_for_ = std::chrono::steady_clock::now() - start;
  ReadOn();
}

void QuoteAnswers::TellQuietAgain(const Results& all) {
  for (std::size_t i = 0; i < std::min(kMostOfQuiet, all.size()); ++i) {
    QuoteResult& result = *all[next_quiet_++ % all.size()];
    if (result.HasBeenHeard()) result.TellAgain();
  }
}

void QuoteAnswers::ReadOn() {
  checking_ = 0;
  const auto start = std::chrono::steady_clock::now();
  const bool has_more = reader_->ReadOn(kReadAtOnce);
  read_for_ += std::chrono::steady_clock::now() - start;
  if (has_more) {
    checking_ = loop_->StartTimer(kBetweenReads, [this] { ReadOn(); });
    return;
  }
  if (!reader_->HasLeftOut()) SuspendUnused();
  reader_.reset();
  doubtful_.clear();
  CheckLater();
}

void QuoteAnswers::SuspendUnused() {
  for (const auto& result : doubtful_) {
    if (result->IsDoubted()) result->Suspend();
  }
}

}  // namespace mirelo::libreoffice
