#include "diagnostics/CErrorHandler.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "automation/regional_format.h"
#include "diagnostics/frmErrorMessage.h"
#include "host/clock.h"
#include "host/desktop.h"
#include "host/host.h"
#include "host/operating_system.h"

namespace mirelo {

namespace {

using host::Desktop;
using host::Host;
using host::OperatingSystem;

constexpr std::int32_t kAllActions = 15;
constexpr std::int32_t kAllTracingFlags = 3;
constexpr std::int16_t kStackIndent = 20;

// The sizes of the version record, the long form first: an old system knows only the short one.
constexpr std::int32_t kVersionRecordSizes[] = {156, 148};

bool RunsOnNt() {
  for (const std::int32_t size : kVersionRecordSizes) {
    if (const auto platform = Host::Current().system().GetVersionExA(size)) {
      return *platform == OperatingSystem::kPlatformNt;
    }
  }
  return false;
}

std::string DateAndTime() {
  host::Clock& clock = Host::Current().clock();
  const Date now = clock.Now();
  return ShortDate(now, clock.Regional()) + " - " + LongTime(now, clock.Regional());
}

void AppendToFile(const std::string& name, std::string_view text) {
  std::ofstream file(name, std::ios::binary | std::ios::app);
  file << text;
  file.close();
  if (!file) throw Errors::PathFileAccess();
}

// Folders are no log files, even where the machine would delete an empty one.
void DeleteFile(const std::string& name) {
  std::error_code ignored;
  if (!std::filesystem::is_directory(name, ignored)) std::filesystem::remove(name, ignored);
}

}  // namespace

CErrorHandler::CErrorHandler() {
  AnyFailureAs(Errors::ErrorHandlerFailure, [&] { is_windows_nt_ = RunsOnNt(); });
}

void CErrorHandler::Init(std::int32_t ErrorHandlerActions, std::string ErrorLogFile, bool CallStackEnabled,
                         bool TracingEnabled, std::int32_t TracingFlags, std::string TracingLogFile) {
  this->ErrorHandlerActions(ErrorHandlerActions);
  this->ErrorLogFile(std::move(ErrorLogFile));
  this->CallStackEnabled(CallStackEnabled);
  this->TracingEnabled(TracingEnabled);
  this->TracingFlags(TracingFlags);
  this->TracingLogFile(std::move(TracingLogFile));
}

void CErrorHandler::ErrorHandlerActions(std::int32_t value) {
  if (value < 1 || value > kAllActions) throw Errors::InvalidErrorHandlerActions();
  error_handler_actions_ = value;
}

void CErrorHandler::TracingFlags(std::int32_t value) {
  if (value < 1 || value > kAllTracingFlags) throw Errors::InvalidTracingFlags();
  tracing_flags_ = value;
}

void CErrorHandler::ErrorLogFile(std::string value) {
  if (value.empty()) throw Errors::InvalidFileName();
  error_log_file_ = std::move(value);
}

void CErrorHandler::TracingLogFile(std::string value) {
  if (value.empty()) throw Errors::InvalidFileName();
  tracing_log_file_ = std::move(value);
}

void CErrorHandler::CallStackPush(std::string_view Procedure, std::string_view Data) {
  AnyFailureAs(Errors::ErrorHandlerFailure, [&] {
    call_stack_.push_back({std::string(Procedure), std::string(Data)});
    if (TracesToFile()) Trace("Entered", Procedure);
  });
}

void CErrorHandler::CallStackPop() {
  AnyFailureAs(Errors::ErrorHandlerFailure, [&] {
    if (call_stack_.empty()) return;
    if (TracesToFile()) Trace("Exited", call_stack_.back().procedure);
    call_stack_.pop_back();
  });
}

void CErrorHandler::Trace(std::string_view event, std::string_view procedure) const {
  std::string line = DateAndTime();
  line.append(" --- ").append(event).append(" routine: ").append(procedure).append("\r\n");
  AppendToFile(tracing_log_file_, line);
}

void CErrorHandler::CallStackClear() {
  if (call_stack_enabled_) call_stack_.clear();
}

void CErrorHandler::Clear(bool ClearLogFile, bool ClearTracingLogFile) {
  if (ClearLogFile && !error_log_file_.empty()) DeleteFile(error_log_file_);
  if (ClearTracingLogFile && !tracing_log_file_.empty()) DeleteFile(tracing_log_file_);
}

std::int32_t CErrorHandler::HandleError(std::string_view Procedure) {
  return AnyFailureAs(Errors::ErrorHandlerFailure, [&] {
    TakeFailureInFlight();
    const std::string report = Report(RoutineInError(Procedure));
    const auto acts = [&](std::int32_t action) { return (error_handler_actions_ & action) != 0; };

    std::int32_t result = ResultAbort;
    if (acts(ActionLogFile)) AppendToFile(error_log_file_, report + "\r\n");
    if (acts(ActionEventLog) && is_windows_nt_) {
      Host::Current().system().LogEvent(report, OperatingSystem::kEventError);
    }
    if (acts(ActionMessageBox)) result = ShowMessageBox(report);
    if (acts(ActionErrorForm)) result = ShowErrorForm(report);
    return result;
  });
}

void CErrorHandler::TakeFailureInFlight() {
  const RuntimeError failure = std::current_exception() ? CurrentError() : RuntimeError(0, "");
  error_description_ = failure.Description();
  error_number_ = failure.Number();
  error_line_ = 0;
}

std::string CErrorHandler::RoutineInError(std::string_view Procedure) const {
  if (!Procedure.empty()) return std::string(Procedure);
  if (call_stack_enabled_ && !call_stack_.empty()) return call_stack_.back().procedure;
  return "Unknown";
}

std::string CErrorHandler::Report(std::string_view routine) const {
  std::string report = DateAndTime() + "\r\n";
  report += "\tError: " + std::to_string(error_number_) + ", (" + error_description_ + ")\r\n";
  report.append("\tin ")
      .append(routine)
      .append(" at line ")
      .append(std::to_string(error_line_))
      .append("\r\n");
  report += "\r\nThe call stack is:\r\n";
  report += FormatCallStack(kStackIndent, true);
  return report;
}

std::string CErrorHandler::FormatCallStack(std::int16_t indent, bool show_data) const {
  std::string text;
  for (auto entry = call_stack_.rbegin(); entry != call_stack_.rend(); ++entry) {
    if (!text.empty()) text += "\r\n";
    text.append(static_cast<std::size_t>(indent), ' ').append(entry->procedure);
    if (show_data) text.append("(").append(entry->data).append(")");
  }
  return text;
}

std::int32_t CErrorHandler::ShowMessageBox(const std::string& report) const {
  Desktop& desktop = Host::Current().desktop();
  switch (desktop.MessageBox(report, Desktop::kAbortRetryIgnore, Desktop::kDefaultTitle)) {
    case Desktop::Answer::Abort:
      return ResultAbort;
    case Desktop::Answer::Retry:
      return ResultRetry;
    default:
      return ResultIgnore;
  }
}

// The dialog answers with its tag. Closed by its close box it answers "", which counts as ignore.
std::int32_t CErrorHandler::ShowErrorForm(const std::string& report) const {
  frmErrorMessage form;
  form.ErrorMessage(report);
  form.SupportMail(support_mail_);
  Host::Current().desktop().ShowModal(form);
  const std::string tag = form.Tag();
  if (tag == "ABORT") return ResultAbort;
  if (tag == "RETRY") return ResultRetry;
  return ResultIgnore;
}

namespace Errors {

namespace {
RuntimeError ErrorHandlerError(std::uint32_t number, const char* description) {
  return RuntimeError(ErrorNumber(number), description, "Mirelo.CErrorHandler");
}
}  // namespace

RuntimeError InvalidFileName() { return ErrorHandlerError(0x800443F9, "Invalid file name"); }
RuntimeError InvalidErrorHandlerActions() {
  return ErrorHandlerError(0x800443FA, "Invalid error handler actions");
}
RuntimeError InvalidTracingFlags() { return ErrorHandlerError(0x800443FB, "Invalid tracing flags"); }
RuntimeError ErrorHandlerFailure() {
  return ErrorHandlerError(0x800443FC, "CErrorHandler component failure");
}

}  // namespace Errors

}  // namespace mirelo
