#include "libreoffice/errand_runner.h"

#include <poll.h>
#include <sys/prctl.h>

#include <chrono>
#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/frame/XDispatchProvider.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/uno/Sequence.hxx>
#include <com/sun/star/util/URL.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <csignal>
#include <exception>
#include <string_view>
#include <utility>

#include "adapters/calc/objects/spreadsheet_program.h"
#include "app/workbook/workbook_file.h"
#include "automation/runtime_error.h"
#include "day/dialog_result.h"
#include "libreoffice/command_runner.h"
#include "libreoffice/command_urls.h"
#include "libreoffice/document_day.h"
#include "libreoffice/errand/stored_kinds.h"
#include "libreoffice/file_address.h"
#include "libreoffice/machine.h"
#include "libreoffice/office_day.h"
#include "libreoffice/screen.h"
#include "terminal/output.h"
#include "uno/errors.h"
#include "uno/text.h"

namespace mirelo::libreoffice {

// What the dialog and the boxes print, line by line.
class TellingOutput final : public terminal::Output {
 public:
  explicit TellingOutput(std::function<void(const std::string&)> tell) : tell_(std::move(tell)) {}

 private:
  void Put(std::string_view bytes) override {
    waiting_ += bytes;
    for (auto end = waiting_.find('\n'); end != std::string::npos; end = waiting_.find('\n')) {
      tell_(waiting_.substr(0, end));
      waiting_.erase(0, end + 1);
    }
  }

