#pragma once

#include <atomic>
#include <cstddef>
#include <mutex>
#include <string>
#include <string_view>

#include "terminal/output.h"

namespace mirelo::terminal {

// The standard output or the standard error stream. Once a write has failed nothing more is written, and
// nothing is raised: a command whose purpose is its output asks Good at its end. Any thread may write.
class StandardStream : public Output {
 public:
  // What is put into it is buffered until a Flush, or until there is much of it.
  explicit StandardStream(int descriptor) : descriptor_(descriptor) {}
  // Each whole line is written as soon as it is there, behind all that was put into `before` until then, so
  // that a person reads everything in the order in which it was said.
  StandardStream(int descriptor, StandardStream& before) : descriptor_(descriptor), before_(&before) {}
  ~StandardStream() override;

  void Flush() override;

  // Writes what waits, and behind it these words. Takes no memory for that: there may be none.
  void PutWithoutMemory(OwnWords words);

  // Whether all that was flushed could be written.
  bool Good() const { return error_ == 0; }
  // Whether a write failed because the reader has gone.
  bool ReaderHasGone() const;
  // Why it could not be written, in the machine's words.
  std::string Trouble() const;
  // Forgets that something could not be written.
  void Forgive() { error_ = 0; }

  // For as long as something else has the terminal: what is put into the stream waits until Release, which
  // writes it. Where more waits than a person would read afterwards, it is written at once all the same.
  void Hold();
  void Release();

  bool IsTerminal() const;
  // The characters of a line of the terminal; 0 where it is none and lines have no end.
  std::size_t LineWidth() const;

 private:
  void Put(std::string_view bytes) override;
  void Write();

  int descriptor_;
  StandardStream* before_ = nullptr;
  std::mutex mutex_;  // guards what follows
  std::string waiting_;
  bool is_held_ = false;
  std::atomic<int> error_ = 0;
};

// The standard output. It is flushed when the program ends; before that by who wants to be read at once.
StandardStream& Out();
// The standard error stream.
StandardStream& Err();

// The first thing that a program calls. From then on, writing to a reader that has gone, or beyond the limit
// of file sizes, is an error of writing and not a signal that ends the program (see writing_signals.h; who
// starts another program gives that its signals back). And no file that the program opens takes the place of
// a standard stream that was closed.
void PrepareStandardStreams();

}  // namespace mirelo::terminal
