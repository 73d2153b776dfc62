#include <gmock/gmock.h>

#include "host/excel/interior.h"
#include "workbook/workbook_files.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Losses : public WorkbookFiles {
 protected:
  std::vector<std::string> With(std::string part, std::string_view mark, std::string_view what) {
    Parts parts = SmallWorkbook();
    InsertBehind(parts[part], mark, what);
    return AllLosses(Open(parts));
  }
  std::vector<std::string> InSheet(std::string_view element) {
    return With(kSheetPart, "</sheetData>", element);
  }
  std::vector<std::string> InWorkbook(std::string_view element) {
    return With("xl/workbook.xml", "</sheets>", element);
  }
  std::vector<std::string> OfCells(std::string_view cells) {
    return AllLosses(Open(SmallWorkbook("<row r=\"1\">" + std::string(cells) + "</row>")));
  }
};

TEST_F(Losses, AreNoneForATableOfCells) {
  EXPECT_THAT(OfCells("<c r=\"A1\" s=\"2\" t=\"s\"><v>0</v></c>"), IsEmpty());
  EXPECT_THAT(workbook::Spreadsheet::New().Losses(), IsEmpty());
}

TEST_F(Losses, NameWhatASheetHoldsBesidesCells) {
  const struct {
    const char* element;
    const char* named;
  } cases[] = {
      {"<mergeCells><mergeCell ref=\"A1:B1\"/></mergeCells>", "merged cells"},
      {"<dataValidations><x/></dataValidations>", "data validation"},
      {"<hyperlinks><x/></hyperlinks>", "hyperlinks"},
      {"<autoFilter ref=\"A1:B9\"/>", "filters"},
      {"<sheetProtection sheet=\"1\"/>", "protection"},
      {"<pageSetup orientation=\"landscape\"/>", "print settings"},
      {"<headerFooter><oddFooter>&amp;P</oddFooter></headerFooter>", "page headers and footers"},
      {"<rowBreaks><x/></rowBreaks>", "page breaks"},
      {"<extLst><x/></extLst>", "features of newer programs"},
      {"<novelty><x/></novelty>", "what the file calls \"novelty\""},
  };
  for (const auto& [element, named] : cases) {
    SCOPED_TRACE(element);
    EXPECT_THAT(InSheet(element), ElementsAre(std::string("Sheet \"Prices\": not kept: ") + named + "."));
  }
}

TEST_F(Losses, AreNoneOfElementsThatHoldNothing) {
  EXPECT_THAT(InSheet("<hyperlinks/><headerFooter/><novelty/>"), IsEmpty());
  EXPECT_THAT(InWorkbook("<workbookProtection/><definedNames/>"), IsEmpty());
}

TEST_F(Losses, NameThePartsThatASheetRefersTo) {
  const struct {
    const char* type;
    const char* named;
  } cases[] = {{"threadedComment", "threads of comments"},
               {"table", "tables"},
               {"pivotTable", "pivot tables"},
               {"printerSettings", "print settings"},
               {"novelty", "what the file calls \"novelty\""}};
  for (const auto& [type, named] : cases) {
    SCOPED_TRACE(type);
    Parts parts = SmallWorkbook();
    parts["xl/worksheets/_rels/sheet1.xml.rels"] =
        std::string("<Relationships><Relationship Id=\"rId1\" Type=\"http://x/") + type +
        "\" Target=\"../x.xml\"/></Relationships>";
    EXPECT_THAT(AllLosses(Open(parts)),
                ElementsAre(std::string("Sheet \"Prices\": not kept: ") + named + "."));
  }
}

TEST_F(Losses, NameWhatADrawingHoldsBesidesCharts) {
  const struct {
    const char* shape;
    const char* named;
  } cases[] = {
      {"<xdr:pic><x/></xdr:pic>", "pictures"},
      {"<xdr:sp><x/></xdr:sp>", "shapes"},
      {"<xdr:cxnSp><x/></xdr:cxnSp>", "shapes"},
      {"<xdr:grpSp><x/></xdr:grpSp>", "groups of shapes"},
      {"<xdr:graphicFrame><a:graphic><a:graphicData uri=\"x\"/></a:graphic></xdr:graphicFrame>", "shapes"},
      {"<mc:AlternateContent><x/></mc:AlternateContent>", "shapes of newer programs"},
      {"<xdr:novelty><x/></xdr:novelty>", "what the file calls \"novelty\""}};
  for (const auto& [shape, named] : cases) {
    SCOPED_TRACE(shape);
    Parts parts = SmallWorkbook();
    parts["xl/worksheets/_rels/sheet1.xml.rels"] =
        "<Relationships><Relationship Id=\"rId1\" Type=\"http://x/drawing\" "
        "Target=\"../drawings/drawing1.xml\"/></Relationships>";
    parts["xl/drawings/drawing1.xml"] =
        std::string(
            "<xdr:wsDr xmlns:xdr=\"urn:x\" xmlns:a=\"urn:a\" xmlns:mc=\"urn:m\"><xdr:twoCellAnchor>") +
        shape + "<xdr:clientData/></xdr:twoCellAnchor></xdr:wsDr>";
    EXPECT_THAT(AllLosses(Open(parts)),
                ElementsAre(std::string("Sheet \"Prices\": not kept: ") + named + "."));
  }
}

