#include "adapters/calc/objects/undo_aside.h"

#include "adapters/calc/objects/document.h"
#include "adapters/calc/objects/properties.h"

namespace mirelo::calc {

namespace {

constexpr std::string_view kIsUndoEnabled = "IsUndoEnabled";

// Also within a step of somebody's that goes on: that one is in the list already.
bool IsEmpty(const Reference<css::document::XUndoManager>& list) {
  return !list->isUndoPossible() && !list->isRedoPossible() &&
         !list->getAllUndoActionTitles().hasElements() && !list->getAllRedoActionTitles().hasElements();
}

}  // namespace

UndoAside::UndoAside(Document& document) : UndoAside(document, false) {}
UndoAside::UndoAside(Document& document, OfCells) : UndoAside(document, true) {}

UndoAside::UndoAside(Document& document, bool is_of_cells) : document_(document), means_(Begin(is_of_cells)) {
  if (means_ != Means::OfAnother) document_.Aside() = this;
}

UndoAside::Means UndoAside::Begin(bool is_of_cells) const {
  if (document_.Aside() != nullptr) return Means::OfAnother;
  if (document_.KeepsUndoOff()) {
    if (is_of_cells && document_.Gathers()) return Means::WasOff;
    document_.TurnUndoOnAgain();
  }
  const auto& list = document_.UndoList();
  // A macro may have said that no steps are to be kept, and may lock the list.
  if (is_of_cells && !list->isLocked() && IsEmpty(list)) {
    const Properties document(document_.uno());
    if (document.Get(kIsUndoEnabled, false)) {
      document.Set(kIsUndoEnabled, false);
      return Means::TurnedOff;
    }
  }
  list->lock();
  return Means::Lock;
}

UndoAside::~UndoAside() {
  if (means_ == Means::OfAnother) return;
  document_.Aside() = nullptr;
  if (means_ == Means::WasOff) return;
  if (means_ == Means::TurnedOff && document_.Gathers()) {
    document_.KeepUndoOff();
    return;
  }
  try {
    if (means_ == Means::TurnedOff) {
      TurnUndoOn(document_);
    } else {
      document_.UndoList()->unlock();
    }
  } catch (const css::uno::Exception&) {  // the document is gone, and its undo list
  }
}

void UndoAside::TurnUndoOn(const Document& document) { Properties(document.uno()).Set(kIsUndoEnabled, true); }

void UndoAside::Stay() const {
  if (means_ != Means::Lock) return;
  document_.UndoList()->unlock();
  document_.UndoList()->lock();
}

}  // namespace mirelo::calc
