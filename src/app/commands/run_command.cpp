#include "app/commands/run_command.h"

#include <exception>
#include <functional>
#include <memory>
#include <utility>

#include "app/calc/command_in_office.h"
#include "app/calc/office_place.h"
#include "app/commands/checks.h"
#include "app/demonstration.h"
#include "app/dialog/screen.h"
#include "app/dialog/show_dialog.h"
#include "app/duration.h"
#include "app/exit_code.h"
#include "app/live/day_view.h"
#include "app/options.h"
#include "app/run_program.h"
#include "app/session.h"
#include "app/stream_watch.h"
#include "app/window_program.h"
#include "app/workbook/also_files.h"
#include "app/workbook/day_log.h"
#include "app/workbook/workbook_file.h"
#include "automation/runtime_error.h"
#include "day/dialog_result.h"
#include "day/working_day.h"
#include "host/message_loop.h"
#include "person/attended_desktop.h"
#include "person/dialog_person.h"
#include "terminal/standard_streams.h"

namespace mirelo::app {

using terminal::Err;

namespace {

// The day's result is the workbook: what could not be printed of it is told and no failure.
void ForgiveOutput() {
  if (!terminal::Out().Good() && !terminal::Out().ReaderHasGone()) {
    Err() << "warning: cannot write the output: " << terminal::Out().Trouble() << "\n";
  }
  terminal::Out().Forgive();
}

// Nothing of the day is to run on while the workbook is saved.
void StopAfterFailure(day::WorkingDay& day) try { day.Stop(); } catch (const std::exception&) {  // told once
}

// What whoever opens the file is to see at first: the quote table, whose columns show all that they hold.
void Prepare(day::WorkingDay& day, host::Document& document) {
  day.Fit();
  PutQuoteTableInFront(document);
}

// Rings once unless it has gone before: what it ends lives no longer than it does.
class Alarm {
 public:
  explicit Alarm(host::MessageLoop& loop) : loop_(loop) {}
  ~Alarm() { loop_.StopTimer(timer_); }
  Alarm(const Alarm&) = delete;
  Alarm& operator=(const Alarm&) = delete;

  void Set(host::MessageLoop::Milliseconds time, std::function<void()> ring) {
    timer_ = loop_.StartTimer(time, std::move(ring));
  }

