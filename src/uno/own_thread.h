#pragma once

#include <functional>
#include <utility>

#include "uno/errors.h"

namespace mirelo::uno {

// The thread that the classes live on: who asks first, since the office loads this for a macro of its own.
bool IsOwnThread();
void RequireOwnThread();  // a RuntimeException of the office's elsewhere

// AtTheBorder, and only there.
template <class Body>
decltype(auto) OnOwnThread(Body&& body) {
  RequireOwnThread();
  return AtTheBorder(std::forward<Body>(body));
}

// Says how an object is destroyed that another thread was the last to hold: `post` is called on that thread
// with a step, which it has run on the own thread later. It answers false once it runs no more steps. Then,
// and while there is no `post`, such objects stay for good. To be called before the first of them is made.
using PostToOwnThread = std::function<bool(std::function<void()> step)>;
void LetGoThrough(PostToOwnThread post);
const PostToOwnThread& Poster();  // the one that was given, or an empty one

// What holds objects of the classes, and is destroyed on their thread whoever lets go of it last, as Python's
// threads do. Another thread's hold counts until that thread's turn, so that nothing is found here that is
// being destroyed there.
template <class Helper>
class LetGoOnOwnThread : public Helper {
 public:
  void SAL_CALL release() noexcept override { LetGo(); }

 private:
  void LetGo() noexcept {
    if (IsOwnThread()) return Helper::release();
    try {
      if (Poster()) static_cast<void>(Poster()([this] { Helper::release(); }));
    } catch (...) {  // the office is ending; what is not let go of stays
    }
  }
};

}  // namespace mirelo::uno
