#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cppuhelper/weakref.hxx>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "automation/event.h"
#include "host/message_loop.h"

namespace mirelo::libreoffice {

namespace css = com::sun::star;

class DocumentDay;
class Machine;

// The working day of this office: in one document at a time, since the library serves one. What comes between
// is told in boxes and in the status bar, and the office goes on.
//
//   closed or reloaded     the day ends, and the document is not touched any more; so do the settings
//   the office ends        the day ends in order, and what the settings wait for is hung up
//   saved, also elsewhere  the day goes on
//   what cannot be written the day ends with a box that says why and what to do
class OfficeDay {
 public:
  using Document = css::uno::Reference<css::frame::XModel>;

  static OfficeDay& Of(const css::uno::Reference<css::uno::XComponentContext>& context);

  // Whether neither the dialog can be shown nor a day begin.
  bool IsBusy() const { return phase_ != Phase::kIdle; }
  bool IsRunning() const { return phase_ == Phase::kRunning; }

  // Shows the settings dialog for the document. Error 5 while IsBusy, and for what is no spreadsheet.
  // The result is LoadFrmMirelo's.
  std::int32_t ShowSettings(const Document& document);
  // Begins the day as the settings say, with the quote table of the document. Raises what keeps it from it.
  void Start(const Document& document);
  // Ends it, if there is one.
  void Stop();

  // The day that runs; null while none does.
  DocumentDay* day() const { return day_.get(); }

  // For the status bar of the document's windows: what comes, or why nothing comes any more; empty while it
  // has no day.
  std::string StatusLine(const Document& document) const;
  // How many quotes came on the day that ended last.
  std::int64_t LastCount() const { return last_count_; }
  // All that is known, in sentences.
  std::string Report() const;

  // Whether it is busy or running, or a status line.
  Event<> Changed;
  // A line for a person, from the day.
  Event<const std::string&> Told;
  // A day has ended: why, where that was a failure, otherwise an empty text.
  Event<const std::string&> Ended;

 private:
  enum class Phase { kIdle, kDialog, kRunning };

  explicit OfficeDay(const css::uno::Reference<css::uno::XComponentContext>& context);

  void RequireFree();
  void BecomeIdle();
  void AbandonDialog();
  void EndDialog();
  void OnMainThread(std::function<void()> act);
  template <class Act>
  auto WhileItRuns(Act act) const;
  void End(const std::string& why);
  void EndLater();
  void EndWithReason();
  void ComplainOfLogin(const std::string& refusal);
  void Complain(const Document& document, const std::string& text);
  void Sweep();
  void SweepLater();
  void TellEverySecond();

  const css::uno::Reference<css::uno::XComponentContext> context_;
  Machine& machine_;
  Phase phase_ = Phase::kIdle;
  std::shared_ptr<DocumentDay> day_;
  // Days that are over, as long as some of their calls are under way.
  std::vector<std::shared_ptr<DocumentDay>> past_;
  std::string last_;  // of the day that ended last, for a person
  std::int64_t last_count_ = 0;
  std::string failure_;                                 // by which it ended
  css::uno::WeakReference<css::frame::XModel> failed_;  // where
  host::MessageLoop::Token telling_ = 0;
  host::MessageLoop::Token ending_ = 0;
  host::MessageLoop::Token complaining_ = 0;  // of a refused login; kept after it
  host::MessageLoop::Token sweeping_ = 0;
  host::MessageLoop::Token abandoning_ = 0;  // the dialog
};

}  // namespace mirelo::libreoffice
