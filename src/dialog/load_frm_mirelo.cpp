#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "automation/number.h"
#include "automation/runtime_error.h"
#include "automation/variant.h"
#include "core/cMirelo.h"
#include "core/mGlobal.h"
#include "diagnostics/routine.h"
#include "dialog/frmMirelo.h"
#include "host/desktop.h"
#include "host/host.h"

namespace mirelo {

namespace {

constexpr std::int32_t kNothingCommittedResult = 2;
constexpr double kCommittedToStream = 77;
constexpr double kCommitted = 78;

// Error 91 for a dialog that could not be made.
frmMirelo& Made(const std::unique_ptr<frmMirelo>& dialog) {
  if (!dialog) throw Errors::ObjectNotSet();
  return *dialog;
}

// In the grid's column of the tickers.
std::vector<std::string> TickersOf(const frmMirelo& dialog) {
  const std::int32_t column = dialog.chkVerTable.Value() == 0 ? 0 : 1;
  std::vector<std::string> tickers;
  if (column >= dialog.FG.Cols()) return tickers;
  for (std::int32_t row = 1; row < dialog.FG.Rows(); ++row)
    tickers.push_back(dialog.FG.TextMatrix(row, column));
  return tickers;
}

}  // namespace

std::int32_t cMirelo::LoadFrmMirelo() {
  std::unique_ptr<frmMirelo> dialog;  // it exists only while this runs, whichever way this ends
  return Function("Mirelo.cMirelo.LoadFrmMirelo", kNothingCommittedResult,
                  [&](Frame& frame, std::int32_t& result) {
                    STEP(dialog = std::make_unique<frmMirelo>());
                    STEP(Made(dialog).frmAppSettings(&mGlobal::AppSettings()));
                    STEP(Made(dialog).Owner(this));
                    STEP(host::Host::Current().desktop().ShowModal(Made(dialog)));

                    std::string tag;
                    STEP(tag = Made(dialog).Tag());
                    if (!tag.empty()) {
                      const double number = Val(tag);
                      if (number == kCommittedToStream || number == kCommitted) {
                        STEP(result = Variant(tag).ToInt32());
                        tickers_of_go_ = TickersOf(*dialog);
                      }
                    }
                    STEP(Made(dialog).Owner(nullptr));
                    STEP(Made(dialog).frmAppSettings(nullptr));
                    STEP(dialog.reset());
                    frame.pop();
                  });
}

}  // namespace mirelo
