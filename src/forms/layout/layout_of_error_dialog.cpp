// The error dialog: a title with its picture, the report, and the buttons.

#include "forms/layout/layouts.h"

namespace mirelo::forms::layout {

FormLayout LayoutOfErrorDialog() {
  return {
      {"elaControls", Column({Wide(Control("elaInfo")), Control("elaButtons")})},
      {"elaInfo", Column({Control("elaTitle"), Wide(Called(Control("txtErrorMessage"), "Report"))})},
      {"elaTitle", Row({Wide(Control("elaTitleCaption"))})},
      // Enter answers what stands when nobody answers. It begins nothing anew, and goes on with nothing.
      {"elaButtons", Row({Control("btnSend"), Space(), Control("btnIgnore"), Control("btnRetry"),
                          FocusedFirst(Control("btnAbort"))})},
  };
}

}  // namespace mirelo::forms::layout
