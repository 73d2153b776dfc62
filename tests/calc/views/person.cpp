#include "calc/views/person.h"

#include <chrono>
#include <com/sun/star/accessibility/AccessibleRole.hpp>
#include <com/sun/star/accessibility/XAccessible.hpp>
#include <com/sun/star/accessibility/XAccessibleAction.hpp>
#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/KeyModifier.hpp>
#include <com/sun/star/awt/MouseButton.hpp>
#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/awt/XExtendedToolkit.hpp>
#include <com/sun/star/awt/XTextComponent.hpp>
#include <com/sun/star/awt/XToolkit.hpp>
#include <com/sun/star/awt/XWindow2.hpp>
#include <stdexcept>
#include <utility>

#include "adapters/calc/objects/office_text.h"
#include "calc/in_office/run_in_office.h"
#include "forms/text_box.h"

namespace mirelo::calc {

using css::accessibility::XAccessible;
using css::accessibility::XAccessibleContext;
using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

namespace {

constexpr sal_Int32 kMostChildren = 30;
constexpr std::chrono::milliseconds kBetween{15};
constexpr std::chrono::seconds kPatience{8};
// Until a window stands, and what was done to it has arrived: each look comes behind what the office had to
// do before.
constexpr int kLooks = 3;
// The same for a window that is not in front, as it may never be, or not yet.
constexpr int kLooksBehind = 20;

// What the office has on the screen, found by its name for the blind.
Reference<XAccessibleContext> FindNamed(const Reference<XAccessible>& where, const rtl::OUString& name) {
  if (!where.is()) return {};
  const Reference<XAccessibleContext> context = where->getAccessibleContext();
  if (!context.is()) return {};
  if (context->getAccessibleName().replaceAll("~", "") == name) return context;
  // The document has its cells for children: a box has few.
  const sal_Int32 children = context->getAccessibleChildCount();
  for (sal_Int32 child = 0; children <= kMostChildren && child < children; ++child) {
    const auto found = FindNamed(context->getAccessibleChild(child), name);
    if (found.is()) return found;
  }
  return {};
}

bool IsBox(const Reference<XAccessible>& window) {
  if (!window.is() || !window->getAccessibleContext().is()) return false;
  const sal_Int16 role = window->getAccessibleContext()->getAccessibleRole();
  return role == css::accessibility::AccessibleRole::ALERT ||
         role == css::accessibility::AccessibleRole::DIALOG;
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
Reference<XAccessibleContext> FindInBox(const std::string& text, const std::string& button) {
  const Reference<css::awt::XExtendedToolkit> toolkit(css::awt::Toolkit::create(OfficeContext()),
                                                      UNO_QUERY_THROW);
  for (sal_Int32 window = toolkit->getTopWindowCount() - 1; window >= 0; --window) {
    const Reference<XAccessible> top(toolkit->getTopWindow(window), UNO_QUERY);
    if (!IsBox(top)) continue;
    if (FindNamed(top, OfficeText(text)).is()) return FindNamed(top, OfficeText(button));
  }
  return {};
}
#pragma GCC diagnostic pop

}  // namespace

Person::Person(OfficeLoop& loop, CalcDesktop& desktop)
    : loop_(loop),
      desktop_(desktop),
      robot_(css::awt::Toolkit::create(OfficeContext()), UNO_QUERY_THROW),
      last_done_(std::chrono::steady_clock::now()) {
  timer_ = loop_.StartTimer(kBetween, [this] { Tick(); });
}

Person::~Person() {
  loop_.StopTimer(timer_);
  for (const Step& step : steps_) ADD_FAILURE() << "nobody came to: " << step.what;
}

void Person::Does(std::string what, std::function<void()> act) {
  steps_.push_back({std::move(what), [] { return forms::ActiveForm() != nullptr; }, std::move(act)});
}

// A window that comes to the front while a button of the mouse is down takes that from what is below it.
bool Person::IsFormInFront() const {
  forms::Form* form = forms::ActiveForm();
  FormWindow* window = form == nullptr ? nullptr : desktop_.WindowOf(*form);
  if (window == nullptr) return false;
  const Reference<css::awt::XWindow2> peer(window->peer(), UNO_QUERY);
  return peer.is() && peer->isActive();
}

void Person::Waits(std::string for_what, std::function<bool()> until) {
  steps_.push_back({std::move(for_what), std::move(until), [] {}});
}

void Person::Answers(const std::string& text, const std::string& button) {
  steps_.push_back({"answer " + text, [text, button] { return FindInBox(text, button).is(); },
                    [text, button] {
                      Reference<css::accessibility::XAccessibleAction>(FindInBox(text, button),
                                                                       UNO_QUERY_THROW)
                          ->doAccessibleAction(0);
                    }});
}

bool Person::IsBoxUp(const std::string& text) { return FindInBox(text, text).is(); }

void Person::Tick() {
  timer_ = loop_.StartTimer(kBetween, [this] { Tick(); });
  if (gave_up_ && forms::ActiveForm() != nullptr) return forms::ActiveForm()->Close();
  const bool waited_long = std::chrono::steady_clock::now() - last_done_ > kPatience;
  if (steps_.empty()) {
    if (forms::ActiveForm() != nullptr && waited_long) GiveUp("it does not end");
    return;
  }
  const std::string what = steps_.front().what;
  try {
    if (!steps_.front().ready()) {
      looked_ = 0;
      if (waited_long) GiveUp("it is not to be done: " + what);
    } else if (++looked_ > (IsFormInFront() ? kLooks : kLooksBehind)) {
      const Step step = std::move(steps_.front());
      steps_.pop_front();
      looked_ = 0;
      last_done_ = std::chrono::steady_clock::now();
      const ::testing::ScopedTrace trace(__FILE__, __LINE__, what);
      step.act();
    }
  } catch (const css::uno::Exception& failure) {
    GiveUp(what + ": " + calc::TextOf(failure.Message));
  } catch (const std::exception& failure) {
    GiveUp(what + ": " + failure.what());
  }
}

// Boxes are answered as carefully as can be, and whatever form comes up is closed.
void Person::GiveUp(const std::string& why) {
  ADD_FAILURE() << why << Report();
  steps_.clear();
  gave_up_ = true;
  for (const char* careful : {"No", "Abort", "OK"}) {
    const auto button = FindInBox(careful, careful);
    if (button.is())
      Reference<css::accessibility::XAccessibleAction>(button, UNO_QUERY_THROW)->doAccessibleAction(0);
  }
}

// What the form on top says of a failure.
std::string Person::Report() {
  const forms::Form* form = forms::ActiveForm();
  if (form == nullptr) return " (no form is up)";
  std::string report = " (" + form->Name() + " is up)";
  for (const forms::Control* control : form->Controls()) {
    const auto* box = dynamic_cast<const forms::TextBox*>(control);
    if (box != nullptr && box->MultiLine()) report += "\n" + box->Text();
  }
  return report;
}

FormWindow& Person::Window() const {
  forms::Form* form = forms::ActiveForm();
  FormWindow* window = form == nullptr ? nullptr : desktop_.WindowOf(*form);
  if (window == nullptr) throw std::runtime_error("no form is up");
  return *window;
}

const View& Person::Find(const std::string& name) const {
  for (const auto& view : Window().views().all()) {
    if (view->name == name) return *view;
  }
  throw std::runtime_error("no such view: " + name);
}

void Person::Click(const std::string& name) const {
  const css::awt::Rectangle place = Find(name).As<css::awt::XWindow>()->getPosSize();
  ClickAt(name, place.Width / 2, place.Height / 2);
}

void Person::ClickAt(const std::string& name, std::int32_t x, std::int32_t y) const {
  const View& view = Find(name);
  if (!IsShown(name)) throw std::runtime_error("cannot be seen: " + name);
  css::awt::MouseEvent event;
  event.Source = view.window->getPeer();
  event.Buttons = css::awt::MouseButton::LEFT;
  event.ClickCount = 1;
  event.X = x;
  event.Y = y;
  robot_->mousePress(event);
  robot_->mouseRelease(event);
}

void Person::Press(std::int16_t key, std::int16_t modifiers, char16_t letter) const {
  css::awt::KeyEvent event;
  event.Source = Window().peer();
  event.KeyCode = key;
  event.KeyChar = letter;
  event.Modifiers = modifiers;
  robot_->keyPress(event);
  robot_->keyRelease(event);
}

void Person::Type(const std::string& text) const {
  for (const char letter : text) Press(0, 0, static_cast<char16_t>(letter));
}

std::string Person::TextOf(const std::string& name) const {
  return calc::TextOf(Find(name).As<css::awt::XTextComponent>()->getText());
}

bool Person::IsShown(const std::string& name) const {
  return Find(name).As<css::awt::XWindow2>()->isVisible();
}

bool Person::HasFocus(const std::string& name) const {
  return Find(name).As<css::awt::XWindow2>()->hasFocus();
}

}  // namespace mirelo::calc
