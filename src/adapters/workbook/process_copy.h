#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "adapters/workbook/descriptor.h"

namespace mirelo::workbook {

// A copy of this process that does one thing and sends messages about it. Its memory is this one's as it is
// now, of which the machine copies what either changes from then on; nothing that it changes is changed here.
//
// It ends with its work and with this object, and where this process ends however that comes. It runs no
// destructors of this process's things and writes no buffered output of its streams, and signals that are
// sent to all of a terminal's processes are this one's to take. Of the open descriptors it has the standard
// streams and the locks on files (see FileHold): a file is held until everything is gone that could write it,
// but a connection ends when this process closes it. What is printed to the standard error stream there goes
// nowhere.
class ProcessCopy {
 public:
  struct Message {
    char kind;
    std::string text;
  };

  // The copy's end of the line between both.
  class Line {
   public:
    explicit Line(Descriptor end) : end_(std::move(end)) {}
    int descriptor() const { return end_.number(); }

    // Texts beyond the longest one that is taken are cut.
    void Send(char kind, std::string_view text) const;
    // Waits until the other process has called Answer; ends the copy where that has gone.
    void AwaitAnswer() const;

   private:
    Descriptor end_;
  };

  // `work` runs in the copy, and must not raise anything. Raises 7 when there is no memory for the copy, and
  // 1004 when no process can be started.
  explicit ProcessCopy(const std::function<void(const Line&)>& work);
  // Ends it, and whatever copies it has made of itself.
  ~ProcessCopy();
  ProcessCopy(const ProcessCopy&) = delete;
  ProcessCopy& operator=(const ProcessCopy&) = delete;

  // Whether a copy of this process would work at all.
  static bool CanBeMade();

  // Ready for reading when there is something to receive, the end included.
  int descriptor() const { return line_.number(); }
  // Waits for that; false when nothing came in `patience`, from which the waiting is taken. A time in which
  // this process stands still itself, as one that a shell has stopped, counts for next to nothing.
  bool Await(std::chrono::milliseconds& patience) const;
  // Takes what has come until now, without waiting. False when nothing more will come: the copy has gone, and
  // all of its own.
  bool Receive();
  // The next whole message of what was received.
  std::optional<Message> Next();
  void Answer() const;

  // How it ended, in a few words; to be called when nothing more will come.
  std::string End();

 private:
  std::optional<int> Wait();
  void AwaitEndOfAll();

  Descriptor line_;
  pid_t copy_ = -1;
  std::string received_;
};

}  // namespace mirelo::workbook
