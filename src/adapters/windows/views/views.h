#pragma once

#include "adapters/windows/views/native.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapters/windows/views/lettering.h"
#include "adapters/windows/views/painted_window.h"
#include "adapters/windows/views/window_watch.h"
#include "forms/control.h"
#include "forms/layout/boxes.h"

namespace mirelo::windows {

class WindowLoop;

// What Windows shows of a control of a form: a window of its own in the form's. A control may have several
// views; words of a layout have one and are no control.
struct View {
  forms::Control* control;     // null for words
  const forms::Control* page;  // the panel that it stands on; null for the form itself
  HWND window;
  bool is_bold = false;

  std::function<void()> show = {};                       // brings the window into line with the control
  std::function<void(int code)> command = {};            // what the window notifies of by WM_COMMAND,
  std::function<LRESULT(const NMHDR&)> notify = {};      // by WM_NOTIFY
  std::function<void(int code, int place)> scroll = {};  // and by WM_VSCROLL
  // A key that was pressed in the window before the form looks at it; true when it is done with.
  std::function<bool(WPARAM key)> take_key = {};
  // A letter that was pressed with Alt, for windows whose marked letters Windows does not know.
  std::function<bool(wchar_t letter)> take_letter = {};
  // Ctrl+Tab, which goes on by one, and with the shift key back.
  std::function<void(int step)> take_turn = {};
  std::function<std::optional<COLORREF>()> ground = {};  // nothing for the usual one
  std::function<std::string()> tool_tip = {};            // in place of the control's
  std::shared_ptr<PaintedWindow> painted = {};
};

// The views of a form's window.
class Views {
 public:
  // A control's window has this number plus the control's index in the form. Windows that are no controls
  // have no number.
  static constexpr int kFirstNumber = 1000;
  // What a view has the form's window send itself, to show it once more when Windows is done with it.
  static constexpr UINT kShowAgain = WM_APP + 1;

  Views(HWND form, WindowLoop& loop);
  ~Views();
  Views(const Views&) = delete;
  Views& operator=(const Views&) = delete;

  // A view with a window of that class of Windows', behind all others in the order of the Tab key.
  View& Add(const wchar_t* window_class, DWORD style, DWORD extended_style, forms::Control* control);
  // One whose look and input are ours.
  View& Add(std::shared_ptr<PaintedWindow> painted, DWORD style, forms::Control* control);

  void MakeBold(View& view) const;

  // What is added from now on stands on this panel.
  const forms::Control* page = nullptr;
  // What a screen reader calls the window that is added next.
  std::string called;
  // Asks the person a question above the window, with No as the button that Enter presses; true for yes.
  std::function<bool(const std::string& question)> ask;
  // The person has moved the focus to a view.
  std::function<void(const View&)> focused;

  void ShowAll() const;
  // What is seen of a control; of one that holds others, of these too.
  void ShowControl(const forms::Control& control) const;
  void Show(const View& view) const;
  // Later, when Windows has done what it does behind a notification.
  void ShowAgain(const View& view) const;
  // In the letters of the screen that the window is on now.
  void UseLettering(unsigned dots_per_inch);

  // For what Windows tells: runs what a person's action is to the control, then shows the control as it is
  // now. It may have refused what its window shows already.
  void Act(const View& view, const std::function<void()>& act) const;

  // Null for what has none.
  const View* ViewOf(const forms::Control* control) const;
  // The view whose window this is or lies in; null for none.
  const View* ViewAt(HWND window) const;
  const std::vector<std::unique_ptr<View>>& all() const { return views_; }

  // The place of a view in a layout.
  forms::layout::Box BoxOf(const View& view, std::function<forms::layout::Extent()> needs) const;

  HWND form() const { return form_; }
  const Lettering& letters() const { return *letters_; }
  WindowLoop& loop() const { return loop_; }

 private:
  View& Add(const wchar_t* window_class, DWORD style, DWORD extended_style, forms::Control* control,
            void* parameter);
  void AddUnseenWords(const std::string& text) const;
  void ShowToolTip(const View& view) const;
  // Tells of the windows that get the focus.
  class FocusWatch final : public WindowWatch {
   public:
    explicit FocusWatch(const Views& views) : views_(views) {}
    void Seen(HWND window, UINT message) override;

   private:
    const Views& views_;
  };

  HWND form_;
  WindowLoop& loop_;
  std::unique_ptr<Lettering> letters_;
  HWND tool_tips_ = nullptr;
  FocusWatch focus_watch_{*this};
  std::shared_ptr<PaintedClass> painted_class_ = PaintedClass::Known();
  std::vector<std::unique_ptr<View>> views_;
  std::shared_ptr<const bool> living_ = std::make_shared<const bool>(true);
};

// What a window says, and has it say something else, where that differs.
std::string TextOf(HWND window);
void SetText(HWND window, const std::string& text);

}  // namespace mirelo::windows