  std::function<void(const std::string&)> tell_;
  std::string waiting_;
};

namespace {

using css::beans::PropertyValue;
using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;

constexpr std::chrono::seconds kForTheErrand{10};

std::string DescriptionInHand() { return uno::ErrorInHand().Description(); }

// A day that no command of the menu has begun changes the states of these all the same.
void WakeMenu(const Reference<css::frame::XModel>& document) {
  const Reference<css::frame::XController> controller = document->getCurrentController();
  if (!controller.is()) return;
  const Reference<css::frame::XDispatchProvider> window(controller->getFrame(), css::uno::UNO_QUERY);
  css::util::URL command;
  command.Complete = rtl::OUString::createFromAscii(kWakeCommand);
  if (!window.is()) return;
  if (const auto dispatch = window->queryDispatch(command, "_self", 0); dispatch.is())
    dispatch->dispatch(command, Sequence<PropertyValue>());
}

// The program sends it before it starts the office.
std::optional<Errand> FirstLine(int socket) {
  Lines line(socket);
  const auto until = std::chrono::steady_clock::now() + kForTheErrand;
  while (!line.HasEnded() && std::chrono::steady_clock::now() < until) {
    pollfd come{.fd = socket, .events = POLLIN, .revents = 0};
    ::poll(&come, 1, 100);
    line.Receive();
    if (const auto text = line.Next()) return ErrandOf(*text);
  }
  return std::nullopt;
}

}  // namespace

void ErrandRunner::Begin(const Reference<css::uno::XComponentContext>& context, int line) {
  auto errand = FirstLine(line);
  if (!errand) return;
  if (errand->command) return RunCommandLater(context, line, std::move(*errand->command));
  if (!errand->folder.empty()) Machine::Borrow({errand->folder, errand->http_port, errand->stream_port});
  // A program that is killed takes along an office that only it knows of, whatever that is busy with.
  if (!errand->store.empty()) ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  // It ends with the office.
  [[maybe_unused]] static ErrandRunner& runner = *new ErrandRunner(context, line, std::move(*errand));
}

ErrandRunner::ErrandRunner(const Reference<css::uno::XComponentContext>& context, int line, Errand errand)
    : context_(context),
      socket_(line),
      line_(line),
      errand_(std::move(errand)),
      machine_(Machine::Of(context_)),
      printed_(std::make_unique<TellingOutput>([this](const std::string& text) { Tell(text); })),
      attended_(*printed_),
      person_(errand_.wishes, attended_),
      accept_costs_(machine_.accept_costs) {
  machine_.ShowOn(attended_);
  machine_.accept_costs = [this](const std::vector<std::string>& costs) { return AcceptsCosts(costs); };
  watch_ = machine_.loop().Watch(socket_, host::MessageLoop::kRead, [this](unsigned) { Listen(); });
  machine_.loop().StartTimer(std::chrono::milliseconds(0), [this] { Run(); });
}

ErrandRunner::~ErrandRunner() = default;

void ErrandRunner::Run() {
  try {
    Open();
    if (!FillDialog()) return;
    if (OfficeShowsWindows()) LeaveToPerson();
    BeginDay();
  } catch (...) {
    Fail(DescriptionInHand());
  }
}

void ErrandRunner::Open() {
  const Reference<css::frame::XDesktop2> desktop = css::frame::Desktop::create(context_);
  const rtl::OUString address =
      errand_.open.empty() ? rtl::OUString("private:factory/scalc") : AddressOf(errand_.open);
  document_.set(desktop->loadComponentFromURL(address, "_blank", 0, Sequence<PropertyValue>()),
                css::uno::UNO_QUERY);
  if (!document_.is()) throw RuntimeError(75, "LibreOffice cannot open " + errand_.open.string());
}

bool ErrandRunner::FillDialog() {
  const std::int32_t result = OfficeDay::Of(context_).ShowSettings(document_);
  if (day::IsCommitted(result)) {
    app::PutQuoteTableInFront(*calc::ApplicationOf(
        context_, Reference<css::sheet::XSpreadsheetDocument>(document_, css::uno::UNO_QUERY_THROW)));
    return true;
  }
  News news{.kind = News::Kind::kComplaint, .text = "the dialog was closed without Go"};
  if (has_refused_costs_) news.text = "Go would cost what the warnings say. To go on all the same, add --yes";
  if (const auto& complaint = person_.Complained()) {
    news.text = complaint->text;
    news.is_of_wish = complaint->is_of_wish;
  }
  line_.Send(LineOf(news));
  EndOffice();
  return false;
}

// What comes after the dialog is chosen in the window, and so it is shown and asked there.
void ErrandRunner::LeaveToPerson() {
  machine_.ShowOnOwn();
  machine_.accept_costs = accept_costs_;
}

void ErrandRunner::BeginDay() {
  OfficeDay& day = OfficeDay::Of(context_);
  day.Ended.Subscribe([this](const std::string& why) {
    if (is_ending_) return;
    if (!why.empty()) Tell(why);
    Finish();
  });
  if (errand_.time.count() > 0) alarm_ = machine_.loop().StartTimer(errand_.time, [this] { Finish(); });
  day.Told.Subscribe([this](const std::string& text) { Tell(text); });
  WakeMenu(document_);
  day.Start(document_);
}

void ErrandRunner::Listen() {
  line_.Receive();
  while (const auto text = line_.Next()) {
    if (*text == kEndErrand) return Finish();
  }
  if (line_.HasEnded()) EndOffice();
}

// The end of the time, or of the day.
void ErrandRunner::Finish() {
  if (std::exchange(is_ending_, true)) return;
  try {
    OfficeDay& day = OfficeDay::Of(context_);
    day.Stop();
    quotes_ = day.LastCount();
    if (errand_.store.empty()) return;
    Store();
  } catch (...) {
    line_.Send(LineOf({.kind = News::Kind::kFailed, .text = DescriptionInHand()}));
  }
  EndOffice();
}

void ErrandRunner::Store() {
  const StoredKind* const kind = StoredKindOf(errand_.store.extension().string());
  PropertyValue name;
  name.Name = "FilterName";
  name.Value <<= rtl::OUString::createFromAscii((kind == nullptr ? kStoredKinds.front() : *kind).filter);
  Reference<css::frame::XStorable>(document_, css::uno::UNO_QUERY_THROW)
      ->storeToURL(AddressOf(errand_.store), Sequence<PropertyValue>(&name, 1));
  line_.Send(LineOf({.kind = News::Kind::kStored, .text = {}, .quotes = quotes_}));
}

bool ErrandRunner::AcceptsCosts(const std::vector<std::string>& costs) {
  for (const std::string& cost : costs) Tell("warning: " + cost);
  has_refused_costs_ = !errand_.wishes.accepts_costs;
  return !has_refused_costs_;
}

void ErrandRunner::Tell(const std::string& text) {
  line_.Send(LineOf({.kind = News::Kind::kTold, .text = text}));
}

void ErrandRunner::Fail(const std::string& why) {
  line_.Send(LineOf({.kind = News::Kind::kFailed, .text = why}));
  EndOffice();
}

void ErrandRunner::EndOffice() {
  is_ending_ = true;
  machine_.loop().Unwatch(std::exchange(watch_, 0));
  machine_.loop().StopTimer(std::exchange(alarm_, 0));
  try {
    if (const Reference<css::util::XCloseable> document{document_, css::uno::UNO_QUERY}; document.is())
      document->close(true);
    css::frame::Desktop::create(context_)->terminate();
  } catch (const css::uno::Exception&) {  // somebody else ends it
  }
}

}  // namespace mirelo::libreoffice
