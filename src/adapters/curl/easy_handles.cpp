#include "adapters/curl/easy_handles.h"

#include <cstddef>
#include <new>

namespace mirelo::curl {

namespace {

constexpr std::size_t kMostSpare = 4;

}  // namespace

EasyHandles::Handle EasyHandles::Take() {
  CURL* easy = nullptr;
  if (spare_.empty()) {
    easy = curl_easy_init();
    if (easy == nullptr) throw std::bad_alloc();
    spare_.reserve(kMostSpare);  // so that giving it back cannot fail
  } else {
    easy = spare_.back().release();
    spare_.pop_back();
  }
  return Handle(easy, GiveBack(this));
}

void EasyHandles::Keep(CURL* easy) {
  if (spare_.size() == kMostSpare) return curl_easy_cleanup(easy);
  curl_easy_reset(easy);
  spare_.emplace_back(easy);
}

}  // namespace mirelo::curl
