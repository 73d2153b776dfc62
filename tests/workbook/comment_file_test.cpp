#include <gmock/gmock.h>

#include <cstdint>

#include "host/excel/comment.h"
#include "host/excel/shape.h"
#include "workbook/workbook_files.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using workbook::Spreadsheet;

constexpr const char* kCommentPart = "xl/comments1.xml";
constexpr const char* kBoxPart = "xl/drawings/vmlDrawing1.vml";
constexpr const char* kXmlHead = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";

// A workbook of one sheet with comments, and the drawing of their boxes if there is any.
Parts WithComments(std::string_view comments, std::string_view shapes = "") {
  Parts parts = SmallWorkbook("<row r=\"1\"><c r=\"A1\"><v>1</v></c></row>");
  parts[kCommentPart] = std::string(kXmlHead) +
                        "<comments><authors><author>A. Person</author><author/></authors>" + "<commentList>" +
                        std::string(comments) + "</commentList></comments>";
  std::string relationships =
      "<Relationship Id=\"c\" Type=\"http://x/comments\" Target=\"../comments1.xml\"/>";
  if (!shapes.empty()) {
    relationships +=
        "<Relationship Id=\"v\" Type=\"http://x/vmlDrawing\" Target=\"../drawings/vmlDrawing1.vml\"/>";
    parts[kBoxPart] = "<xml xmlns:v=\"urn:v\" xmlns:x=\"urn:x\">" + std::string(shapes) + "</xml>";
  }
  parts["xl/worksheets/_rels/sheet1.xml.rels"] =
      std::string(kXmlHead) + "<Relationships>" + relationships + "</Relationships>";
  return parts;
}

std::string CommentOn(const char* cell, std::string_view text, int author = 0) {
  return std::string("<comment ref=\"") + cell + "\" authorId=\"" + std::to_string(author) + "\"><text>" +
         std::string(text) + "</text></comment>";
}

// The box of the comment on row `row`, column `column`, both counted from 0.
std::string Box(std::string_view style, int row, int column, std::string_view more = "") {
  return "<v:shape style=\"" + std::string(style) + "\"><x:ClientData ObjectType=\"Note\"><x:Row>" +
         std::to_string(row) + "</x:Row><x:Column>" + std::to_string(column) + "</x:Column>" +
         std::string(more) + "</x:ClientData></v:shape>";
}

class CommentFiles : public WorkbookFiles {
 protected:
  static std::string TextOf(const Spreadsheet& spreadsheet, const char* cell) {
    const auto comment = SheetOf(spreadsheet)->Range(cell)->Comment();
    return comment == nullptr ? "(none)" : comment->Text();
  }
  static std::shared_ptr<host::excel::Shape> BoxOf(const Spreadsheet& spreadsheet, const char* cell) {
    return SheetOf(spreadsheet)->Range(cell)->Comment()->Shape();
  }
};

