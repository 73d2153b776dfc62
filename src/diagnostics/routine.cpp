#include "diagnostics/routine.h"

#include <cstdint>
#include <string_view>

#include "automation/runtime_error.h"
#include "core/mGlobal.h"
#include "diagnostics/CErrorHandler.h"

namespace mirelo {

Frame::Frame(std::string_view name) {
  step([&] { mGlobal::ErrorHandler().CallStackPush(name, ""); });
}

void Frame::pop() {
  step([] { mGlobal::ErrorHandler().CallStackPop(); });
}

bool Frame::AskWhetherToRetry() {
  try {
    const std::int32_t result = mGlobal::ErrorHandler().HandleError("");
    if (result == CErrorHandler::ResultRetry) return true;
    if (result == CErrorHandler::ResultIgnore) return false;
    mGlobal::ErrorHandler().CallStackClear();
  } catch (...) {
    throw Exit{CurrentError()};
  }
  throw Exit{};
}

void Frame::RaiseErrorOf(const Exit& exit) {
  if (exit.error) throw *exit.error;
}

}  // namespace mirelo
