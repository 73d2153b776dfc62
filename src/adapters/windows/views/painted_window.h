#pragma once

#include "adapters/windows/views/native.h"

#include <memory>
#include <optional>

namespace mirelo::windows {

// A window whose look and input are ours, for what Windows has no control for. Whoever makes one hands it to
// CreateWindow as its parameter, under the name of the class below.
class PaintedWindow {
 public:
  static constexpr const wchar_t* kClass = L"MireloPainted";

  virtual ~PaintedWindow() = default;
  // What to answer to a message; nothing for Windows' own answer.
  virtual std::optional<LRESULT> Handle(UINT message, WPARAM first, LPARAM second) = 0;

  HWND window() const { return window_; }

 protected:
  void Repaint() const { ::InvalidateRect(window_, nullptr, FALSE); }
  RECT Room() const;

 private:
  friend class PaintedClass;
  HWND window_ = nullptr;
};

// The class of such windows is known to Windows while this lives. The library may be unloaded afterwards.
class PaintedClass {
 public:
  static std::shared_ptr<PaintedClass> Known();
  PaintedClass();
  ~PaintedClass();
  PaintedClass(const PaintedClass&) = delete;
  PaintedClass& operator=(const PaintedClass&) = delete;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second);
};

// Paints a window, or a part of it, without flickering: what is drawn is seen at once.
class Painting {
 public:
  explicit Painting(HWND window);
  ~Painting();
  Painting(const Painting&) = delete;
  Painting& operator=(const Painting&) = delete;
  HDC context() const { return drawn_; }
  const RECT& room() const { return room_; }

 private:
  HWND window_;
  PAINTSTRUCT paint_{};
  RECT room_{};
  HDC drawn_;
  HBITMAP bitmap_;
  HGDIOBJ former_;
};

// Paints a rectangle in one colour.
void Fill(HDC context, const RECT& place, COLORREF color);

// The module that this code is in: a program or a library.
HINSTANCE OwnModule();

}  // namespace mirelo::windows
