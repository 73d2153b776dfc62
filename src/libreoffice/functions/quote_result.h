#pragma once

#include <com/sun/star/sheet/XVolatileResult.hpp>
#include <cppuhelper/implbase1.hxx>
#include <memory>
#include <vector>

#include "day/quote_watch.h"

namespace mirelo::libreoffice {

namespace css = com::sun::star;

class QuoteAnswers;

// What cells with one question have in common: the office shows what this tells. The question is being asked
// from the first listener on, until the last is gone, or no cell has use for it.
//
// The office keeps its listener when the last cell is gone, until the document is closed. What it does not do
// without a cell is to call the function again when it is told something: so this notes both.
//
// Called on the main thread, or on another one that holds the office's lock while the main one waits for it.
class QuoteResult final : public cppu::WeakImplHelper1<css::sheet::XVolatileResult> {
 public:
  using Listener = css::uno::Reference<css::sheet::XResultListener>;

  // `answers` outlives it.
  QuoteResult(QuoteAnswers& answers, day::QuoteQuestion question);
  ~QuoteResult() override;
  QuoteResult(const QuoteResult&) = delete;
  QuoteResult& operator=(const QuoteResult&) = delete;

  const day::QuoteQuestion& question() const { return question_; }

  // Tells the listener the present value at once, on which the office counts.
  void SAL_CALL addResultListener(const Listener& listener) override;
  void SAL_CALL removeResultListener(const Listener& listener) override;

  // A cell has called the function.
  void NoteCall();

  // Begins to ask, where somebody listens; and ends where nobody does.
  void Begin();
  void End();

  bool IsAsking() const { return watched_ != nullptr; }
  // Whether a cell has called since the listeners were last told something.
  bool HasBeenHeard() const { return !told_; }
  // Marks it as one that may have no cell any more, until a cell calls.
  void Doubt() { doubted_ = true; }
  bool IsDoubted() const { return doubted_; }
  // Tells what there is once more, so that cells call if there are any.
  void TellAgain() { Tell(); }
  // Ends the question until a cell calls. What was known stays.
  void Suspend();

 private:
  void Tell();

  QuoteAnswers& answers_;
  const day::QuoteQuestion question_;
  std::vector<Listener> listeners_;
  std::unique_ptr<day::QuoteWatch::Watched> watched_;
  css::uno::Any value_;  // void while there is none, which cells show as #N/A
  bool told_ = false;    // since a cell called
  bool doubted_ = false;
};

}  // namespace mirelo::libreoffice
