#include "adapters/workbook/xlsx/writer_process.h"

#include <exception>
#include <string>

#include "adapters/workbook/process_copy.h"
#include "adapters/workbook/rules.h"
#include "adapters/workbook/sent_error.h"
#include "spreadsheet/errors.h"

namespace mirelo::workbook {

namespace {

constexpr char kDone = 'd';
constexpr char kWritingFailed = 'f';

constexpr const char* kEnded =
    "The workbook cannot be written: the file writer stood still and was ended. The disk may not answer.";
constexpr const char* kWriterLeftBehind =
    "The workbook cannot be written: the file writer stood still and cannot be ended, so it is left behind. "
    "The "
    "disk does not answer.";

void WriteAndReport(const std::function<void()>& write, const ProcessCopy::Line& line) {
  try {
    write();
    line.Send(kDone, "");
  } catch (const std::exception&) {
    line.Send(kWritingFailed, CurrentErrorAsText());
  }
}

}  // namespace

void InWriterProcess(const std::function<void()>& write, std::chrono::milliseconds patience) {
  if (!ProcessCopy::CanBeMade()) return write();
  ProcessCopy copy([&](const ProcessCopy::Line& line) { WriteAndReport(write, line); });
  do {
    if (!copy.Await(patience)) throw Refused(copy.Kill() ? kEnded : kWriterLeftBehind);
  } while (copy.Receive());
  const std::string end = copy.End();
  const auto report = copy.Next();
  if (report && report->kind == kDone) return;
  if (report) {
    if (const std::exception_ptr error = ErrorOfText(report->text)) std::rethrow_exception(error);
  }
  throw Refused("The workbook cannot be written: the file writer broke off (" + end +
                "). Memory may be short.");
}

}  // namespace mirelo::workbook
