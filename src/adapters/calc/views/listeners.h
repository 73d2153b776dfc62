#pragma once

// The office's listeners as functions of ours. A listener that is told that its source goes does nothing: who
// made it knows.

#include <com/sun/star/awt/XActionListener.hpp>
#include <com/sun/star/awt/XAdjustmentListener.hpp>
#include <com/sun/star/awt/XFocusListener.hpp>
#include <com/sun/star/awt/XItemListener.hpp>
#include <com/sun/star/awt/XKeyListener.hpp>
#include <com/sun/star/awt/XMouseListener.hpp>
#include <com/sun/star/awt/XTextListener.hpp>
#include <com/sun/star/awt/XTopWindowListener.hpp>
#include <com/sun/star/awt/XWindowListener.hpp>
#include <com/sun/star/awt/grid/XGridColumnListener.hpp>
#include <com/sun/star/util/XCloseListener.hpp>
#include <cppuhelper/implbase1.hxx>
#include <functional>
#include <utility>

namespace mirelo::calc {

namespace css = com::sun::star;

template <class Interface, class... Arguments>
class Listener : public cppu::WeakImplHelper1<Interface> {
 public:
  using Act = std::function<void(const Arguments&...)>;
  explicit Listener(Act act) : act_(std::move(act)) {}
  void SAL_CALL disposing(const css::lang::EventObject&) override {}

 protected:
  Act act_;
};

struct OnAction final : Listener<css::awt::XActionListener, css::awt::ActionEvent> {
  using Listener::Listener;
  void SAL_CALL actionPerformed(const css::awt::ActionEvent& event) override { act_(event); }
};

struct OnItem final : Listener<css::awt::XItemListener, css::awt::ItemEvent> {
  using Listener::Listener;
  void SAL_CALL itemStateChanged(const css::awt::ItemEvent& event) override { act_(event); }
};

struct OnText final : Listener<css::awt::XTextListener, css::awt::TextEvent> {
  using Listener::Listener;
  void SAL_CALL textChanged(const css::awt::TextEvent& event) override { act_(event); }
};

struct OnAdjustment final : Listener<css::awt::XAdjustmentListener, css::awt::AdjustmentEvent> {
  using Listener::Listener;
  void SAL_CALL adjustmentValueChanged(const css::awt::AdjustmentEvent& event) override { act_(event); }
};

struct OnFocus final : Listener<css::awt::XFocusListener, css::awt::FocusEvent> {
  using Listener::Listener;
  void SAL_CALL focusGained(const css::awt::FocusEvent& event) override { act_(event); }
  void SAL_CALL focusLost(const css::awt::FocusEvent&) override {}
};

struct OnPress final : Listener<css::awt::XMouseListener, css::awt::MouseEvent> {
  using Listener::Listener;
  void SAL_CALL mousePressed(const css::awt::MouseEvent& event) override { act_(event); }
  void SAL_CALL mouseReleased(const css::awt::MouseEvent&) override {}
  void SAL_CALL mouseEntered(const css::awt::MouseEvent&) override {}
  void SAL_CALL mouseExited(const css::awt::MouseEvent&) override {}
};

struct OnRelease final : Listener<css::awt::XMouseListener, css::awt::MouseEvent> {
  using Listener::Listener;
  void SAL_CALL mousePressed(const css::awt::MouseEvent&) override {}
  void SAL_CALL mouseReleased(const css::awt::MouseEvent& event) override { act_(event); }
  void SAL_CALL mouseEntered(const css::awt::MouseEvent&) override {}
  void SAL_CALL mouseExited(const css::awt::MouseEvent&) override {}
};

// Keys of one window: when they are pressed, and when what they do is done.
class OnKeys final : public cppu::WeakImplHelper1<css::awt::XKeyListener> {
 public:
  using Act = std::function<void(const css::awt::KeyEvent&)>;
  OnKeys(Act pressed, Act released) : pressed_(std::move(pressed)), released_(std::move(released)) {}
  void SAL_CALL keyPressed(const css::awt::KeyEvent& event) override { pressed_(event); }
  void SAL_CALL keyReleased(const css::awt::KeyEvent& event) override { released_(event); }
  void SAL_CALL disposing(const css::lang::EventObject&) override {}

 private:
  Act pressed_;
  Act released_;
};

struct OnColumn final : Listener<css::awt::grid::XGridColumnListener, css::awt::grid::GridColumnEvent> {
  using Listener::Listener;
  void SAL_CALL columnChanged(const css::awt::grid::GridColumnEvent& event) override { act_(event); }
};

struct OnResize final : Listener<css::awt::XWindowListener, css::awt::WindowEvent> {
  using Listener::Listener;
  void SAL_CALL windowResized(const css::awt::WindowEvent& event) override { act_(event); }
  void SAL_CALL windowMoved(const css::awt::WindowEvent&) override {}
  void SAL_CALL windowShown(const css::lang::EventObject&) override {}
  void SAL_CALL windowHidden(const css::lang::EventObject&) override {}
};

// What asks a window to close.
struct OnCloseBox final : Listener<css::awt::XTopWindowListener, css::lang::EventObject> {
  using Listener::Listener;
  void SAL_CALL windowOpened(const css::lang::EventObject&) override {}
  void SAL_CALL windowClosing(const css::lang::EventObject& event) override { act_(event); }
  void SAL_CALL windowClosed(const css::lang::EventObject&) override {}
  void SAL_CALL windowMinimized(const css::lang::EventObject&) override {}
  void SAL_CALL windowNormalized(const css::lang::EventObject&) override {}
  void SAL_CALL windowActivated(const css::lang::EventObject&) override {}
  void SAL_CALL windowDeactivated(const css::lang::EventObject&) override {}
};

}  // namespace mirelo::calc