 private:
  host::MessageLoop& loop_;
  host::MessageLoop::Token timer_ = 0;
};

}  // namespace

RunCommand::RunCommand(command_line::Command& program, const GlobalOptions& global)
    : global_(global),
      command_(program.AddCommand("run",
                                  "A working day: fill the settings dialog, press Go, and keep the "
                                  "workbook's tables and charts up to date")) {
  command_
      .AddOption(
          "--workbook", workbook_,
          "The .xlsx file that holds the tables; made when it is absent. With --through calc: quotes.ods")
      .ValueName("FILE")
      .ShowDefault();
  through_.emplace(command_, workbook_);
  command_.AddOption("--for", for_, "End after so long, as 20s, 90m or 8h30m; without it, at Ctrl-C")
      .Check(WhyNoDuration);
  command_
      .AddOption("--save-every", save_every_, "Save the workbook so often, besides the last save at the end")
      .Check(WhyNoDuration)
      .ShowDefault();
  command_
      .AddOption("--also", also_,
                 "Append every quote to this file as well, whatever the limit of rows: a database (.db, "
                 ".sqlite) or comma-separated values (.csv); may be given again for another file")
      .ValueName("FILE")
      .Repeats([](const std::string& word) { return WhyNoAlsoFile(word).empty(); })
      .Check(WhyNoAlsoFile);
  auto window = command_.AddFlag("--window", window_, "Show the settings dialog in a window");
  auto headless =
      command_.AddFlag("--headless", headless_,
                       "Fill the settings dialog from the options below, without showing it (default)");
  window.Excludes(headless).Excludes(command_.Find("--through"));
  auto demo = command_.AddFlag(
      "--demo", demo_,
      "Use the built-in QuoteTracker stand-in and settings of its own; yours stay untouched");
  log_.emplace(command_);
  wishes_.emplace(command_);
  demo.Excludes(command_.Find("--list"));
  command_.Footer(
      "What is not named stays as the dialog shows it; tickers are those of the workbook's quote table.\n"
      "With --set Seconds=0 quotes are streamed, otherwise asked for every so many seconds. Ctrl-C ends\n"
      "in order, a second one at once. Exit codes: 0 the workbook is saved, 1 it is not, no quote came, a\n"
      "quote could not be kept in a file of --also, or the day could not begin, 2 asked for something that\n"
      "the dialog does not have.");
}

bool RunCommand::IsChosen() const { return command_.IsChosen(); }

int RunCommand::Run() try {
  if (window_ && !global_.show_windows) return BecomeWindowProgram(global_.words);
  if (through_->IsElsewhere(global_)) return RunInOffice(FindOffice(), global_.words);
  DialogWishes wishes = wishes_->Wishes();
  if (!demo_) {
    Session session(global_);
    TakeList(wishes);
    return RunIn(session, wishes);
  }
  Err() << "Starting the QuoteTracker stand-in\n";
  const Demonstration demonstration;
  const GlobalOptions options = demonstration.Options(global_);
  Session session(options);
  demonstration.Prepare(session);
  return RunIn(session, demonstration.Wishes(std::move(wishes)));
} catch (const Unfulfilled& unfulfilled) {
  Err() << "error: " << terminal::Indented(unfulfilled.what()) << "\n";
  return kWrongUsage;
}

int RunCommand::RunIn(Session& session, const DialogWishes& wishes) {
  for (const auto& setting : wishes.settings) session.given_here.insert(setting.key);
  session.accepts_costs = wishes.accepts_costs;
  DayLog log(log_->Wishes());
  log.Note("mirelo run, for " + workbook_.string());
  host::Documents& documents = session.documents();
  const auto hold = HoldForDay(documents, workbook_);
  AlsoFiles also(also_);
  const auto document = OpenOrNew(documents, workbook_);
  session.document = document.get();
  auto& host = session.host();
  std::unique_ptr<Screen> screen;
  std::optional<DialogPerson> person;
  if (window_) {
    screen = global_.show_windows(host);
    SayWhereItSaves(*screen, workbook_);
  } else {
    auto desktop = std::make_unique<AttendedDesktop>();
    person.emplace(wishes, *desktop);
    host.ShowOn(std::move(desktop));
  }

  day::WorkingDay day(host.loop(), host.observed_sockets(), session.replies(), document->Application());
  log.Follow(day);
  const std::int32_t result = day.ShowDialog();
  if (session.refused_costs) return kFailed;
  if (person && person->Complained()) {
    Err() << "error: " << terminal::Indented(person->Complained()->text) << "\nNothing was committed.\n";
    return person->Complained()->is_of_wish ? kWrongUsage : kFailed;
  }
  if (!day::IsCommitted(result)) {
    Err() << "Nothing was committed.\n";
    return kFailed;
  }

  TellLosses(workbook_, *document);
  WorkbookKeeper keeper(
      host.loop(), *document, workbook_, [&] { Prepare(day, *document); },
      [&](const std::string& loss) { TellLoss(workbook_, loss); }, MannerOfSaving());
  log.Follow(keeper);
  DayView view(host.loop(), day, keeper);
  also.Begin(host.loop(), day);
  keeper.SaveAtStart();
  const bool went_well = Follow(session, day, keeper, view, log);
  also.End();
  const std::filesystem::path saved = keeper.SaveAtEnd();
  view.Summarize(saved.string());
  const bool all_is_kept = also.Summarize();
  log.Note(std::to_string(day.Came().Count()) + " quotes came; the day is over");
  ForgiveOutput();
  if (saved.empty()) Err() << "error: the workbook could not be saved\n";
  const bool was_fruitful = day.Came().Count() > 0;
  if (went_well && !was_fruitful) Err() << "error: no quote came in the whole day\n";
  return went_well && was_fruitful && all_is_kept && !saved.empty() ? kGood : kFailed;
}

// A toolkit of windows has threads of its own, which a copy of the process has not: what they hold at that
// moment would be held there for ever.
WorkbookKeeper::Manner RunCommand::MannerOfSaving() const {
  return global_.show_windows ? WorkbookKeeper::Manner::kInPlace : WorkbookKeeper::Manner::kBeside;
}

bool RunCommand::Follow(Session& session, day::WorkingDay& day, WorkbookKeeper& keeper, DayView& view,
                        DayLog& log) try {
  auto& host = session.host();
  auto& interrupt = session.interrupt();
  interrupt.Stopped.Subscribe([&host] { host.HangUp(); });
  bool is_over = false;
  const auto end = [&] {
    is_over = true;
    host.HangUp();
  };
  view.EndWished.Subscribe(end);
  Alarm alarm(host.loop());
  if (const auto time = ParseDuration(for_)) alarm.Set(*time, end);
  StreamWatch watch(session.host(), session.given_here);
  std::string told;
  watch.Told.Subscribe([&](const std::string& text) {
    told = text;
    day.Status.Raise(text);
  });
  day.Start();
  keeper.SaveAtIntervals(*ParseDuration(save_every_));
  view.Begin();
  day.RunUntil([&] {
    const bool is_in_vain = watch.HasFoundAnother() && day.Came().Count() == 0;
    return is_over || interrupt.Requested() || is_in_vain;
  });
  view.End();
  // A screen has taken it away.
  if (watch.HasFoundAnother() && terminal::Out().IsTerminal()) Err() << told << "\n";
  day.Stop();
  return true;
} catch (const std::exception&) {  // what has come until now is kept
  view.End();
  TellFailure();
  log.Note("the day breaks off: " + CurrentError().Description());
  StopAfterFailure(day);
  return false;
}

}  // namespace mirelo::app
