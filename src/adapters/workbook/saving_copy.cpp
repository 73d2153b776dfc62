#include "adapters/workbook/saving_copy.h"

#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "adapters/workbook/file_hold.h"
#include "adapters/workbook/leftovers.h"
#include "adapters/workbook/rules.h"
#include "adapters/workbook/sent_error.h"
#include "automation/runtime_error.h"
#include "spreadsheet/errors.h"

namespace mirelo::workbook {

namespace {

// What the copy has to say. The last message is kSaved or kFailed.
enum Said : char {
  kTell = 't',          // a sentence for a person, which it waits for
  kTold = 'n',          // a loss that was told
  kSuffered = 's',      // a loss that was made
  kKeepsNoSheet = 'k',  // from now on
  kPlacing = 'p',       // the stamp of what is put in place now
  kSaved = 'd',
  kFailed = 'f',  // the error
};

constexpr const char* kLeftBehind =
    "The process that saves it cannot be ended, as where a disk does not answer, and is left behind; what it "
    "has asked of the disk last may still be done.";

// Both processes are one program.
static_assert(std::is_trivially_copyable_v<FileStamp>);

std::string_view BytesOf(const FileStamp& stamp) {
  return {reinterpret_cast<const char*>(&stamp), sizeof stamp};
}

void SendNotes(const Spreadsheet::LossNotes& notes, const ProcessCopy::Line& line) {
  for (const std::string& loss : notes.told) line.Send(kTold, loss);
  for (const std::string& loss : notes.suffered) line.Send(kSuffered, loss);
  if (notes.keeps_no_sheet) line.Send(kKeepsNoSheet, "");
}

void SaveAndReport(Spreadsheet& spreadsheet, const SavingCopy::Place& place, const ProcessCopy::Line& line) {
  const auto tell = [&](const std::string& sentence) {
    line.Send(kTell, sentence);
    line.AwaitAnswer();
  };
  const auto placing = [&](const FileStamp& stamp) { line.Send(kPlacing, BytesOf(stamp)); };
  try {
    spreadsheet.Save(place.file, tell, place.known, placing);
    SendNotes(spreadsheet.Notes(), line);
    line.Send(kSaved, "");
  } catch (const std::exception&) {
    const std::string failure = CurrentErrorAsText();
    SendNotes(spreadsheet.Notes(), line);
    line.Send(kFailed, failure);
  }
}

}  // namespace

std::unique_ptr<SavingCopy> SavingCopy::Begin(host::MessageLoop& loop, Spreadsheet& spreadsheet, Place place,
                                              Spreadsheet::Tell tell, std::function<void(const End&)> done) {
  if (!ProcessCopy::CanBeMade()) return nullptr;
  std::unique_ptr<SavingCopy> saving(
      new SavingCopy(loop, spreadsheet, std::move(place), std::move(tell), std::move(done)));
  try {
    saving->copy_ = std::make_unique<ProcessCopy>(
        [&](const ProcessCopy::Line& line) { SaveAndReport(saving->spreadsheet_, saving->place_, line); });
  } catch (const RuntimeError&) {  // there is no room for another process
    return nullptr;
  }
  saving->watch_ = loop.Watch(saving->copy_->descriptor(), host::MessageLoop::kRead,
                              [raw = saving.get()](unsigned) { raw->Hear(); });
  return saving;
}

SavingCopy::SavingCopy(host::MessageLoop& loop, Spreadsheet& spreadsheet, Place place, Spreadsheet::Tell tell,
                       std::function<void(const End&)> done)
    : loop_(loop),
      spreadsheet_(spreadsheet),
      place_(std::move(place)),
      tell_(std::move(tell)),
      done_(std::move(done)) {}

SavingCopy::~SavingCopy() {
  if (copy_ == nullptr || BreakOff()) return;
  try {
    tell_(kLeftBehind);
  } catch (const std::exception&) {  // nobody is left to tell
  }
}

// Who is told may run the loop.
void SavingCopy::Hear() {
  loop_.Rewatch(watch_, 0);
  try {
    const bool is_over = !copy_->Receive();
    while (const auto message = copy_->Next()) Take(*message);
    if (!is_over) return loop_.Rewatch(watch_, host::MessageLoop::kRead);
    const std::string how = copy_->End();
    if (!has_reported_)
      throw Refused("The workbook cannot be written: the process that saves it broke off (" + how +
                    "). Memory may be short.");
  } catch (const std::exception&) {
    end_.failure = std::current_exception();
    if (!BreakOff())
      end_.failure = std::make_exception_ptr(Refused(CurrentError().Description() + " " + kLeftBehind));
  }
  Finish();
}

void SavingCopy::Take(const ProcessCopy::Message& message) {
  switch (message.kind) {
    case kTell:
      tell_(message.text);
      notes_.told.insert(message.text);  // what is lost is not told again where the copy breaks off now
      return copy_->Answer();
    case kTold:
      notes_.told.insert(message.text);
      return;
    case kSuffered:
      notes_.suffered.insert(message.text);
      return;
    case kKeepsNoSheet:
      notes_.keeps_no_sheet = true;
      return;
    case kPlacing:
      if (message.text.size() == sizeof placing_)
        std::memcpy(&placing_, message.text.data(), sizeof placing_);
      return;
    case kSaved:
      has_reported_ = true;
      return;
    case kFailed:
      end_.failure = ErrorOfText(message.text);
      has_reported_ = end_.failure != nullptr;
      return;
    default:
      return;
  }
}

// The disk has just answered, so this process may turn to it, unless one was left behind.
void SavingCopy::Finish() {
  loop_.Unwatch(watch_);
  copy_.reset();
  spreadsheet_.TakeOver(notes_);
  if (is_left_behind_) return Report();
  if (!end_.failure || (placing_.IsOfAFile() && placing_ == FileStamp(place_.file))) end_.stamp = placing_;
  if (!end_.failure) spreadsheet_.WasSavedIn(place_.file);
  FileHold::TakeAgain();
  Report();
}

void SavingCopy::Report() {
  const auto done = std::move(done_);
  const End end = std::move(end_);
  done(end);
}

// False where it is left behind: then this process does not turn to the disk either.
bool SavingCopy::BreakOff() {
  loop_.Unwatch(watch_);
  is_left_behind_ = !copy_->Kill();
  copy_.reset();
  if (is_left_behind_) return false;
  try {
    const FileHold hold(place_.file);
    if (hold.IsLocked()) RemoveLeftovers(hold.target());
  } catch (const std::exception&) {  // the next one who gets the hold does
  }
  return true;
}

}  // namespace mirelo::workbook
