// What is drawn can be read: there are letters, pictures, ticks and colours, looked at pixel by pixel.

#include <QFontMetrics>
#include <QImage>
#include <QLabel>
#include <set>

#include "adapters/qt/grid_view.h"
#include "adapters/qt/pictures.h"
#include "forms/button.h"
#include "forms/check_box.h"
#include "forms/combo_box.h"
#include "forms/grid.h"
#include "forms/layout/measures.h"
#include "forms/list_box.h"
#include "forms/simple_controls.h"
#include "forms/text_box.h"
#include "qt/gui_test.h"

namespace mirelo::qt {
namespace {

QImage Drawn(QWidget& widget) { return widget.grab().toImage(); }

// How many pixels differ.
int Difference(const QImage& a, const QImage& b) {
  if (a.size() != b.size()) return a.width() * a.height();
  int count = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) count += a.pixel(x, y) != b.pixel(x, y);
  }
  return count;
}

int PixelsOfColor(const QImage& image, QRgb color) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) count += image.pixel(x, y) == color;
  }
  return count;
}

TEST(Letters, HaveTheWidthsOfAFont) {
  const QFontMetrics metrics{QApplication::font()};
  EXPECT_GT(metrics.height(), 8);
  EXPECT_LT(metrics.height(), 40);
  EXPECT_GT(metrics.horizontalAdvance(QLatin1Char('W')), metrics.horizontalAdvance(QLatin1Char('i')));
  EXPECT_GT(metrics.horizontalAdvance(QLatin1String("Sort Tickers")),
            5 * metrics.horizontalAdvance(QLatin1Char('S')));
  for (const char letter : {'A', 'z', '0', '(', '&'}) {
    SCOPED_TRACE(letter);
    EXPECT_TRUE(metrics.inFont(QLatin1Char(letter)));
  }
}

TEST(Letters, AreDrawnAndDifferFromEachOther) {
  std::vector<QImage> drawn;
  for (const char* letter : {"", "A", "B", "g", "8"}) {
    QLabel label{QLatin1String(letter)};
    label.resize(30, 30);
    drawn.push_back(Drawn(label));
  }
  for (std::size_t a = 0; a < drawn.size(); ++a) {
    for (std::size_t b = a + 1; b < drawn.size(); ++b) EXPECT_GT(Difference(drawn[a], drawn[b]), 10);
  }
}

TEST(Pictures, AreAllDrawnAndAllDifferent) {
  const char* names[] = {"left",  "all-left", "right", "all-right", "up",    "down", "delete",
                         "chart", "error",    "send",  "ignore",    "retry", "abort"};
  std::vector<QImage> drawn;
  for (const char* name : names) {
    SCOPED_TRACE(name);
    const QImage image = Picture(name).pixmap(forms::layout::kSmallPicture).toImage();
    ASSERT_EQ(image.size(), QSize(16, 16));
    EXPECT_GT(256 - PixelsOfColor(image, qRgba(0, 0, 0, 0)), 15);
    for (const QImage& other : drawn) EXPECT_GT(Difference(image, other), 8);
    drawn.push_back(image);
    const QImage off = Picture(name).pixmap(QSize(16, 16), QIcon::Disabled).toImage();
    EXPECT_GT(Difference(image, off), 8) << "a disabled one looks different";
  }
  EXPECT_TRUE(Picture("no such picture").isNull());
  EXPECT_TRUE(Picture("").isNull());
}

class DrawnForm : public forms::Form {
 public:
  DrawnForm() : Form("Sample", "A sample") {
    Design(6000, 6000, Border::Sizable);
    picture.Picture("delete");
    grid.FormatString("Ticker|Last");
    grid.Rows(3);
    grid.ColDataType(1, forms::Grid::kBooleanColumn);
    field.Click.Subscribe([] {});
    combo.AddItem("Blue");
    list.AddItem("Volume");
  }
  forms::TextBox text{*this, "text", nullptr};
  forms::CheckBox tick{*this, "tick", nullptr, "Tick me"};
  forms::Button press{*this, "press", nullptr, "Press me"};
  forms::Button picture{*this, "picture", nullptr};
  forms::Label label{*this, "label", nullptr, "Only words"};
  forms::ComboBox combo{*this, "combo", nullptr};
  forms::ListBox list{*this, "list", nullptr};
  forms::Grid grid{*this, "grid", nullptr};
  forms::Label field{*this, "field", nullptr};
};

class Drawing : public GuiTest {
 protected:
  // Shows the form, and expects the control's widget to look otherwise after `change`.
  void ExpectSeen(const char* control, std::function<void()> change) {
    QImage before;
    person.Does("look", [&] {
      TopWindow()->setFocus();  // no cursor blinks
      before = Drawn(*Find(control));
      change();
    });
    person.Does("look again", [&] { EXPECT_GT(Difference(before, Drawn(*Find(control))), 10) << control; });
    Show(form);
  }
  DrawnForm form;
};

TEST_F(Drawing, ShowsTheTextOfEachKindOfControl) {
  ExpectSeen("text", [&] { form.text.Text("MSFT"); });
  ExpectSeen("press", [&] { form.press.Caption("Other"); });
  ExpectSeen("label", [&] { form.label.Caption("Other"); });
  ExpectSeen("combo", [&] { form.combo.ListIndex(0); });
  ExpectSeen("list", [&] { form.list.AddItem("Open"); });
  ExpectSeen("grid", [&] { form.grid.TextMatrix(1, 0, "MSFT"); });
  ExpectSeen("grid", [&] { form.grid.TextMatrix(0, 0, "Symbol"); });
}

TEST_F(Drawing, ShowsTicksPicturesAndMarks) {
  ExpectSeen("tick", [&] { form.tick.Value(1); });
  ExpectSeen("picture", [&] { form.picture.Picture("up"); });
  ExpectSeen("grid", [&] { form.grid.TextMatrix(1, 1, "-1"); });
  ExpectSeen("grid", [&] { form.grid.Cell(forms::Grid::kCellPicture, 2, 1, "chart"); });
  ExpectSeen("field", [&] { form.field.BorderStyle(1); });
  ExpectSeen("press", [&] { form.press.Enabled(false); });
}

TEST_F(Drawing, ShowsColorsAsTheyAre) {
  struct Case {
    forms::Color color;
    QRgb seen;
  };
  const Case cases[] = {
      {0x0000FF, qRgb(255, 0, 0)},  // red in the low byte
      {0x008000, qRgb(0, 128, 0)},
      {0xFF0000, qRgb(0, 0, 255)},
      {0x000000, qRgb(0, 0, 0)},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.color);
    person.Does("look", [&] {
      for (const char* control : {"text", "field"}) {
        form.text.BackColor(c.color);
        form.field.BackColor(c.color);
        const QImage image = Drawn(*Find(control));
        EXPECT_GT(PixelsOfColor(image, c.seen), image.width() * image.height() / 2) << control;
      }
      form.text.BackColor(forms::kWindowBackground);
    });
    person.Does("look at the desktop's color", [&] {
      const QImage image = Drawn(*Find("text"));
      EXPECT_GT(PixelsOfColor(image, QPalette().color(QPalette::Base).rgb()), image.width());
    });
    Show(form);
  }
}

}  // namespace
}  // namespace mirelo::qt
