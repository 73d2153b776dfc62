#include "libreoffice/document_day.h"

#include <com/sun/star/frame/XTitle.hpp>
#include <com/sun/star/util/XCloseBroadcaster.hpp>
#include <cppuhelper/implbase1.hxx>
#include <utility>

#include "libreoffice/machine.h"
#include "uno/text.h"
#include "wire/mended_replies.h"

namespace mirelo::libreoffice {

namespace {

using css::uno::Reference;

// The end of a document, once, whichever way it comes.
class AtClosing final : public cppu::WeakImplHelper1<css::util::XCloseListener> {
 public:
  explicit AtClosing(std::function<void()> act) : act_(std::move(act)) {}

  void SAL_CALL queryClosing(const css::lang::EventObject&, sal_Bool) override {}
  void SAL_CALL notifyClosing(const css::lang::EventObject&) override { Act(); }
  void SAL_CALL disposing(const css::lang::EventObject&) override { Act(); }

 private:
  void Act() {
    if (const auto act = std::exchange(act_, nullptr)) act();
  }

  std::function<void()> act_;
};

}  // namespace

DocumentDay::DocumentDay(Machine& machine, Document document,
                         std::shared_ptr<host::excel::Application> application)
    : machine_(machine),
      document_(std::move(document)),
      listener_(new AtClosing([this] { Closing.Raise(); })),
      day_(machine.host().loop(), machine.host().sockets(), machine.replies(), std::move(application)) {
  Reference<css::util::XCloseBroadcaster>(document_, css::uno::UNO_QUERY_THROW)->addCloseListener(listener_);
  day_.Status.Subscribe([this](const std::string& text) { told_ = text; });
  day_.Wrote.Subscribe([this] { OnWrote(); });
  told_by_machine_ = machine_.Told.Subscribe([this](const std::string& text) { told_ = text; });
}

DocumentDay::~DocumentDay() {
  machine_.Told.Unsubscribe(told_by_machine_);
  Unlisten();
}

void DocumentDay::Start() {
  day_.TakeSettings();
  day_.Start();
}

void DocumentDay::Stop() {
  Unlisten();
  day_.Stop();
}

void DocumentDay::Abandon() {
  Unlisten();
  day_.Abandon();
}

// A column is as wide as what it held last, so once is enough, and the user's own widths stay from then on.
void DocumentDay::OnWrote() {
  if (is_fitted_ || day_.Written() == 0) return;
  is_fitted_ = true;
  day_.Fit();
}

void DocumentDay::Unlisten() {
  const Reference<css::util::XCloseListener> listener = std::exchange(listener_, {});
  if (!listener.is()) return;
  try {
    const Reference<css::util::XCloseBroadcaster> document(document_, css::uno::UNO_QUERY);
    if (document.is()) document->removeCloseListener(listener);
  } catch (const css::uno::RuntimeException&) {  // it is gone already
  }
}

std::string TitleOf(const Reference<css::frame::XModel>& document) try {
  const Reference<css::frame::XTitle> titled(document, css::uno::UNO_QUERY);
  return titled.is() ? uno::TextOf(titled->getTitle()) : std::string();
} catch (const css::uno::RuntimeException&) {
  return {};
}

}  // namespace mirelo::libreoffice
