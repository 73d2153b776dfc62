#pragma once

#include <curl/curl.h>

#include <memory>

namespace mirelo::curl {

// Handles for transfers, each for one reply and no other. libcurl remembers the last header that a handle
// received beyond the life of that header; when the next reply on the handle begins with a folded line, it
// writes there. So nothing that has served a reply is kept.
//
// A handle takes longer to make than a request to describe, so the next one can be made ahead, while a server
// thinks.
class FreshHandles {
 public:
  struct Cleanup {
    void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
  };
  // It is in no multi handle when it goes.
  using Handle = std::unique_ptr<CURL, Cleanup>;

  // One that knows what all transfers have in common. Raises std::bad_alloc.
  Handle Take();
  // Sees to it that the next Take is quick.
  void MakeNext();

 private:
  Handle next_;
};

}  // namespace mirelo::curl
