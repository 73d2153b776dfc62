// The list of quote sources in the settings dialog, and its refresh from QuoteTracker.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "automation/array.h"
#include "automation/text.h"
#include "automation/variant.h"
#include "core/CAppSettings.h"
#include "core/cMirelo.h"
#include "core/mGlobal.h"
#include "core/setting_names.h"
#include "core/status_run_query.h"
#include "diagnostics/routine.h"
#include "dialog/frmMirelo.h"
#include "streaming/cQTStreaming.h"
#include "streaming/first_sources.h"
#include "streaming/source_names.h"

namespace mirelo {

void frmMirelo::AddListQuoteSource(const std::string& selected) {
  Routine("Mirelo.frmMirelo.AddListQuoteSource", [&](Frame& frame) {
    Array<std::string> names;
    STEP(Store().GetAllKeys(catalogue::kSources, names));
    if (!names.IsAllocated()) {
      for (const QuoteSourceRow& row : kFirstSources) {
        STEP(Store().SaveSetting(catalogue::kSources, row.text, Variant(row.file)));
      }
      STEP(Store().SaveSetting(catalogue::kFirstSource, catalogue::kFirstSourceKey,
                               Variant(kFirstSourceText)));
      STEP(Store().GetAllKeys(catalogue::kSources, names));
    }

    const std::string wanted(Trim(selected));
    std::optional<std::string> found;
    STEP(ComQuoteSource.Clear());
    for (const std::int32_t i : frame.loop([&] { return Bounds{names.LBound(), names.UBound()}; })) {
      if (frame.test([&] { return !wanted.empty() && IsSameSource(names(i), wanted); })) {
        STEP(found = names(i));
      }
      STEP(ComQuoteSource.AddItem(names(i)));
    }
    if (found) {
      STEP(ComQuoteSource.Text(*found));
    } else {
      // Not the catalogue's default: a first run has just stored that, and beside a list that was stored
      // without a choice the person is to make one.
      STEP(ComQuoteSource.Text(
          Store().GetSetting(catalogue::kFirstSource, catalogue::kFirstSourceKey, "").ToText()));
    }
    frame.pop();
  });
}

// Only starts the refresh; the stream's events bring the rest.
void frmMirelo::ButUpDate_Click() {
  Routine("Mirelo.frmMirelo.ButUpDate_Click", [&](Frame& frame) {
    STEP(lblStatus.Caption(""));
    STEP(EventQTSt(std::make_shared<cQTStreaming>()));
    // Another refresh may begin while connect shows a message.
    const std::shared_ptr<cQTStreaming> stream = EventQTSt_;
    STEP(mGlobal::SetStreamingObject(stream));
    STEP(Referred(stream.get()).Owner(&Facade()));
    STEP(Facade().StatusRunWorkQT(Status_ENUMSOURCES_L1));
    STEP(Referred(stream.get()).connect());
    frame.pop();
  });
}

void frmMirelo::EventQTSt_OnStatusText(const std::string& text) {
  Routine("Mirelo.frmMirelo.EventQTSt_OnStatusText", [&](Frame& frame) {
    STEP(lblStatus.Caption(text));
    frame.pop();
  });
}

void frmMirelo::EventQTSt_PerformanceFollowingProcess(std::int16_t process) {
  constexpr std::int16_t kEnd = 0;
  constexpr std::int16_t kSourcesStored = 1;
  Routine("Mirelo.frmMirelo.EventQTSt_PerformanceFollowingProcess", [&](Frame& frame) {
    if (process == kEnd || process == kSourcesStored) {
      STEP(Referred(EventQTSt_.get()).DisConnect());
      STEP(mGlobal::SetStreamingObject(nullptr));
      STEP(EventQTSt(nullptr));
    }
    if (process == kSourcesStored) STEP(AddListQuoteSource(""));
    frame.pop();
  });
}

void frmMirelo::EventQTSt(std::shared_ptr<cQTStreaming> stream) {
  if (EventQTSt_) {
    EventQTSt_->OnStatusText.Unsubscribe(OnStatusTextCookie_);
    EventQTSt_->PerformanceFollowingProcess.Unsubscribe(PerformanceFollowingProcessCookie_);
  }
  EventQTSt_ = std::move(stream);
  if (!EventQTSt_) return;
  OnStatusTextCookie_ =
      EventQTSt_->OnStatusText.Subscribe([this](const std::string& text) { EventQTSt_OnStatusText(text); });
  PerformanceFollowingProcessCookie_ = EventQTSt_->PerformanceFollowingProcess.Subscribe(
      [this](std::int16_t process) { EventQTSt_PerformanceFollowingProcess(process); });
}

}  // namespace mirelo
