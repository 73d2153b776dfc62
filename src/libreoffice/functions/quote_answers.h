#pragma once

#include <chrono>
#include <com/sun/star/sheet/XVolatileResult.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cppuhelper/weakref.hxx>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <rtl/ref.hxx>
#include <vector>

#include "day/quote_watch.h"
#include "host/message_loop.h"
#include "libreoffice/functions/formula_reader.h"
#include "wire/side_host.h"

namespace mirelo::curl {
class CurlInternet;
}

namespace mirelo::libreoffice {

class QuoteResult;

// What all cells of this office ask about quotes: one result for each question, and one watch for all. The
// machine is put in place when the first cell asks.
class QuoteAnswers {
 public:
  static QuoteAnswers& Of(const css::uno::Reference<css::uno::XComponentContext>& context);

  // Whether a facade is held for the cells, since the first of them asked.
  static bool HaveFacade();

  // The one result for the question that is alive, for a cell that calls.
  css::uno::Reference<css::sheet::XVolatileResult> ResultFor(const day::QuoteQuestion& question);

  // For results. A cell may be calculated for whoever speaks with the office from another process, on another
  // thread; quotes are a matter of the main one, where Begin and End are called.
  void BeginLater(QuoteResult& result);
  void EndLater(QuoteResult& result);
  void Forget(const QuoteResult& result);
  // Ends it on the main thread.
  void LetGo(std::unique_ptr<day::QuoteWatch::Watched> watched);
  // Null when the office ends.
  std::unique_ptr<day::QuoteWatch::Watched> Watch(const day::QuoteQuestion& question,
                                                  std::function<void()> changed);

 private:
  using Results = std::vector<rtl::Reference<QuoteResult>>;

  // A sheet is looked through again after so long, and so much longer where that takes time.
  static constexpr std::chrono::seconds kBetweenChecks{3};
  static constexpr int kLeastShareOfChecks = 100;
  // Each check also asks after the cells of so many results that had no news, of all such results in turn.
  static constexpr std::size_t kMostOfQuiet = 100;
  // The office's main thread is taken for so long at once, and is free for so long between.
  static constexpr std::chrono::milliseconds kReadAtOnce{5};
  static constexpr std::chrono::milliseconds kBetweenReads{50};

  explicit QuoteAnswers(const css::uno::Reference<css::uno::XComponentContext>& context);

  day::QuoteWatch* Watch();
  void OnMainThread(QuoteResult& result, void (QuoteResult::*act)());
  void End();
  void HangUp();

  Results AllThatAsk();
  void CheckLater();
  void Check();
  void TellQuietAgain(const Results& all);
  void ReadOn();
  void SuspendUnused();

  const css::uno::Reference<css::uno::XComponentContext> context_;
  host::MessageLoop* loop_ = nullptr;  // the machine's, as soon as a cell has asked
  std::unique_ptr<wire::SideHost> side_;
  curl::CurlInternet* internet_ = nullptr;  // of side_
  std::unique_ptr<day::QuoteWatch> watch_;
  bool ended_ = false;

  std::mutex mutex_;  // of results_: the last hold on a result may be another process's
  std::map<day::QuoteQuestion, css::uno::WeakReference<css::sheet::XVolatileResult>> results_;

  host::MessageLoop::Token checking_ = 0;
  std::size_t next_quiet_ = 0;
  std::optional<FormulaReader> reader_;  // while a check goes on
  Results doubtful_;                     // that it is about
  std::chrono::steady_clock::duration read_for_{};
};

}  // namespace mirelo::libreoffice
