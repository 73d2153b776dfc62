// The list of quote sources in the settings dialog, and its refresh from QuoteTracker.

#include <memory>
#include <string>
#include <utility>

#include "dialog/frmMirelo.h"
#include "streaming/cQTStreaming.h"

namespace mirelo {

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
