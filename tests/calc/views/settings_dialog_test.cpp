// What the settings dialog does only in an office, above the document that it works on; the rest is in
// tests/views.

#include <com/sun/star/util/XCloseable.hpp>
#include <string>

#include "calc/views/settings_dialog_rig.h"

namespace mirelo::calc {
namespace {

using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

class SettingsDialog : public ::testing::Test, protected SettingsDialogInOffice {};

TEST_F(SettingsDialog, KeepsTheDocumentThatItLiesAbove) {
  person.Does("close the document", [&] {
    EXPECT_ANY_THROW(Reference<css::util::XCloseable>(document, UNO_QUERY_THROW)->close(false));
  });
  person.Does("cancel", [&] { person.Click("ButCancel"); });
  EXPECT_EQ(facade->LoadFrmMirelo(), 2);
}

TEST_F(SettingsDialog, KeepsTheDocumentWhileABoxWaitsForAnAnswer) {
  person.Does("open the settings", [&] { Open(kSettings); });
  person.Does("type a letter", [&] {
    person.Click("txtSec");
    person.Type("x");
  });
  person.Waits("the box", [&] { return Person::IsBoxUp("The value must be a digit."); });
  person.Does("close the document", [&] {
    EXPECT_ANY_THROW(Reference<css::util::XCloseable>(document, UNO_QUERY_THROW)->close(false));
  });
  person.Answers("The value must be a digit.", "OK");
  person.Does("cancel", [&] { person.Click("ButCancel"); });
  EXPECT_EQ(facade->LoadFrmMirelo(), 2);
}

}  // namespace
}  // namespace mirelo::calc
