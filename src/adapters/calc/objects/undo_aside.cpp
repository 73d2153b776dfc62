#include "adapters/calc/objects/undo_aside.h"

#include "adapters/calc/objects/document.h"
#include "adapters/calc/objects/properties.h"

namespace mirelo::calc {

namespace {

constexpr std::string_view kKeepsSteps = "IsUndoEnabled";

// Also within a step of somebody's that goes on: that one is in the list already.
bool IsEmpty(const Reference<css::document::XUndoManager>& steps) {
  return !steps->isUndoPossible() && !steps->isRedoPossible() &&
         !steps->getAllUndoActionTitles().hasElements() && !steps->getAllRedoActionTitles().hasElements();
}

}  // namespace

UndoAside::UndoAside(Document& document) : UndoAside(document, false) {}
UndoAside::UndoAside(Document& document, OfCells) : UndoAside(document, true) {}

UndoAside::UndoAside(Document& document, bool is_of_cells) : document_(document), means_(Begin(is_of_cells)) {
  if (means_ != Means::OfAnother) document_.Aside() = this;
}

UndoAside::Means UndoAside::Begin(bool is_of_cells) const {
  if (document_.Aside() != nullptr) return Means::OfAnother;
  if (document_.HoldsSteps()) {
    if (is_of_cells && document_.Gathers()) return Means::HeldNoSteps;
    document_.MakeStepsAgain();
  }
  const auto& steps = document_.Steps();
  // A macro may have said that none are to be kept, and may lock the list.
  if (is_of_cells && !steps->isLocked() && IsEmpty(steps)) {
    const Properties document(document_.uno());
    if (document.Get(kKeepsSteps, false)) {
      document.Set(kKeepsSteps, false);
      return Means::NoSteps;
    }
  }
  steps->lock();
  return Means::Lock;
}

UndoAside::~UndoAside() {
  if (means_ == Means::OfAnother) return;
  document_.Aside() = nullptr;
  if (means_ == Means::HeldNoSteps) return;
  if (means_ == Means::NoSteps && document_.Gathers()) {
    document_.HoldSteps();
    return;
  }
  try {
    if (means_ == Means::NoSteps) {
      MakeSteps(document_);
    } else {
      document_.Steps()->unlock();
    }
  } catch (const css::uno::Exception&) {  // the document is gone, and its undo list
  }
}

void UndoAside::MakeSteps(const Document& document) { Properties(document.uno()).Set(kKeepsSteps, true); }

void UndoAside::Stay() const {
  if (means_ != Means::Lock) return;
  document_.Steps()->unlock();
  document_.Steps()->lock();
}

}  // namespace mirelo::calc
