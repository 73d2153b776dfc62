#include "adapters/calc/views/views.h"

#include <algorithm>
#include <cmath>
#include <com/sun/star/awt/PosSize.hpp>
#include <com/sun/star/awt/XLayoutConstrains.hpp>
#include <com/sun/star/awt/XWindow.hpp>
#include <com/sun/star/container/XNameContainer.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <string_view>
#include <utility>

#include "adapters/calc/objects/office_text.h"
#include "adapters/calc/office_loop.h"
#include "adapters/calc/views/failure.h"
#include "forms/layout/measures.h"
#include "host/window_placement.h"

namespace mirelo::calc {

using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;
using forms::layout::Box;
using forms::layout::Extent;
using forms::layout::Place;

namespace {

constexpr int kMeasuredLetters = 10;

// What a person sees of the control, though it may stand on a page that is not in front.
bool IsThere(const forms::Control* control) { return control == nullptr || control->Visible(); }

bool IsOnFront(const forms::Control* control) {
  for (; control != nullptr; control = control->Parent()) {
    if (!control->Visible()) return false;
    if (control->Parent() != nullptr && !control->Parent()->Shows(*control)) return false;
  }
  return true;
}

bool IsEnabled(const forms::Control* control) {
  for (; control != nullptr; control = control->Parent()) {
    if (!control->Enabled()) return false;
  }
  return true;
}

bool Holds(const forms::Control& holder, const forms::Control* control) {
  for (; control != nullptr; control = control->Parent()) {
    if (control == &holder) return true;
  }
  return false;
}

}  // namespace

void View::SetText(const char* property, const std::string& text) const { Set(property, OfficeText(text)); }

Views::Views(const Reference<css::uno::XComponentContext>& context, OfficeLoop& loop,
             const Reference<css::uno::XInterface>& window_model)
    : context_(context), loop_(loop), window_model_(window_model), graphics_(context) {
  View& measure = Add("FixedText", nullptr, ":letters");
  measure.SetText("Label", std::string(kMeasuredLetters, '0'));
  measure_ = &measure;
  View& line = Add("Edit", nullptr, ":line");
  line.Set("Tabstop", false);
  line_ = &line;
}

View& Views::Add(const char* kind, forms::Control* control, const std::string& name) {
  const Reference<css::lang::XMultiServiceFactory> models(window_model_, UNO_QUERY_THROW);
  const Reference<css::container::XNameContainer> content(window_model_, UNO_QUERY_THROW);
  const std::string module = std::string_view(kind) == "Grid" ? "grid." : "";
  const std::string service = "com.sun.star.awt." + module + "UnoControl" + kind + "Model";
  const Reference<css::beans::XPropertySet> model(models->createInstance(OfficeText(service)),
                                                  UNO_QUERY_THROW);
  views_.push_back(std::make_unique<View>(View{name, control, page, model}));
  View& view = *views_.back();
  view.Set("TabIndex", static_cast<sal_Int16>(views_.size()));
  content->insertByName(OfficeText(name),
                        css::uno::Any(Reference<css::awt::XControlModel>(model, UNO_QUERY_THROW)));
  return view;
}

void Views::Connect(const Reference<css::awt::XControlContainer>& window) {
  for (const auto& view : views_) {
    view->window = window->getControl(OfficeText(view->name));
    if (view->connect) view->connect();
  }
  for (const View* view : {measure_, line_}) view->As<css::awt::XWindow>()->setVisible(false);
  ShowAll();
}

void Views::ShowAll() const {
  for (const auto& view : views_) Show(*view);
}

void Views::ShowControl(const forms::Control& control) const {
  for (const auto& view : views_) {
    const forms::Control* const shown = view->control != nullptr ? view->control : view->page;
    if (view->control == &control || (!control.Children().empty() && Holds(control, shown))) Show(*view);
  }
}

// The window may go at any time, with the document that it lies above.
void Views::Show(const View& view) const {
  if (view.control == nullptr && view.page == nullptr && !view.show) return;
  try {
    if (view.show) view.show();
    if (view.control != nullptr) {
      view.SetText("HelpText", view.control->ToolTipText());
      view.Set("Enabled", IsEnabled(view.control));
    }
    if (!view.window.is()) return;
    view.As<css::awt::XWindow>()->setVisible(IsOnFront(view.control != nullptr ? view.control : view.page));
  } catch (const css::lang::DisposedException&) {
  } catch (const css::uno::Exception& failure) {
    throw ToolkitFailed(failure);
  }
}

void Views::Act(const View& view, const std::function<void()>& act) const {
  const std::weak_ptr<const bool> living = living_;
  OfficeLoop& loop = loop_;
  loop.Guard(act);
  if (!living.expired()) loop.Guard([&] { Show(view); });
}

// What fails in the office goes back there: most often the window goes just now, and whoever tells of it
// knows.
void Views::HearAtTheBorder(OfficeLoop& loop, const std::function<void()>& act) {
  std::exception_ptr of_the_office;
  loop.Guard([&] {
    try {
      act();
    } catch (const css::uno::Exception&) {
      of_the_office = std::current_exception();
    }
  });
  if (of_the_office) std::rethrow_exception(of_the_office);
}

const View* Views::ViewOf(const forms::Control* control) const {
  if (control == nullptr) return nullptr;
  const auto view = std::ranges::find_if(views_, [&](const auto& any) { return any->control == control; });
  return view == views_.end() ? nullptr : view->get();
}

Extent Views::Preferred(const View& view) {
  const Reference<css::awt::XLayoutConstrains> window(view.window->getPeer(), UNO_QUERY_THROW);
  const css::awt::Size size = window->getPreferredSize();
  return {size.Width, size.Height};
}

Box Views::BoxOf(const View& view) const {
  return BoxOf(view, [&view] { return Preferred(view); });
}

Box Views::BoxOf(const View& view, std::function<Extent()> needs) const {
  Box box{.kind = Box::Kind::Leaf};
  box.needs = std::move(needs);
  box.seen = [&view] { return IsThere(view.control); };
  box.put = [&view](const Place& place) {
    view.As<css::awt::XWindow>()->setPosSize(place.left, place.top, place.width, place.height,
                                             css::awt::PosSize::POSSIZE);
  };
  return box;
}

std::int32_t Views::LetterWidth() const {
  return std::max(1, (Preferred(*measure_).width + kMeasuredLetters - 1) / kMeasuredLetters);
}

std::int32_t Views::LineHeight() const { return Preferred(*line_).height; }

std::int32_t Views::PixelsOf(std::int32_t twips) const {
  return static_cast<std::int32_t>(
      std::lround(twips * forms::layout::GrowthFor(LetterWidth()) / host::kTwipsPerPixel));
}

std::int32_t Views::TwipsOf(std::int32_t pixels) const {
  return static_cast<std::int32_t>(
      std::lround(pixels * host::kTwipsPerPixel / forms::layout::GrowthFor(LetterWidth())));
}

}  // namespace mirelo::calc
