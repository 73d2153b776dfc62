#pragma once

#include <atomic>
#include <com/sun/star/document/XUndoManager.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <com/sun/star/util/XCloseListener.hpp>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/calc/objects/errors.h"
#include "adapters/calc/objects/interfaces.h"
#include "adapters/calc/objects/paint_pause.h"

namespace mirelo::calc {

class DocumentCharts;
class DocumentSheet;
class Front;
class GatheredFormats;
class NumberFormats;
class UndoAside;

// A document that is open in the office, with what its objects share. A person works in it meanwhile: sheets
// are renamed, moved and deleted, and the document is closed, at any time.
//
// The person's undo list holds the person's steps alone: changes written here stay out of it (see UndoAside).
// Undoing a step restores what stood at its addresses before that step. Where a step can no longer be undone
// safely, since sheets have got other numbers or a drawing that it holds is gone, ClearUndoList empties the
// list.
class Document : public std::enable_shared_from_this<Document> {
 public:
  using Context = Reference<css::uno::XComponentContext>;
  using Uno = Reference<css::sheet::XSpreadsheetDocument>;

  // `gone` is called once, when the document is closed while this one lives; on the office's own thread.
  static std::shared_ptr<Document> Of(const Context& context, const Uno& uno, std::function<void()> gone);
  ~Document();
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  // Runs `body`, which calls the office, after the gathered formats were applied. Exceptions of the office
  // become error 1004; after the document was closed every call is error 1004.
  template <class Body>
  decltype(auto) Ask(Body&& body) const {
    return AskAsItStands([&]() -> decltype(auto) {
      LayFormats();
      return std::forward<Body>(body)();
    });
  }
  // Like Ask, but gathered formats stay so: for a body that does not read what they change.
  template <class Body>
  decltype(auto) AskAsItStands(Body&& body) const {
    if (is_gone_) throw DocumentGone();
    try {
      return std::forward<Body>(body)();
    } catch (const css::lang::DisposedException&) {
      throw DocumentGone();
    } catch (const css::uno::Exception& failure) {
      if (is_gone_) throw DocumentGone();
      throw Failed(failure);
    }
  }

  // The rest is called within Ask.

  const Context& OfficeContext() const { return context_; }
  const Uno& uno() const { return uno_; }
  const Reference<css::frame::XModel>& Model() const { return model_; }
  // The folder's part left out; empty while there is no file.
  std::string FileName() const;

  // In the order of their tabs, hidden ones included.
  std::vector<std::shared_ptr<DocumentSheet>> Sheets();
  // By name without regard to case. Null when none bears it.
  std::shared_ptr<DocumentSheet> Find(std::string_view name);
  std::shared_ptr<DocumentSheet> SheetOf(const Reference<css::sheet::XSpreadsheet>& uno);
  // Adds a sheet before the active one and makes it active.
  std::shared_ptr<DocumentSheet> AddSheet(std::string_view name);

  NumberFormats& Formats() { return *formats_; }
  // What to add to a day number of this document to get the client's: 0, or 1462 where the document counts
  // from 1904.
  double FirstDay() const;
  calc::Front& Front() { return *front_; }
  void HoldScreen();
  // Windows stand still until the result is gone.
  std::unique_ptr<PaintPause> LetGoOfScreen();
  // Whether writes may be deferred: the screen is held still, and the office has handled no events since, so
  // nobody but clients has acted. Deferred writes are done when somebody reads what they change, and when
  // either ends.
  bool Gathers() const { return pause_ != nullptr && pause_->IsOn(); }
  GatheredFormats& Gathered() const { return *gathered_; }
  // Until Gathers ends, the office records nothing that a person could undo (see UndoAside::OfCells).
  bool KeepsUndoOff() const { return keeps_undo_off_; }
  void KeepUndoOff() { keeps_undo_off_ = true; }
  void TurnUndoOnAgain();
  // Whether this sheet was found to be unprotected; nobody can alter that while Gathers.
  bool IsKnownOpen(const DocumentSheet& sheet) const { return Gathers() && open_ == &sheet; }
  void NoteOpen(const DocumentSheet& sheet) { open_ = &sheet; }
  // What is kept of its charts; null at first.
  std::shared_ptr<DocumentCharts>& Charts() { return charts_; }

  const Reference<css::document::XUndoManager>& UndoList() const { return undo_list_; }
  void ClearUndoList() const;
  // Within UndoAside, in front of each change but the first.
  void StayAside() const;
  // The one that is alive; null where none is.
  const UndoAside*& Aside() { return aside_; }

  // Raise what a person has to be told.
  void CheckNotOnlyForReading() const;
  void CheckStructure() const;

 private:
  class Closing;

  Document(const Context& context, const Uno& uno);
  void BecomeGone();
  void LayFormats() const;
  void EndHolding();

  const Context context_;
  const Uno uno_;
  const Reference<css::frame::XModel> model_;
  const Reference<css::document::XUndoManager> undo_list_;
  Reference<css::util::XCloseListener> closing_;
  std::function<void()> gone_;
  std::atomic<bool> is_gone_ = false;
  std::vector<std::unique_ptr<DocumentSheet>> known_;
  std::unique_ptr<NumberFormats> formats_;
  std::unique_ptr<calc::Front> front_;
  std::unique_ptr<PaintPause> pause_;
  std::unique_ptr<GatheredFormats> gathered_;
  bool keeps_undo_off_ = false;
  const DocumentSheet* open_ = nullptr;
  const UndoAside* aside_ = nullptr;
  std::shared_ptr<DocumentCharts> charts_;
};

}  // namespace mirelo::calc
