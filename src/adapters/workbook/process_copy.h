#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "adapters/proc/descriptor.h"

namespace mirelo::workbook {

// A forked copy of this process that does one thing and sends messages about it. It has the memory as it is
// now; the machine copies the pages that either changes from then on, so neither sees the other's changes.
//
// It ends when its work is done, when this object is destroyed, and when this process ends in whatever way.
// It runs no destructors and flushes no stream that it has from here, and leaves the signals that a terminal
// sends to all its processes to this one. Of the open descriptors it has the standard streams and the locks
// on files (see FileHold): a file is held until everything is gone that could write it, but a connection ends
// when this process closes it. What is printed to the standard error stream there goes nowhere.
class ProcessCopy {
 public:
  struct Message {
    char kind;
    std::string text;
  };

  // The copy's end of the line between both.
  class Line {
   public:
    explicit Line(proc::Descriptor end) : end_(std::move(end)) {}
    int descriptor() const { return end_.number(); }

    // Texts beyond the longest one that is taken are cut.
    void Send(char kind, std::string_view text) const;
    // Waits until the other process has called Answer; ends the copy where that has gone.
    void AwaitAnswer() const;

   private:
    proc::Descriptor end_;
  };

  // `work` runs in the copy, and must not raise anything. Raises 7 when there is no memory for the copy, and
  // 1004 when no process can be started.
  explicit ProcessCopy(const std::function<void(const Line&)>& work);
  // As Kill, with kLongestEnd.
  ~ProcessCopy();
  ProcessCopy(const ProcessCopy&) = delete;
  ProcessCopy& operator=(const ProcessCopy&) = delete;

  // Whether a copy of this process would work at all.
  static bool CanBeMade();

  // Ready for reading when there is something to receive, the end included.
  int descriptor() const { return line_.number(); }
  // Waits until there is something to receive; false when nothing came within `patience`, which is shortened
  // by the time waited. Time in which this process was stopped itself, as by a shell, hardly counts.
  bool Await(std::chrono::milliseconds& patience) const;
  // Takes what has come until now, without waiting. False when nothing more will come: the copy has ended,
  // and so have the copies that it has made of itself.
  bool Receive();
  // The next whole message of what was received.
  std::optional<Message> Next();
  // Lets the copy go on after AwaitAnswer.
  void Answer() const;

  // How it ended, in a few words; to be called when nothing more will come.
  std::string End();

  // Ends it wherever it is, and whatever copies it has made of itself, and waits until they have gone: they
  // write nothing any more, and what they held is free. A process that waits for a disk which does not answer
  // cannot be ended before the disk answers. Such a one is left behind after `patience`, and the result is
  // false: it does nothing of its own any more, but what it has asked of the disk last may still be done, and
  // until then it keeps its locks. Later objects of this class see to it that no trace of it stays. To be
  // called once; nothing else may be called after it.
  bool Kill(std::chrono::milliseconds patience = kLongestEnd);
  static constexpr std::chrono::milliseconds kLongestEnd{3000};

 private:
  using Time = std::chrono::steady_clock::time_point;

  std::optional<int> Wait(Time until);
  bool AwaitEndOfAll(Time until) const;

  proc::Descriptor line_;
  pid_t copy_ = -1;  // until it was waited for
  bool was_killed_ = false;
  std::string received_;
};

}  // namespace mirelo::workbook