TEST_F(CommentFiles, KeepTextsOfEveryKind) {
  auto spreadsheet = Spreadsheet::New();
  const auto sheet = SheetOf(spreadsheet);
  const char* texts[] = {"Charts (Last & Volume)",
                         "<&>\"'",
                         "line\nline\r\n\tend",
                         "control \x01\x1F",
                         "_x0041_ is no escape",
                         "_x0041\x01",
                         " blanks ",
                         " ",
                         "",
                         "=SUM(A1:A5)",
                         "\xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x93\x88"};
  std::int32_t row = 1;
  for (const char* text : texts) sheet->Cells(row++, 2)->AddComment(text);
  sheet->Range("XFD1048576")->AddComment(std::string(30'000, 'x'));

  const auto loaded = Reloaded(spreadsheet);
  row = 1;
  for (const char* text : texts) EXPECT_EQ(SheetOf(loaded)->Cells(row++, 2)->Comment()->Text(), text);
  EXPECT_EQ(TextOf(loaded, "XFD1048576"), std::string(30'000, 'x'));
  EXPECT_EQ(TextOf(loaded, "A1"), "(none)");
  EXPECT_THAT(AllLosses(loaded), IsEmpty());
}

TEST_F(CommentFiles, KeepTheSizesOfTheirBoxes) {
  auto spreadsheet = Spreadsheet::New();
  const auto sheet = SheetOf(spreadsheet);
  const auto scaled = sheet->Range("B2")->AddComment("Charts (Last & Volume)")->Shape();
  scaled->ScaleHeight(0.43, host::excel::msoFalse);
  scaled->ScaleWidth(1.48, host::excel::msoFalse);
  sheet->Range("C2")->AddComment("x");
  for (const char* column : {"A:A", "B:D"}) sheet->Range(column)->AutoFit();

  const auto loaded = Reloaded(spreadsheet);
  EXPECT_EQ(BoxOf(loaded, "B2")->Height(), scaled->Height());
  EXPECT_EQ(BoxOf(loaded, "B2")->Width(), scaled->Width());
  EXPECT_EQ(BoxOf(loaded, "C2")->Height(), 55.5);
  EXPECT_EQ(BoxOf(loaded, "C2")->Width(), 96);
}

TEST_F(CommentFiles, AreReadAsOtherProgramsWriteThem) {
  const auto spreadsheet = Open(WithComments(
      CommentOn("B2", "<t>plain</t>") + CommentOn("C3", "<r><t>one </t></r><r><t>two</t></r>", 1) +
          CommentOn("D4", "<r><rPr><sz val=\"9\"/><rFont val=\"Arial\"/></rPr><t>font_x000A_line</t></r>"),
      Box("width:108pt;height:59.25pt", 1, 1) + Box(" position:absolute ; height : 2in;width:144px ", 2, 2) +
          Box("visibility:hidden", 3, 3)));
  EXPECT_EQ(TextOf(spreadsheet, "B2"), "plain");
  EXPECT_EQ(TextOf(spreadsheet, "C3"), "one two");
  EXPECT_EQ(TextOf(spreadsheet, "D4"), "font\nline");
  EXPECT_EQ(BoxOf(spreadsheet, "B2")->Width(), 108);
  EXPECT_EQ(BoxOf(spreadsheet, "B2")->Height(), 59.25);
  EXPECT_EQ(BoxOf(spreadsheet, "C3")->Width(), 108);
  EXPECT_EQ(BoxOf(spreadsheet, "C3")->Height(), 144);
  EXPECT_EQ(BoxOf(spreadsheet, "D4")->Width(), 96) << "a size that is not told is the usual one";
  EXPECT_THAT(AllLosses(spreadsheet), IsEmpty());
}

TEST_F(CommentFiles, KeepAuthorsFontsAndLooksOfALoadedFile) {
  auto spreadsheet = Open(
      WithComments(CommentOn("B2", "<r><rPr><sz val=\"12\"/><rFont val=\"Arial\"/></rPr><t>x</t></r>"),
                   "<v:shape fillcolor=\"#ccffcc\" style=\"width:96pt\"><x:ClientData ObjectType=\"Note\">"
                   "<x:Row>1</x:Row><x:Column>1</x:Column><x:Visible/></x:ClientData></v:shape>"));
  spreadsheet.Save(File("again.xlsx"));
  const std::string look = LookOf(File("again.xlsx"));
  for (const char* expected : {"A. Person", "<sz val=\"12\"/>", "Arial", "#ccffcc", "visibility:visible"})
    EXPECT_THAT(look, HasSubstr(expected));
}

TEST_F(CommentFiles, SayWhichFormatsAreLost) {
  const char* lost = "Sheet \"Prices\": not kept: formats within the text of comments (comments: 1).";
  const struct {
    const char* text;
    bool is_lost;
  } cases[] = {{"<r><rPr><b/><sz val=\"9\"/></rPr><t>A. Person:</t></r><r><t>x</t></r>", true},
               {"<r><rPr><sz val=\"9\"/></rPr><t>a</t></r><r><rPr><sz val=\"20\"/></rPr><t>b</t></r>", true},
               {"<r><rPr><i/></rPr><t>a</t></r>", true},
               {"<r><rPr><sz val=\"9\"/></rPr><t>a</t></r><r><rPr><sz val=\"9\"/></rPr><t>b</t></r>", false}};
  for (const auto& [text, is_lost] : cases) {
    SCOPED_TRACE(text);
    const auto losses = AllLosses(Open(WithComments(CommentOn("A1", text))));
    if (is_lost) {
      EXPECT_THAT(losses, ElementsAre(lost));
    } else {
      EXPECT_THAT(losses, IsEmpty());
    }
  }
}

TEST_F(CommentFiles, LoseOnlyTheirSizesWhenTheBoxesCannotBeRead) {
  Parts parts = WithComments(CommentOn("B2", "<t>x</t>"), Box("width:200pt", 1, 1));
  parts[kBoxPart] = "<xml><br></xml>";
  const auto spreadsheet = Open(parts);
  EXPECT_EQ(TextOf(spreadsheet, "B2"), "x");
  EXPECT_EQ(BoxOf(spreadsheet, "B2")->Width(), 96);
  EXPECT_THAT(AllLosses(spreadsheet),
              ElementsAre("Sheet \"Prices\": not kept: the sizes of comments, which cannot be read."));
}

TEST_F(CommentFiles, SayThatOtherShapesAreLost) {
  EXPECT_THAT(AllLosses(Open(WithComments(CommentOn("B2", "<t>x</t>"),
                                          "<v:shape><x:ClientData ObjectType=\"Button\"/></v:shape>"))),
              ElementsAre("Sheet \"Prices\": not kept: form controls."));
}

TEST_F(CommentFiles, ReadBoxesThatMakeNoSenseAsTheUsualOne) {
  for (const char* style :
       {"width:-5pt;height:0pt", "width:1e300pt;height:5parsec", "width:nanpt", "width", ";;:"}) {
    SCOPED_TRACE(style);
    const auto spreadsheet = Open(WithComments(CommentOn("B2", "<t>x</t>"), Box(style, 1, 1)));
    EXPECT_GT(BoxOf(spreadsheet, "B2")->Width(), 0);
    EXPECT_EQ(BoxOf(spreadsheet, "B2")->Height(), 55.5);
  }
}

TEST_F(CommentFiles, ThatAreDamagedAreRefusedByWhatIsWrong) {
  const struct {
    std::string comment;
    const char* what;
  } cases[] = {
      {CommentOn("XFE1", "<t>x</t>"), "xl/comments1.xml: a comment is on no cell"},
      {CommentOn("", "<t>x</t>"), "xl/comments1.xml: a comment is on no cell"},
      {CommentOn("B2", "<t>x</t>", 2), "xl/comments1.xml: the author of the comment on B2 does not exist"},
      {CommentOn("B2", "<t>x</t>", -1), "xl/comments1.xml: the author of the comment on B2 does not exist"},
      {CommentOn("B2", "<t>" + std::string(40'000, 'x') + "</t>"),
       "xl/comments1.xml: the comment on B2 is longer than a comment can be"},
  };
  for (const auto& [comment, what] : cases) {
    SCOPED_TRACE(what);
    EXPECT_THAT(Refusal(WithComments(comment)), HasSubstr(what));
  }
  Parts parts = WithComments("");
  parts.erase(kCommentPart);
  EXPECT_THAT(Refusal(parts), HasSubstr("xl/comments1.xml: this part is missing"));
}

TEST_F(CommentFiles, CountAgainstTheLimits) {
  std::string comments;
  for (int i = 1; i <= 50; ++i) comments += CommentOn(("A" + std::to_string(i)).c_str(), "<t>some text</t>");
  workbook::LoadLimits limits;
  limits.cells = 20;
  EXPECT_THAT(Refusal(WithComments(comments), limits), HasSubstr("xl/comments1.xml: too many cells"));
  limits = {};
  limits.text_bytes = 100;
  EXPECT_THAT(Refusal(WithComments(comments), limits), HasSubstr("xl/comments1.xml: too much text"));
}

}  // namespace
}  // namespace mirelo::testing
