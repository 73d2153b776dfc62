#pragma once

#include <filesystem>
#include <string>

#include "automation/runtime_error.h"
#include "host/documents.h"

namespace mirelo::app {

// Where a person is told of what happens to a workbook's file.
struct Front {
  host::Document::Tell warn;  // tells a sentence
  std::string another;        // what to do there to take another file, as in "name another file"
};

// The standard error stream, where sentences about a file begin with its name.
Front Terminal(const std::filesystem::path& file);

// The workbook of an .xlsx file, or a new one when there is no such file. What of the file a saved workbook
// would not hold any more is told on the standard error stream.
std::unique_ptr<host::Document> OpenOrNew(host::Documents& documents, const std::filesystem::path& file);

// Says on the standard error stream what of its file the workbook would not hold any more if it were saved as
// it is now; each thing once.
void TellLosses(const std::filesystem::path& file, host::Document& document);

// Says one such sentence.
void TellLoss(const std::filesystem::path& file, const std::string& loss);

// Makes the sheet of the quote table the active one, so that the file opens with it. Does nothing where there
// is no such sheet.
void PutQuoteTableInFront(host::Document& document);
void PutQuoteTableInFront(host::excel::Application& application);

// What a person can do about a workbook that could not be saved: a sentence. Empty where the error's own text
// says it, or where no other file would help.
std::string WhatToDoAbout(const RuntimeError& failure);

// What a window says of the file: "Go saves in /home/you/quotes.xlsx", with " (new)" where it is none yet.
std::string WhereGoSaves(const std::filesystem::path& file);

// Holds a workbook's file for Go, to be called before it is opened and kept until it is saved. Better than
// after the work is done, a file that could not be saved is found now: the errors of Document::Save, with
// texts that say what to do. That its file system keeps no others out is warned of.
std::unique_ptr<host::DocumentHold> HoldForGo(host::Documents& documents, const std::filesystem::path& file,
                                              const Front& front);
std::unique_ptr<host::DocumentHold> HoldForGo(host::Documents& documents, const std::filesystem::path& file);

// The same for a day, which may begin while another program has the file: it saves beside it at its end.
std::unique_ptr<host::DocumentHold> HoldForDay(host::Documents& documents, const std::filesystem::path& file);

// Saves what Go has built, with the quote table in front, and warns of what is lost before the file changes.
// Errors as Document::Save, with texts that say what to do.
void SaveTold(const std::filesystem::path& file, host::Document& document, const Front& front);

// The same, and tells on the standard error stream what became of it. What another program
// has saved in the file since the document was opened stays there, and is an error. Errors as Document::Save,
// with texts that say what to do.
void SaveAfterGo(const std::filesystem::path& file, host::Document& document);

}  // namespace mirelo::app
