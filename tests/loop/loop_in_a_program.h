#pragma once

#include <chrono>
#include <exception>
#include <functional>
#include <utility>

#include "adapters/windows/window_loop.h"

namespace mirelo {

// The loop in a program of Windows, made as the other loops are.
class LoopInAProgram : public windows::WindowLoop {
 public:
  explicit LoopInAProgram(std::function<Time()> now = std::chrono::steady_clock::now)
      : WindowLoop([](const std::exception_ptr&) { std::terminate(); }, std::move(now)) {}
};

}  // namespace mirelo
