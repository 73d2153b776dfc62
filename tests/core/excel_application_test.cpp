#include <gtest/gtest.h>

#include <memory>

#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "support/facade_test.h"

namespace mirelo::testing {
namespace {

// A spreadsheet program without a workbook.
class BareApplication : public host::excel::Application {
 public:
  std::shared_ptr<host::excel::Workbook> ActiveWorkbook() override { return nullptr; }
  std::shared_ptr<host::excel::Sheet> ActiveSheet() override { return nullptr; }
  std::shared_ptr<host::excel::Range> ActiveCell() override { return nullptr; }
  std::shared_ptr<host::excel::Selectable> Selection() override { return nullptr; }
  std::shared_ptr<host::excel::Window> ActiveWindow() override { return nullptr; }
  std::shared_ptr<host::excel::Worksheets> Worksheets() override { return nullptr; }
  std::shared_ptr<host::excel::Charts> Charts() override { return nullptr; }
  std::shared_ptr<host::excel::Range> Range(std::string_view) override { return nullptr; }
  std::shared_ptr<host::excel::Range> Cells() override { return nullptr; }
  std::shared_ptr<host::excel::Range> Cells(std::int32_t, std::int32_t) override { return nullptr; }
  bool ScreenUpdating() override { return true; }
  void ScreenUpdating(bool) override {}
};

class NoApplication : public Object {
 public:
  std::string_view TypeName() const override { return "NoApplication"; }
};

class ExcelApplication : public FacadeTest {
 protected:
  const std::shared_ptr<BareApplication> application = std::make_shared<BareApplication>();
};

TEST_F(ExcelApplication, IsTheVariableAsAVariant) {
  facade->ExcelApplication(Variant(application));
  EXPECT_EQ(facade->m_ObjExcelApplication(), application);
  EXPECT_EQ(facade->ExcelApplication().AsObject(), application);
}

TEST_F(ExcelApplication, ShowsWhatTheVariableWasSetTo) {
  facade->m_ObjExcelApplication(application);
  EXPECT_EQ(facade->ExcelApplication().AsObject(), application);
}

TEST_F(ExcelApplication, RefusesAnObjectOfAnotherClassAndKeepsTheOld) {
  facade->ExcelApplication(Variant(application));
  const Variant other(std::make_shared<NoApplication>());
  EXPECT_EQ(NumberOf([&] { facade->ExcelApplication(other); }), 13);
  EXPECT_EQ(facade->m_ObjExcelApplication(), application);
}

TEST_F(ExcelApplication, RefusesAValueThatIsNoObject) {
  EXPECT_EQ(NumberOf([&] { facade->ExcelApplication("Excel"); }), 424);
  EXPECT_EQ(NumberOf([&] { facade->ExcelApplication(Variant()); }), 424);
}

TEST_F(ExcelApplication, MayBeLetGoOf) {
  facade->ExcelApplication(Variant(application));
  facade->ExcelApplication(Variant(std::shared_ptr<Object>()));
  EXPECT_EQ(facade->m_ObjExcelApplication(), nullptr);
}

}  // namespace
}  // namespace mirelo::testing
