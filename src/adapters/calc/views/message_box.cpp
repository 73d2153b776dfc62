#include <com/sun/star/awt/MessageBoxButtons.hpp>
#include <com/sun/star/awt/MessageBoxResults.hpp>
#include <com/sun/star/awt/MessageBoxType.hpp>
#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/awt/XMessageBox.hpp>
#include <com/sun/star/awt/XMessageBoxFactory.hpp>

#include "adapters/calc/objects/office_text.h"
#include "adapters/calc/office_loop.h"
#include "adapters/calc/views/calc_desktop.h"
#include "adapters/calc/views/failure.h"
#include "adapters/calc/views/frame_watch.h"

namespace mirelo::calc {

using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace {

using Answer = host::Desktop::Answer;

// A box that informs has one button in the office, whatever is asked for.
css::awt::MessageBoxType TypeFor(int style) {
  const bool asks = host::Desktop::ButtonsOf(style) != host::Desktop::kOkOnly;
  switch (host::Desktop::IconOf(style)) {
    case host::Desktop::kCritical:
      return css::awt::MessageBoxType_ERRORBOX;
    case host::Desktop::kExclamation:
      return css::awt::MessageBoxType_WARNINGBOX;
    case host::Desktop::kInformation:
      return asks ? css::awt::MessageBoxType_QUERYBOX : css::awt::MessageBoxType_INFOBOX;
    default:
      return asks ? css::awt::MessageBoxType_QUERYBOX : css::awt::MessageBoxType_MESSAGEBOX;
  }
}

sal_Int32 ButtonsFor(int style) {
  switch (host::Desktop::ButtonsOf(style)) {
    case host::Desktop::kAbortRetryIgnore:
      return css::awt::MessageBoxButtons::BUTTONS_ABORT_IGNORE_RETRY;
    case host::Desktop::kYesNo:
      return css::awt::MessageBoxButtons::BUTTONS_YES_NO;
    default:
      return css::awt::MessageBoxButtons::BUTTONS_OK;
  }
}

// The office answers a box that was closed as one that was cancelled, and so does one without a screen.
Answer AnswerFor(sal_Int16 result, int style) {
  const int buttons = host::Desktop::ButtonsOf(style);
  switch (result) {
    case css::awt::MessageBoxResults::YES:
      return buttons == host::Desktop::kYesNo ? Answer::Yes : host::Desktop::MostCarefulAnswer(style);
    case css::awt::MessageBoxResults::RETRY:
      return Answer::Retry;
    case css::awt::MessageBoxResults::IGNORE:
      return Answer::Ignore;
    default:
      return host::Desktop::MostCarefulAnswer(style);
  }
}

}  // namespace

Answer CalcDesktop::MessageBox(const std::string& text, int style, const std::string& title) {
  // What the form waited for was hung up, and the person does not want to know.
  if (!windows_.empty() && windows_.back()->HasEnded()) return host::Desktop::MostCarefulAnswer(style);
  try {
    const Reference<css::awt::XMessageBoxFactory> boxes(css::awt::Toolkit::create(context_), UNO_QUERY_THROW);
    const Reference<css::awt::XMessageBox> box = boxes->createMessageBox(
        Above(), TypeFor(style), ButtonsFor(style), OfficeText(title), OfficeText(text));
    const FrameWatch watch(FrameBelow(), {});
    struct Up {
      explicit Up(int& all) : boxes(all) { ++boxes; }
      ~Up() { --boxes; }
      int& boxes;
    } const up(boxes_);
    sal_Int16 result = 0;
    loop_.WaitIn([&] { result = box->execute(); }, [] {});
    return AnswerFor(result, style);
  } catch (const css::uno::Exception& failure) {
    throw ToolkitFailed(failure);
  }
}

}  // namespace mirelo::calc
