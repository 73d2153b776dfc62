#pragma once

#include <chrono>
#include <functional>

namespace mirelo::workbook {

// Runs `write`, which calls the file writer, in a copy of this process, and waits for it.
//
// The writer leaves things behind: the helper file of each sheet without rows, and whatever it had in hands
// when it failed, open and in memory. It tells of failures on the standard error stream, in words for its
// makers; and where memory is short it may break off. All that stays in the copy. What `write` does to files
// is all that is left of it.
//
// Raises what `write` raises; 7 when there is no memory for the copy, and 1004 when no process can be
// started, when the copy breaks off, and when it is not done after `patience`. However that goes, nothing of
// the copy is there afterwards. Signals that are sent to all of a terminal's processes are this one's to
// take; the copy ends with it.
void InWriterProcess(const std::function<void()>& write, std::chrono::milliseconds patience);

}  // namespace mirelo::workbook
