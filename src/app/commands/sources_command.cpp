#include "app/commands/sources_command.h"

#include <chrono>
#include <memory>

#include "app/exit_code.h"
#include "app/failure_reason.h"
#include "app/options.h"
#include "app/output/text_table.h"
#include "app/session.h"
#include "app/stream_watch.h"
#include "automation/array.h"
#include "core/CAppSettings.h"
#include "core/mGlobal.h"
#include "core/setting_names.h"
#include "core/status_run_query.h"
#include "streaming/cQTStreaming.h"
#include "terminal/standard_streams.h"
#include "wire/observed_sockets.h"

namespace mirelo::app {

using terminal::Err;
using terminal::Out;

namespace {

constexpr std::int16_t kSourcesStored = 1;
constexpr std::chrono::seconds kPatience{20};

}  // namespace

SourcesCommand::SourcesCommand(command_line::Command& program, const GlobalOptions& global)
    : global_(global),
      command_(program.AddCommand("sources", "Show the quote sources that a stream can be asked for")) {
  command_.AddFlag("--update", update_, "Fetch the list from QuoteTracker first");
}

bool SourcesCommand::IsChosen() const { return command_.IsChosen(); }

int SourcesCommand::Run() {
  Session session(global_);
  session.facade();
  if (update_ && !Update(session)) return kFailed;
  return Show(session);
}

bool SourcesCommand::Update(Session& session) {
  auto& loop = session.host().loop();
  auto& facade = session.facade();
  bool stored = false;
  bool over = false;

  const auto stream = std::make_shared<cQTStreaming>();
  mGlobal::SetStreamingObject(stream);
  stream->Owner(&facade);
  facade.StatusRunWorkQT(StatusRunQueryQT::Status_ENUMSOURCES_L1);
  stream->OnStatusText.Subscribe([](const std::string& text) { Err() << WithReason(text) << "\n"; });
  stream->PerformanceFollowingProcess.Subscribe(
      [&](std::int16_t step) { stored = over = step == kSourcesStored; });
  const auto dropped = session.host().observed_sockets().Dropped.Subscribe([&](const std::string& reason) {
    Err() << reason << "\n";
    over = true;
  });
  const auto told = session.host().observed_sockets().Told.Subscribe(
      [](const std::string& line) { Err() << line << "\n"; });
  StreamWatch watch(session.host(), session.given_here);
  watch.Told.Subscribe([&](const std::string& text) {
    Err() << text << "\n";
    over = over || watch.HasFoundAnother();
  });
  const auto patience = loop.StartTimer(kPatience, [&] {
    Err() << "QuoteTracker did not send the list\n";
    over = true;
  });

  stream->connect();
  loop.RunUntil([&] { return over; });

  loop.StopTimer(patience);
  session.host().observed_sockets().Dropped.Unsubscribe(dropped);
  session.host().observed_sockets().Told.Unsubscribe(told);
  stream->DisConnect();
  stream->Owner(nullptr);
  mGlobal::SetStreamingObject(nullptr);
  if (!stored) Err() << "error: the list of quote sources was not updated\n";
  return stored;
}

int SourcesCommand::Show(Session&) {
  auto& settings = mGlobal::AppSettings();
  Array<std::string> names;
  settings.GetAllKeys(catalogue::kSources, names);
  if (!names.IsAllocated()) {
    Err() << "No quote sources are known yet. Fetch them from QuoteTracker with: mirelo sources --update\n";
    return kFailed;
  }
  TextTable table({"Name", "File"});
  for (const auto& name : names)
    table.AddRow({name, settings.GetSetting(catalogue::kSources, name, "").ToText()});
  Out() << table.ToText(Out().IsTerminal());
  return kGood;
}

}  // namespace mirelo::app
