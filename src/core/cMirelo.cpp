#include "core/cMirelo.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "automation/number.h"
#include "automation/runtime_error.h"
#include "automation/text.h"
#include "core/CAppSettings.h"
#include "core/known_setting.h"
#include "core/mGlobal.h"
#include "diagnostics/CErrorHandler.h"

namespace mirelo {

namespace {

constexpr std::int16_t kVerticalIndexIfNotListed = 2;

int living_facades = 0;

}  // namespace

cMirelo::cMirelo() {
  if (mGlobal::ServicesAreShared() && mGlobal::HasServices()) {
    ++living_facades;
    return;
  }
  mGlobal::SetErrorHandler(std::make_unique<CErrorHandler>());
  mGlobal::ErrorHandler().Init(CErrorHandler::ActionErrorForm, "Error Log.txt", true, false,
                               CErrorHandler::TraceLogFile, "Tracing Log.txt");
  mGlobal::SetAppSettings(std::make_unique<CAppSettings>());
  mGlobal::AppSettings().Init("Kestrin", "Dovanta2");
  ++living_facades;
}

// A stream that the timer's reference alone keeps must not outlive the facade that it asks for its state, nor
// the host that its connection runs on. The error handler goes last: whatever goes before it may still have
// to report.
cMirelo::~cMirelo() {
  mGlobal::SetStreamingObject(nullptr);
  if (--living_facades > 0 && mGlobal::ServicesAreShared()) return;
  mGlobal::SetAppSettings(nullptr);
  mGlobal::SetErrorHandler(nullptr);
}

int cMirelo::Living() { return living_facades; }

void cMirelo::ExcelApplication(const Variant& value) {
  const std::shared_ptr<Object>& object = value.AsObject();
  auto application = std::dynamic_pointer_cast<host::excel::Application>(object);
  if (object && !application) throw Errors::TypeMismatch();
  excel_ = std::move(application);
}

std::int16_t cMirelo::VerticalIndex() const {
  CAppSettings& settings = mGlobal::AppSettings();
  const std::string field = FacadeSetting("VerticalField").In(settings).ToText();
  const std::string list = FacadeSetting("ListRight").In(settings).ToText();

  std::int16_t index = kVerticalIndexIfNotListed;
  const std::vector<std::string> names = Split(list, ",");
  for (std::size_t i = 0; i < names.size(); ++i) {
    // The walk goes on behind a match, so the last duplicate wins. A place that the property's type cannot
    // hold is error 6.
    if (EqualText(names[i], field)) index = RoundToInt16(static_cast<double>(i + 1));
  }
  return index;
}

}  // namespace mirelo
