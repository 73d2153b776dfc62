#include "terminal/standard_streams.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "terminal/writing_signals.h"

namespace mirelo::terminal {

namespace {

constexpr std::size_t kMuch = 65536;
constexpr std::size_t kUsualWidth = 80;

// The error's number; 0 when all was written.
int WriteAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
    if (count >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno == EAGAIN || errno == EWOULDBLOCK) {  // somebody shares it and does not wait
      pollfd ready{descriptor, POLLOUT, 0};
      ::poll(&ready, 1, -1);
    } else if (errno != EINTR) {
      return errno;
    }
  }
  return 0;
}

}  // namespace

StandardStream::~StandardStream() { Flush(); }

void StandardStream::Put(std::string_view bytes) {
  const std::lock_guard lock(mutex_);
  waiting_ += bytes;
  if (waiting_.size() >= kMuch || (before_ != nullptr && !is_held_ && waiting_.ends_with('\n'))) Write();
}

void StandardStream::Flush() {
  const std::lock_guard lock(mutex_);
  if (!is_held_) Write();
}

void StandardStream::Hold() {
  const std::lock_guard lock(mutex_);
  is_held_ = true;
}

void StandardStream::Release() {
  const std::lock_guard lock(mutex_);
  is_held_ = false;
  Write();
}

void StandardStream::PutWithoutMemory(OwnWords words) {
  const std::lock_guard lock(mutex_);
  Write();
  if (error_ == 0) error_ = WriteAll(descriptor_, words.Text());
}

void StandardStream::Write() {
  if (before_ != nullptr) before_->Flush();
  if (error_ == 0) error_ = WriteAll(descriptor_, waiting_);
  waiting_.clear();
}

bool StandardStream::ReaderHasGone() const { return error_ == EPIPE; }

std::string StandardStream::Trouble() const { return std::strerror(error_); }

bool StandardStream::IsTerminal() const { return ::isatty(descriptor_) == 1; }

std::size_t StandardStream::LineWidth() const {
  if (!IsTerminal()) return 0;
  winsize size{};
  const bool is_known = ::ioctl(descriptor_, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return is_known ? size.ws_col : kUsualWidth;
}

StandardStream& Out() {
  static StandardStream out(STDOUT_FILENO);
  return out;
}

StandardStream& Err() {
  static StandardStream err(STDERR_FILENO, Out());
  return err;
}

void PrepareStandardStreams() {
  IgnoreWritingSignals();
  // A place that is opened the other way round fails like one that is closed.
  const int ways[] = {O_WRONLY, O_RDONLY, O_RDONLY};
  for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
    // The lowest free place is the one that open(2) takes.
    if (::fcntl(descriptor, F_GETFD) < 0) (void)::open("/dev/null", ways[descriptor]);
  }
}

}  // namespace mirelo::terminal
