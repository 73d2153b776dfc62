#pragma once

#include <curl/curl.h>

#include <memory>
#include <vector>

namespace mirelo::curl {

// Handles for transfers. Those that are done are kept for later ones, since a handle costs more to make than
// a request to describe. A kept one still knows what it was told, so that whoever takes one tells it
// everything in which requests differ.
class EasyHandles {
 public:
  class GiveBack {
   public:
    explicit GiveBack(EasyHandles* handles = nullptr) : handles_(handles) {}
    void operator()(CURL* easy) const { handles_->Keep(easy); }

   private:
    EasyHandles* handles_;
  };
  // It must not outlive the EasyHandles that it is from, and is in no multi handle when it is given back.
  using Handle = std::unique_ptr<CURL, GiveBack>;

  // One that knows what all transfers have in common. Raises std::bad_alloc.
  Handle Take();

 private:
  struct Cleanup {
    void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
  };

  void Keep(CURL* easy);

  std::vector<std::unique_ptr<CURL, Cleanup>> spare_;
};

}  // namespace mirelo::curl
