// The ends of the dialog: what each of its buttons leaves behind.

#include <cstdint>
#include <memory>
#include <string>

#include "automation/number.h"
#include "core/mGlobal.h"
#include "diagnostics/CFormRestore.h"
#include "diagnostics/routine.h"
#include "diagnostics/skipping_frame.h"
#include "dialog/column_widths.h"
#include "dialog/frmMirelo.h"
#include "streaming/cQTStreaming.h"

namespace mirelo {

namespace {

constexpr const char* kNothingCommitted = "2";

// Its statements are the calling routine's.
void SavePlacement(Frame& frame, std::unique_ptr<CFormRestore>& placement, forms::Form& form) {
  STEP(Referred(placement.get()).SavePosition(form));
  STEP(placement.reset());
}

}  // namespace

void frmMirelo::Form_Load() {
  Routine("Mirelo.frmMirelo.Form_Load", [&](Frame& frame) {
    STEP(Placement_ = std::make_unique<CFormRestore>());
    STEP(Referred(Placement_.get()).Init(frmAppSettings_, true));
    STEP(Referred(Placement_.get()).GetPosition(*this));
    STEP(ReloadOnActivate_ = true);
    frame.pop();
  });
}

void frmMirelo::ButGo_Click() {
  Routine("Mirelo.frmMirelo.ButGo_Click", [&](Frame& frame) {
    if (frame.test([&] { return save_settings_and_create_table(true); })) {
      SavePlacement(frame, Placement_, *this);
      frame.ignore_failures();
      TearDownStream();
      STEP(Hide());
      STEP(Tag(NumberText(ResultTag_)));
    }
    frame.pop();
  });
}

void frmMirelo::ButClose_Click() {
  Routine("Mirelo.frmMirelo.ButClose_Click", [&](Frame& frame) {
    StoreColumnWidths(frame, *this);
    SavePlacement(frame, Placement_, *this);
    frame.ignore_failures();
    TearDownStream();
    STEP(Hide());
    STEP(Tag(kNothingCommitted));
    frame.pop();
  });
}

void frmMirelo::ButCancel_Click() {
  Routine("Mirelo.frmMirelo.ButCancel_Click", [&](Frame& frame) {
    frame.ignore_failures();
    TearDownStream();
    STEP(Hide());
    STEP(Tag(kNothingCommitted));
    frame.pop();
  });
}

void frmMirelo::Form_Unload() {
  Routine("Mirelo.frmMirelo.Form_Unload", [&](Frame& frame) {
    frame.ignore_failures();
    TearDownStream();
    STEP(Hide());
    STEP(Tag(kNothingCommitted));
    frame.pop();
  });
}

void frmMirelo::TearDownStream() {
  SkippingFailures([&](SkippingFrame& frame) {
    const std::shared_ptr<cQTStreaming> stream = EventQTSt_;
    if (!stream) return;
    STEP(stream->DisConnect());
    STEP(stream->Owner(nullptr));
    STEP(mGlobal::SetStreamingObject(nullptr));
    STEP(EventQTSt(nullptr));
  });
}

}  // namespace mirelo
