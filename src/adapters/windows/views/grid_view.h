#pragma once

#include "adapters/windows/views/native.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "adapters/windows/views/grid_places.h"
#include "adapters/windows/views/painted_window.h"
#include "adapters/windows/views/pictures.h"
#include "adapters/windows/views/views.h"
#include "adapters/windows/views/window_watch.h"
#include "forms/grid.h"

namespace mirelo::windows {

// A grid as it is seen and used: cells are selected by clicks, by dragging and by the arrow keys, ticked by
// clicks and the blank key, and typed into; edges of headers are dragged. Windows has no such control.
class GridView final : public PaintedWindow {
 public:
  using Cell = GridPlaces::Cell;

  GridView(forms::Grid& grid, Views& views, std::vector<std::int32_t> usual_widths);

  std::optional<LRESULT> Handle(UINT message, WPARAM first, LPARAM second) override;
  // Enter and Escape while a cell is being typed into.
  bool TakeKey(WPARAM key);
  // Has what changed be seen when the thread takes its next message: a routine that fills a thousand cells is
  // not slowed down a thousand times.
  void Invalidate();

  // Where the cells are just now.
  GridPlaces Places() const;
  // The window that a cell is typed into; null while none is.
  HWND editor() const { return editor_; }

 private:
  static constexpr UINT kUpdate = WM_APP + 3;

  void Update();
  void Press(std::int32_t x, std::int32_t y);
  void Move(std::int32_t x, std::int32_t y);
  void Release();
  void DoublePress(std::int32_t x, std::int32_t y);
  bool ShowCursor() const;
  bool Key(WPARAM key);
  std::optional<Cell> Reached(WPARAM key, Cell from) const;
  void Scroll(int bar, int code);
  void Turn(int steps);
  void ShowScrollBars() const;

  bool Edit(wchar_t typed);
  void EndEdit(bool keep);
  // Whoever goes elsewhere has typed what is to be.
  class EditorWatch final : public WindowWatch {
   public:
    explicit EditorWatch(GridView& grid) : grid_(grid) {}
    void Seen(HWND, UINT message) override {
      if (message == WM_KILLFOCUS) grid_.EndEdit(true);
    }

   private:
    GridView& grid_;
  };

  void Paint();
  void PaintCell(HDC context, const GridPlaces& places, Cell cell);
  void PaintHeader(HDC context, RECT place, const std::string& text) const;
  void PaintTick(HDC context, RECT place, bool ticked, const std::string& picture);
  void DrawPicture(HDC context, const RECT& place, const std::string& picture);
  bool IsSelected(Cell cell) const;
  bool IsFixed(Cell cell) const;

  std::int32_t WidthOf(std::int32_t col) const;
  void Act(const std::function<void()>& act);

  forms::Grid& grid_;
  Views& views_;
  const std::vector<std::int32_t> usual_widths_;
  std::int32_t first_row_ = 0;
  std::int32_t offset_ = 0;
  bool out_of_date_ = false;
  Cell shown_active_;
  std::optional<Cell> pressed_;
  Cell dragged_to_;
  struct Resize {
    std::int32_t col;
    std::int32_t from;   // where the mouse took it
    std::int32_t width;  // before
  };
  std::optional<Resize> resize_;
  HWND editor_ = nullptr;
  EditorWatch editor_watch_{*this};
  std::map<std::string, Icon> icons_;
};

}  // namespace mirelo::windows