TEST_F(Losses, NameWhatAWorkbookHoldsBesidesSheets) {
  EXPECT_THAT(InWorkbook("<definedNames><definedName name=\"x\"/></definedNames>"),
              ElementsAre("Workbook: not kept: defined names."));
  EXPECT_THAT(InWorkbook("<calcPr/><extLst/>"), IsEmpty());
  EXPECT_THAT(With("xl/_rels/workbook.xml.rels",
                   "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">",
                   "<Relationship Id=\"v\" Type=\"http://x/vbaProject\" Target=\"vbaProject.bin\"/>"),
              ElementsAre("Workbook: not kept: macros."));
  EXPECT_THAT(
      With("_rels/.rels",
           "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">",
           "<Relationship Id=\"c\" Type=\"http://x/custom-properties\" Target=\"docProps/custom.xml\"/>"),
      ElementsAre("Workbook: not kept: custom document properties."));
}

TEST_F(Losses, CountFormulas) {
  EXPECT_THAT(
      OfCells("<c r=\"A1\"><f>1+1</f><v>2</v></c>"),
      ElementsAre("Sheet \"Prices\": not kept: formulas (cells: 1), which become the last value computed."));
  EXPECT_THAT(
      OfCells("<c r=\"A1\"><f>1+1</f><v>2</v></c><c r=\"B1\"><f t=\"shared\" si=\"0\"/><v>3</v></c>"),
      ElementsAre("Sheet \"Prices\": not kept: formulas (cells: 2), which become the last value computed."));
}

TEST_F(Losses, CountTextsWithSeveralFormats) {
  EXPECT_THAT(OfCells("<c r=\"A1\" t=\"inlineStr\"><is><r><rPr><b/></rPr><t>a</t></r></is></c>"),
              ElementsAre("Sheet \"Prices\": not kept: several formats within one text (cells: 1)."));
}

TEST_F(Losses, CountErrorsOfNewerPrograms) {
  EXPECT_THAT(
      OfCells("<c r=\"A1\" t=\"e\"><v>#SPILL!</v></c>"),
      ElementsAre("Sheet \"Prices\": not kept: errors of newer programs (cells: 1), which become #VALUE!."));
}

TEST_F(Losses, NameLooksThatAreNotKept) {
  EXPECT_THAT(With("xl/styles.xml", "<fills>", "<fill><gradientFill/></fill>"),
              ElementsAre("Fills with a gradient are not kept."));
  EXPECT_THAT(With("xl/styles.xml", "<fonts>", "<font><vertAlign val=\"superscript\"/></font>"),
              ElementsAre("Superscript, subscript, outline or shadow of letters is not kept."));
  EXPECT_THAT(InSheet("<sheetViews><sheetView zoomScale=\"80\"/></sheetViews>"),
              ElementsAre("Sheet \"Prices\": not kept: view settings such as zoom and grid lines."));
  EXPECT_THAT(InSheet("<sheetPr><tabColor rgb=\"FFFF0000\"/></sheetPr>"),
              ElementsAre("Sheet \"Prices\": not kept: the colour of the tab."));
}

TEST_F(Losses, NameSheetsOfOtherKinds) {
  Parts parts = SmallWorkbook();
  InsertBehind(parts["xl/workbook.xml"], "<sheets>", "<sheet name=\"Dialog1\" sheetId=\"2\" r:id=\"rId9\"/>");
  InsertBehind(
      parts["xl/_rels/workbook.xml.rels"], "relationships\">",
      "<Relationship Id=\"rId9\" Type=\"http://x/dialogsheet\" Target=\"dialogsheets/sheet1.xml\"/>");
  EXPECT_THAT(AllLosses(Open(parts)),
              ElementsAre("Workbook: not kept: \"Dialog1\", a sheet of the kind \"dialogsheet\"."));
}

TEST_F(Losses, NameSheetsThatMustBeRenamed) {
  Parts parts = SmallWorkbook();
  ReplaceIn(parts["xl/workbook.xml"], "name=\"Prices\"", "name=\"a/b\"");
  const auto spreadsheet = Open(parts);
  EXPECT_EQ(SheetOf(spreadsheet)->Name(), "Sheet1");
  EXPECT_EQ(AllLosses(spreadsheet).size(), 1u);
}

TEST_F(Losses, EndAfterAHundred) {
  std::string elements;
  for (int i = 0; i < 1000; ++i) elements += "<novelty" + std::to_string(i) + " on=\"1\"/>";
  const auto losses = InSheet(elements);
  EXPECT_EQ(losses.size(), 101u);
  EXPECT_EQ(losses.back(), "Workbook: not kept: other things as well.");
}

TEST_F(Losses, AreNoneWhenTheWorkbookIsReadBack) {
  auto spreadsheet = workbook::Spreadsheet::New();
  const auto sheet = SheetOf(spreadsheet);
  sheet->Range("A1:A3")->Value("#N/A");
  sheet->Range("B1")->Value("1/20/2011");
  sheet->Range("C1:D9")->Interior()->ColorIndex(6);
  EXPECT_THAT(Reloaded(spreadsheet).Losses(), IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
