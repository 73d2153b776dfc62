#pragma once

namespace mirelo::calc {

class Document;

// Keeps what is done in its lifetime out of the person's undo list, which stays as it is. The office opens
// the list again after many a change, so of several changes Document::StayAside is said before each but the
// first.
class UndoAside {
 public:
  // The list is locked. The office makes its steps all the same, and drops them.
  explicit UndoAside(Document& document);
  // For changes of cells, whose steps take the office about as long to make as the changes: where the list is
  // empty, none are made. Drawings must not be taken off sheets meanwhile: the office does not outlive that.
  struct OfCells {};
  UndoAside(Document& document, OfCells);
  ~UndoAside();
  UndoAside(const UndoAside&) = delete;
  UndoAside& operator=(const UndoAside&) = delete;

  void Stay() const;
  // Whether the office makes no steps at all meanwhile.
  bool IsUndoOff() const { return means_ == Means::TurnedOff || means_ == Means::WasOff; }

  // Ends what OfCells has begun and Document::KeepsUndoOff has gone on with.
  static void TurnUndoOn(const Document& document);

 private:
  UndoAside(Document& document, bool is_of_cells);

  // OfAnother: nested in another UndoAside, which does the work. Lock: the undo manager is locked. TurnedOff:
  // this object has switched the making of steps off. WasOff: it was off already (Document::KeepsUndoOff).
  enum class Means { OfAnother, Lock, TurnedOff, WasOff };
  Means Begin(bool is_of_cells) const;

  Document& document_;
  const Means means_;
};

}  // namespace mirelo::calc
