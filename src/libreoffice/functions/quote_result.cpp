#include "libreoffice/functions/quote_result.h"

#include <algorithm>
#include <cppuhelper/weakref.hxx>
#include <utility>

#include "automation/runtime_error.h"
#include "libreoffice/functions/quote_answers.h"
#include "uno/errors.h"
#include "uno/text.h"

namespace mirelo::libreoffice {

namespace {

// A cell shows no value as #N/A, and no other error can be told.
css::uno::Any ValueOf(const day::QuoteValue& answer) {
  if (answer.IsNothing()) return {};
  if (answer.kind() == day::QuoteValue::Kind::Text) return css::uno::Any(uno::OfficeText(answer.text()));
  return css::uno::Any(answer.Serial());
}

}  // namespace

QuoteResult::QuoteResult(QuoteAnswers& answers, day::QuoteQuestion question)
    : answers_(answers), question_(std::move(question)) {}

// Of the last hold, which may be another process's, on a thread of its own.
QuoteResult::~QuoteResult() {
  answers_.Forget(*this);
  answers_.LetGo(std::move(watched_));
}

void SAL_CALL QuoteResult::addResultListener(const Listener& listener) {
  if (!listener.is()) return;
  uno::AtTheBorder([&] {
    listeners_.push_back(listener);
    if (!watched_) answers_.BeginLater(*this);
    listener->modified(css::sheet::ResultEvent(static_cast<cppu::OWeakObject*>(this), value_));
  });
}

void SAL_CALL QuoteResult::removeResultListener(const Listener& listener) {
  uno::AtTheBorder([&] {
    const auto found = std::ranges::find(listeners_, listener);
    if (found != listeners_.end()) listeners_.erase(found);
    if (listeners_.empty()) answers_.EndLater(*this);
  });
}

void QuoteResult::NoteCall() {
  told_ = doubted_ = false;
  if (!watched_ && !listeners_.empty()) answers_.BeginLater(*this);
}

void QuoteResult::Begin() {
  if (watched_ || listeners_.empty()) return;
  try {
    const css::uno::WeakReference<css::sheet::XVolatileResult> self(this);
    watched_ = answers_.Watch(question_, [self] {
      const css::uno::Reference<css::sheet::XVolatileResult> living(self);
      if (living.is()) static_cast<QuoteResult*>(living.get())->Tell();
    });
    if (watched_ && !watched_->Answer().IsNothing()) Tell();
  } catch (...) {
    // The office expects no failure here. The settings cannot be opened, for one.
    if (question_.about == day::QuoteQuestion::About::Status)
      value_ <<= uno::OfficeText(uno::ErrorInHand().Description());
  }
}

void QuoteResult::End() {
  if (listeners_.empty()) watched_.reset();
}

void QuoteResult::Suspend() {
  watched_.reset();
  told_ = doubted_ = false;
}

void QuoteResult::Tell() {
  const css::uno::Reference<css::sheet::XVolatileResult> self(this);  // a listener may let go of it
  told_ = true;
  if (watched_) value_ = ValueOf(watched_->Answer());
  const css::sheet::ResultEvent event(static_cast<cppu::OWeakObject*>(this), value_);
  const std::vector<Listener> told = listeners_;
  for (const Listener& listener : told) {
    try {
      listener->modified(event);
    } catch (const css::uno::RuntimeException&) {  // its document is gone
    }
  }
}

}  // namespace mirelo::libreoffice
