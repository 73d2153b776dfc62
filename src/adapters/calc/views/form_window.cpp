#include "adapters/calc/views/form_window.h"

#include <algorithm>
#include <com/sun/star/accessibility/XAccessible.hpp>
#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/PosSize.hpp>
#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/awt/XControlContainer.hpp>
#include <com/sun/star/awt/XTopWindow.hpp>
#include <com/sun/star/awt/grid/XGridControl.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/lang/XComponent.hpp>
#include <com/sun/star/lang/XMultiComponentFactory.hpp>
#include <utility>
#include <vector>

#include "adapters/calc/objects/office_text.h"
#include "adapters/calc/office_loop.h"
#include "adapters/calc/views/control_maker.h"
#include "adapters/calc/views/failure.h"
#include "adapters/calc/views/listeners.h"
#include "forms/button.h"
#include "forms/layout/layouts.h"
#include "forms/simple_controls.h"
#include "forms/tab.h"

namespace mirelo::calc {

using css::uno::Any;
using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

namespace {

bool IsSizable(forms::Form::Border border) {
  return border == forms::Form::Border::Sizable || border == forms::Form::Border::SizableToolWindow;
}

Reference<css::uno::XInterface> Make(const Reference<css::uno::XComponentContext>& context,
                                     const char* service) {
  return context->getServiceManager()->createInstanceWithContext(rtl::OUString::createFromAscii(service),
                                                                 context);
}

using Told = std::vector<Reference<css::accessibility::XAccessible>>;

// What tells screen readers of a grid is freed by the office while it is being disposed, which breaks the
// heap, unless somebody holds it. The office gives that of windows that are visible only.
Told ToldOfGrids(const Reference<css::awt::XDialog2>& dialog) try {
  bool has_grids = false;
  for (const auto& control : Reference<css::awt::XControlContainer>(dialog, UNO_QUERY_THROW)->getControls()) {
    if (!Reference<css::awt::grid::XGridControl>(control, UNO_QUERY).is()) continue;
    Reference<css::awt::XWindow>(control, UNO_QUERY_THROW)->setVisible(true);
    has_grids = true;
  }
  if (!has_grids) return {};
  const Reference<css::accessibility::XAccessible> window(
      Reference<css::awt::XControl>(dialog, UNO_QUERY_THROW)->getPeer(), UNO_QUERY_THROW);
  const auto all = window->getAccessibleContext();
  Told told;
  for (auto number = all->getAccessibleChildCount(); number > 0; --number)
    told.push_back(all->getAccessibleChild(number - 1));
  return told;
} catch (const css::uno::Exception&) {
  return {};  // it has gone before
}

void GiveBack(const Reference<css::awt::XDialog2>& dialog) {
  const Told held = ToldOfGrids(dialog);
  Reference<css::lang::XComponent>(dialog, UNO_QUERY_THROW)->dispose();
}

}  // namespace

FormWindow::FormWindow(const Reference<css::uno::XComponentContext>& context, forms::Form& form,
                       OfficeLoop& loop, const Reference<css::awt::XWindowPeer>& above, Asked asked)
    : form_(form),
      loop_(loop),
      context_(context),
      asked_(std::move(asked)),
      above_(above),
      model_(Make(context, "com.sun.star.awt.UnoControlDialogModel"), UNO_QUERY_THROW),
      views_(context, loop, model_),
      dialog_(Make(context, "com.sun.star.awt.UnoControlDialog"), UNO_QUERY_THROW),
      toolkit_(css::awt::Toolkit::create(context)) {
  views_.ask = asked_.question;
  views_.can_press = [this] { return form_.Visible() && asked_.is_on_top(); };
  ControlMaker maker(views_);
  forms::layout::BoxBuilder builder(form, forms::layout::LayoutOf(form.Name()), {}, maker);
  box_ = builder.Build();
  first_ = builder.first();
  Open();
  Listen();
  subscription_ = form_.Appearance.Subscribe([this] { ShowForm(); });
  for (forms::Control* control : form_.Controls()) {
    const bool is_read = dynamic_cast<const forms::Label*>(control) != nullptr ||
                         dynamic_cast<const forms::Panel*>(control) != nullptr;
    subscriptions_.emplace_back(control, control->Appearance.Subscribe([this, control, is_read] {
      views_.ShowControl(*control);
      if (is_read) PutControls();  // its words may be longer now
    }));
  }
}

FormWindow::~FormWindow() {
  for (const auto& [control, cookie] : subscriptions_) control->Appearance.Unsubscribe(cookie);
  form_.Appearance.Unsubscribe(subscription_);
  try {
    if (dialog_.is()) GiveBack(dialog_);
  } catch (const css::uno::Exception&) {
    // It went with the office.
  }
}

void FormWindow::Open() {
  const Reference<css::beans::XPropertySet> look(model_, UNO_QUERY_THROW);
  look->setPropertyValue("Title", Any(OfficeText(form_.Caption())));
  look->setPropertyValue("Sizeable", Any(IsSizable(form_.BorderStyle())));
  look->setPropertyValue("Closeable", Any(true));
  look->setPropertyValue("Moveable", Any(true));
  const Reference<css::awt::XControl> control(dialog_, UNO_QUERY_THROW);
  control->setModel(model_);
  window()->setVisible(false);
  views_.ShowAll();
  control->createPeer(Reference<css::awt::XToolkit>(toolkit_, UNO_QUERY_THROW), above_);
  views_.Connect(Reference<css::awt::XControlContainer>(dialog_, UNO_QUERY_THROW));

  least_ = Needed(box_);
  const css::awt::Rectangle screen = toolkit_->getWorkArea();
  const std::int32_t width = std::min(std::max(least_.width, views_.PixelsOf(form_.Width())), screen.Width);
  const std::int32_t height =
      std::min(std::max(least_.height, views_.PixelsOf(form_.Height())), screen.Height);
  window()->setPosSize(0, 0, width, height, css::awt::PosSize::SIZE);
  PutControls();
  Center();
}

void FormWindow::Listen() {
  window()->addWindowListener(
      new OnResize(views_.Heard([this](const auto&) { loop_.Guard([this] { PutControls(); }); })));
  Reference<css::awt::XTopWindow>(dialog_, UNO_QUERY_THROW)
      ->addTopWindowListener(new OnCloseBox(views_.Heard([this](const auto&) { TakeClosing(); })));
  const css::uno::Reference<css::awt::XKeyListener> keys = new OnKeys(
      views_.Heard([this](const auto& key) { views_.last_key = key.KeyCode; }), [](const auto&) {});
  window()->addKeyListener(keys);
  for (const auto& view : views_.all()) {
    if (view->control == nullptr) continue;
    view->As<css::awt::XWindow>()->addKeyListener(keys);
    view->As<css::awt::XWindow>()->addFocusListener(
        new OnFocus(views_.Heard([this, &view = *view](const auto&) { FollowFocus(view); })));
  }
}

Reference<css::awt::XWindow> FormWindow::window() const { return {dialog_, UNO_QUERY_THROW}; }

Reference<css::awt::XWindowPeer> FormWindow::peer() const {
  const Reference<css::awt::XControl> control(dialog_, UNO_QUERY);
  return control.is() ? control->getPeer() : Reference<css::awt::XWindowPeer>();
}

void FormWindow::PutControls() const {
  if (!dialog_.is()) return;
  try {
    const css::awt::Rectangle size = window()->getPosSize();
    Put(box_, {0, 0, size.Width, size.Height});
  } catch (const css::lang::DisposedException&) {
    // It goes just now.
  } catch (const css::uno::Exception& failure) {
    throw ToolkitFailed(failure);
  }
}

// Escape that presses nothing leaves the form up, though the office takes its dialog down for it.
void FormWindow::Run(const std::function<bool()>& hidden) {
  struct Running {
    explicit Running(bool& flag) : running(flag) { running = true; }
    ~Running() { running = false; }
    bool& running;
  } const running(running_);
  while (!hidden()) {
    closing_ = escaped_ = false;
    loop_.WaitIn(
        [this] {
          if (dialog_.is()) dialog_->execute();
        },
        [this] { Leave(); });
    if (!hidden() && (!escaped_ || !dialog_.is())) form_.Close();
  }
}

// The office closes a dialog by its close box and by Escape, calls both the same, and tells of it twice.
void FormWindow::TakeClosing() {
  if (!form_.Visible() || !asked_.is_on_top() || std::exchange(closing_, true)) return;
  escaped_ = std::exchange(views_.last_key, 0) == css::awt::Key::ESCAPE;
  loop_.Guard([this] { escaped_ ? form_.UserEscape() : form_.Close(); });
}

void FormWindow::Leave() const noexcept {
  try {
    if (dialog_.is()) dialog_->endExecute();
  } catch (const css::uno::Exception&) {
    // It has gone, and so it has left.
  }
}

void FormWindow::Abandon() {
  loop_.Guard([this] {
    if (form_.Visible()) form_.Close();
  });
  const auto dialog = std::exchange(dialog_, {});
  if (!dialog.is()) return;
  try {
    dialog->endExecute();
    GiveBack(dialog);
  } catch (const css::uno::Exception&) {
    // It has gone before.
  }
}

void FormWindow::ToFront() const {
  const Reference<css::awt::XTopWindow> top(peer(), UNO_QUERY);
  if (top.is()) top->toFront();
}

// The window may go at any time, with what it lies above.
void FormWindow::ShowForm() {
  if (!dialog_.is()) return;
  try {
    ShowState();
  } catch (const css::lang::DisposedException&) {
    // It goes just now.
  } catch (const css::uno::Exception& failure) {
    throw ToolkitFailed(failure);
  }
}

void FormWindow::ShowState() {
  dialog_->setTitle(OfficeText(form_.Caption()));
  const bool comes_up = form_.Visible() && !shown_;
  if (form_.Visible() != std::exchange(shown_, form_.Visible())) {
    if (!shown_ && running_) {
      Leave();
      asked_.ended();
    }
    window()->setVisible(shown_);
  }
  ShowFocus();
  if (comes_up && form_.ActiveControl() == nullptr) FocusFirst();
}

void FormWindow::ShowFocus() {
  const forms::Control* active = form_.ActiveControl();
  if (std::exchange(focused_, active) == active) return;
  if (const View* view = views_.ViewOf(active)) view->As<css::awt::XWindow>()->setFocus();
}

// A form that gives no control the focus leaves it to the one that its layout names, else to the first one
// that can be used. A strip of tabs is passed over: what a person came for is on the tab.
void FormWindow::FocusFirst() const {
  if (const View* view = views_.ViewOf(first_)) return view->As<css::awt::XWindow>()->setFocus();
  for (const auto& view : views_.all()) {
    const forms::Control* control = view->control;
    if (control == nullptr || !control->IsUsable() || dynamic_cast<const forms::Tab*>(control) != nullptr ||
        dynamic_cast<const forms::Panel*>(control) != nullptr)
      continue;
    return view->As<css::awt::XWindow>()->setFocus();
  }
}

// The person has moved the focus.
void FormWindow::FollowFocus(const View& view) {
  if (view.control == form_.ActiveControl() || !form_.Visible()) return;
  focused_ = view.control;
  loop_.Guard([&] { form_.ActiveControl(view.control); });
}

}  // namespace mirelo::calc
