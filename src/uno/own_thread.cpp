#include "uno/own_thread.h"

#include <com/sun/star/uno/RuntimeException.hpp>
#include <thread>

#include "uno/text.h"

namespace mirelo::uno {

namespace {

// Never taken down: the office may let go of objects until it ends.
PostToOwnThread& GivenPoster() {
  static auto& post = *new PostToOwnThread;
  return post;
}

}  // namespace

bool IsOwnThread() {
  static const std::thread::id own = std::this_thread::get_id();
  return std::this_thread::get_id() == own;
}

void RequireOwnThread() {
  if (IsOwnThread()) return;
  throw css::uno::RuntimeException(
      OfficeText("Mirelo can be used by macros within LibreOffice alone, on its main thread"), {});
}

const PostToOwnThread& Poster() { return GivenPoster(); }

void LetGoThrough(PostToOwnThread post) { GivenPoster() = std::move(post); }

}  // namespace mirelo::uno
