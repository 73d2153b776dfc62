#pragma once

#include <com/sun/star/awt/XControl.hpp>
#include <com/sun/star/awt/XControlContainer.hpp>
#include <com/sun/star/awt/XControlModel.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "adapters/calc/views/graphics.h"
#include "forms/control.h"
#include "forms/layout/boxes.h"

namespace mirelo::calc {

namespace css = com::sun::star;

class OfficeLoop;

// What the office shows of a control of a form: the model that says how it looks, and its window once the
// form's is there. A control may have several views, as a strip of tabs has its buttons; words of a layout
// have one and are no control.
struct View {
  std::string name;            // in the form's window
  forms::Control* control;     // null for words
  const forms::Control* page;  // the panel that it stands on; null for the form itself
  css::uno::Reference<css::beans::XPropertySet> model;
  css::uno::Reference<css::awt::XControl> window = {};  // null before there is one
  std::function<void()> show = {};                      // brings the model into line with the control
  std::function<void()> connect = {};                   // begins to listen to the window

  template <class Value>
  void Set(const char* property, const Value& value) const {
    model->setPropertyValue(rtl::OUString::createFromAscii(property), css::uno::Any(value));
  }
  void Unset(const char* property) const {
    model->setPropertyValue(rtl::OUString::createFromAscii(property), css::uno::Any());
  }
  template <class Value>
  Value Get(const char* property) const {
    return model->getPropertyValue(rtl::OUString::createFromAscii(property)).template get<Value>();
  }
  void SetText(const char* property, const std::string& text) const;
  template <class Interface>
  css::uno::Reference<Interface> As() const {
    return {window, css::uno::UNO_QUERY_THROW};
  }
};

// The views of a form's window. Models are mirrored on their windows by the office.
class Views {
 public:
  Views(const css::uno::Reference<css::uno::XComponentContext>& context, OfficeLoop& loop,
        const css::uno::Reference<css::uno::XInterface>& window_model);
  Views(const Views&) = delete;
  Views& operator=(const Views&) = delete;

  // A view of that kind of the office's ("Button"), behind all others in the order of the Tab key.
  View& Add(const char* kind, forms::Control* control, const std::string& name);
  // What is added from now on stands on this panel.
  const forms::Control* page = nullptr;

  // Asks the person a question above the window; true for yes.
  std::function<bool(const std::string& question)> ask;
  // Whether buttons can be pressed. The office tells of a press later: by then the one before it may have
  // hidden the form, or wait for the answer to a box above it.
  std::function<bool()> can_press = [] { return true; };
  // The key that was pressed last, or 0.
  sal_Int16 last_key = 0;

  // Windows of the models, and from now on what a person does to them.
  void Connect(const css::uno::Reference<css::awt::XControlContainer>& window);

  void ShowAll() const;
  // What is seen of a control; of one that holds others, of these too.
  void ShowControl(const forms::Control& control) const;

  // For listeners: runs what a person's action is to the control, then shows the control as it is now. It may
  // have refused what its window shows already. Errors go to the loop.
  void Act(const View& view, const std::function<void()>& act) const;
  // A function that does nothing any more once the views are gone.
  template <class Act>
  auto Living(Act act) const {
    return [living = std::weak_ptr<const bool>(living_), act = std::move(act)](const auto& event) {
      if (!living.expired()) act(event);
    };
  }

  // The same for listeners of the office's, and nothing else of ours leaves it but through the loop: this is
  // the border of the views.
  template <class Act>
  auto Heard(Act act) const {
    return Living([&loop = loop_, act = std::move(act)](const auto& event) {
      HearAtTheBorder(loop, [&] { act(event); });
    });
  }

  // Null for what has none.
  const View* ViewOf(const forms::Control* control) const;
  const std::vector<std::unique_ptr<View>>& all() const { return views_; }

  // The place of a view in a layout: as large as the office wants it, or as `needs` says.
  forms::layout::Box BoxOf(const View& view) const;
  forms::layout::Box BoxOf(const View& view, std::function<forms::layout::Extent()> needs) const;
  static forms::layout::Extent Preferred(const View& view);

  // On average, and the height of a box with one line of text. Pixels, once there are windows.
  std::int32_t LetterWidth() const;
  std::int32_t LineHeight() const;
  // Forms are designed in twips, for letters of six pixels.
  std::int32_t PixelsOf(std::int32_t twips) const;
  std::int32_t TwipsOf(std::int32_t pixels) const;

  OfficeLoop& loop() const { return loop_; }
  Graphics& graphics() { return graphics_; }
  const css::uno::Reference<css::uno::XComponentContext>& context() const { return context_; }

 private:
  static void HearAtTheBorder(OfficeLoop& loop, const std::function<void()>& act);
  void Show(const View& view) const;

  css::uno::Reference<css::uno::XComponentContext> context_;
  OfficeLoop& loop_;
  css::uno::Reference<css::uno::XInterface> window_model_;
  Graphics graphics_;
  std::vector<std::unique_ptr<View>> views_;
  const View* measure_;  // never seen: ten letters, and
  const View* line_;     // a box for text
  std::shared_ptr<const bool> living_ = std::make_shared<const bool>(true);
};

}  // namespace mirelo::calc
