#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/runtime_error.h"

namespace mirelo {

// Reports the failures of the whole system, and answers what the failed routine does next. It keeps the call
// stack of routine names and writes a trace line when a routine is entered or left.
//
// What else goes wrong in here, such as a log file that cannot be opened, is raised as 0x800443FC,
// "CErrorHandler component failure".
class CErrorHandler {
 public:
  // ErrorHandlerActions is a sum of these: what becomes of a report. The file comes first, the dialog last.
  static constexpr std::int32_t ActionMessageBox = 1;  // asked about in a message box
  static constexpr std::int32_t ActionLogFile = 2;     // appended to ErrorLogFile
  static constexpr std::int32_t ActionEventLog = 4;    // written to the event log, on the NT family only
  static constexpr std::int32_t ActionErrorForm = 8;   // asked about in the error dialog, overruling the box

  // TracingFlags is a sum of these.
  static constexpr std::int32_t TraceDebugOutput = 1;  // accepted, yields no output anywhere
  static constexpr std::int32_t TraceLogFile = 2;      // trace lines are appended to TracingLogFile

  // What HandleError answers.
  static constexpr std::int32_t ResultAbort = 0;
  static constexpr std::int32_t ResultRetry = 1;
  static constexpr std::int32_t ResultIgnore = 2;

  struct CallStackEntry {
    std::string procedure;  // dotted: "Mirelo.cMirelo.GetLastQuote"
    std::string data;
  };

  // Asks the host which system this is; the message box is the only action yet, and everything else is off.
  CErrorHandler();
  CErrorHandler(const CErrorHandler&) = delete;
  CErrorHandler& operator=(const CErrorHandler&) = delete;

  // Sets the six properties in the order of the arguments. What was set before a value that is refused stays
  // set. Raises what the setters below raise: 0x800443FA, 0x800443F9, 0x800443FB.
  void Init(std::int32_t ErrorHandlerActions, std::string ErrorLogFile, bool CallStackEnabled,
            bool TracingEnabled, std::int32_t TracingFlags, std::string TracingLogFile);

  // Enters a routine: puts it on the call stack whatever CallStackEnabled says, then writes the trace line.
  // When the line cannot be written the routine is on the stack all the same.
  void CallStackPush(std::string_view Procedure, std::string_view Data);
  // Leaves the innermost routine: the trace line first. Does nothing when the stack is empty.
  void CallStackPop();
  // Empties the call stack; only when CallStackEnabled.
  void CallStackClear();

  // Deletes the log files whose flag is set. A file that cannot be deleted stays, without an error.
  void Clear(bool ClearLogFile, bool ClearTracingLogFile);

  // Reports the failure in flight and answers what to do about it: ResultAbort unless somebody was asked. To
  // be called inside a catch block; outside of one it reports error 0 without a text. An empty `Procedure`
  // stands for the innermost routine of the call stack when CallStackEnabled, and for "Unknown" without it.
  std::int32_t HandleError(std::string_view Procedure);

  // The routines that are entered and not left, the outermost first.
  const std::vector<CallStackEntry>& CallStack() const { return call_stack_; }

  // The failure that HandleError last took. The line is 0: no routine carries line labels.
  std::int32_t ErrorNumber() const { return error_number_; }
  void ErrorNumber(std::int32_t value) { error_number_ = value; }
  std::int32_t ErrorLine() const { return error_line_; }
  void ErrorLine(std::int32_t value) { error_line_ = value; }
  const std::string& ErrorDescription() const { return error_description_; }
  void ErrorDescription(std::string value) { error_description_ = std::move(value); }

  // Only when true does CallStackClear work and HandleError name the innermost routine.
  bool CallStackEnabled() const { return call_stack_enabled_; }
  void CallStackEnabled(bool value) { call_stack_enabled_ = value; }
  bool TracingEnabled() const { return tracing_enabled_; }
  void TracingEnabled(bool value) { tracing_enabled_ = value; }

  // The four below keep their old value when the new one is refused.

  // A sum of action flags, 1 to 15. Error 0x800443FA, "Invalid error handler actions", for any other number.
  std::int32_t ErrorHandlerActions() const { return error_handler_actions_; }
  void ErrorHandlerActions(std::int32_t value);
  // A sum of trace flags, 1 to 3; 0 until it is set. Error 0x800443FB, "Invalid tracing flags", for any other
  // number.
  std::int32_t TracingFlags() const { return tracing_flags_; }
  void TracingFlags(std::int32_t value);

  // A name without a folder is a file in the current directory. A file is open only while it is written to.
  // Error 0x800443F9, "Invalid file name", for an empty name.
  const std::string& ErrorLogFile() const { return error_log_file_; }
  void ErrorLogFile(std::string value);
  const std::string& TracingLogFile() const { return tracing_log_file_; }
  void TracingLogFile(std::string value);

  // Whether the machine's platform is that of the NT family, the only one with an event log.
  bool IsWindowsNT() const { return is_windows_nt_; }

  // The address for the error dialog's send button; empty switches that off.
  const std::string& SupportMail() const { return support_mail_; }
  void SupportMail(std::string value) { support_mail_ = std::move(value); }

  // Free for the caller.
  const std::string& Tag() const { return tag_; }
  void Tag(std::string value) { tag_ = std::move(value); }

 private:
  void TakeFailureInFlight();
  std::string RoutineInError(std::string_view Procedure) const;
  std::string Report(std::string_view routine) const;
  std::string FormatCallStack(std::int16_t indent, bool show_data) const;
  std::int32_t ShowMessageBox(const std::string& report) const;
  std::int32_t ShowErrorForm(const std::string& report) const;
  bool TracesToFile() const { return tracing_enabled_ && (tracing_flags_ & TraceLogFile) != 0; }
  void Trace(std::string_view event, std::string_view procedure) const;

  bool call_stack_enabled_ = false;
  bool tracing_enabled_ = false;
  std::int32_t error_handler_actions_ = ActionMessageBox;
  std::int32_t tracing_flags_ = 0;
  std::int32_t error_number_ = 0;
  std::int32_t error_line_ = 0;
  std::string error_log_file_ = "Error Log.txt";
  std::string tracing_log_file_ = "Tracing Log.txt";
  std::string tag_;
  std::string error_description_;
  std::string support_mail_;
  bool is_windows_nt_ = false;
  std::vector<CallStackEntry> call_stack_;
};

// What CErrorHandler raises, with the source "Mirelo.CErrorHandler".
namespace Errors {
RuntimeError InvalidFileName();             // 0x800443F9, "Invalid file name"
RuntimeError InvalidErrorHandlerActions();  // 0x800443FA, "Invalid error handler actions"
RuntimeError InvalidTracingFlags();         // 0x800443FB, "Invalid tracing flags"
RuntimeError ErrorHandlerFailure();         // 0x800443FC, "CErrorHandler component failure"
}  // namespace Errors

}  // namespace mirelo
