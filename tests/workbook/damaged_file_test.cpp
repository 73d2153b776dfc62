#include <random>

#include "automation/runtime_error.h"
#include "workbook/workbook_files.h"

namespace mirelo::testing {
namespace {

class DamagedFile : public WorkbookFiles {
 protected:
  void ExpectRefusal(const Parts& parts, std::string_view part, std::string_view what) {
    const std::string refusal = Refusal(parts);
    EXPECT_NE(refusal.find("quotes.xlsx"), std::string::npos) << refusal;
    EXPECT_NE(refusal.find(part), std::string::npos) << refusal;
    EXPECT_NE(refusal.find(what), std::string::npos) << refusal;
  }

  // Whether these bytes open, and if they do not, that they are refused properly.
  bool Opens(const std::vector<char>& bytes) {
    WriteBytes(File(), {bytes.data(), bytes.size()});
    try {
      workbook::Spreadsheet::Open(File());
      return true;
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.Number(), 1004);
      EXPECT_NE(error.Description().find("quotes.xlsx: "), std::string::npos) << error.Description();
      return false;
    }
  }
};

TEST_F(DamagedFile, IsRefusedByTheNameOfAMissingPart) {
  for (const char* part : {"xl/styles.xml", "xl/sharedStrings.xml", "xl/theme/theme1.xml", kSheetPart}) {
    SCOPED_TRACE(part);
    Parts parts = SmallWorkbook();
    parts.erase(part);
    ExpectRefusal(parts, part, "missing");
  }
  for (const char* part : {"xl/workbook.xml", "_rels/.rels"}) {
    SCOPED_TRACE(part);
    Parts parts = SmallWorkbook();
    parts.erase(part);
    ExpectRefusal(parts, "archive", "no .xlsx workbook");
  }
}

TEST_F(DamagedFile, IsRefusedByTheNameOfAPartThatIsNoXml) {
  for (const char* part : {"xl/workbook.xml", "xl/styles.xml", "xl/sharedStrings.xml", "xl/theme/theme1.xml",
                           kSheetPart, "_rels/.rels", "xl/_rels/workbook.xml.rels"}) {
    SCOPED_TRACE(part);
    Parts parts = SmallWorkbook();
    parts[part].resize(parts[part].size() - 5);
    ExpectRefusal(parts, part, "no well-formed XML");
    parts[part] = "";
    ExpectRefusal(parts, part, "no well-formed XML");
    parts[part] = "<other/>";
    ExpectRefusal(parts, part, "root element");
  }
}

TEST_F(DamagedFile, IsRefusedByTheCellAtFault) {
  const struct {
    const char* rows;
    const char* what;
  } cases[] = {
      {R"(<row r="1"><c r="A1"><v>price</v></c></row>)", "cell A1: \"price\" is no number"},
      {R"(<row r="1"><c r="A1"><v>inf</v></c></row>)", "is no number"},
      {R"(<row r="1"><c r="A1"><v>nan</v></c></row>)", "is no number"},
      {R"(<row r="1"><c r="A1"><v>1e999</v></c></row>)", "is no number"},
      {R"(<row r="1"><c r="A1"><v>1 2</v></c></row>)", "is no number"},
      {R"(<row r="1"><c r="B1" t="s"><v>2</v></c></row>)", "cell B1: text 2 does not exist"},
      {R"(<row r="1"><c r="B1" t="s"><v>-1</v></c></row>)", "text -1 does not exist"},
      {R"(<row r="1"><c r="B1" t="s"><v>x</v></c></row>)", "text x does not exist"},
      {R"(<row r="1"><c r="A1" t="d"><v>soon</v></c></row>)", "\"soon\" is no date"},
      {R"(<row r="1"><c r="A1" t="d"><v>2011-13-01</v></c></row>)", "is no date"},
      {R"(<row r="1"><c r="A1" t="q"><v>1</v></c></row>)", "type \"q\" does not exist"},
      {R"(<row r="1"><c r="A1" s="4"/></row>)", "format \"4\" does not exist"},
      {R"(<row r="1"><c r="A1" s="-1"/></row>)", "format \"-1\" does not exist"},
      {R"(<row r="1"><c r="A2"/></row>)", "cell \"A2\" of row 1"},
      {R"(<row r="1"><c r="XFE1"/></row>)", "cell \"XFE1\" of row 1"},
      {R"(<row r="1"><c r="A1:B1"/></row>)", "cell \"A1:B1\" of row 1"},
      {R"(<row r="1"><c r="B1"/><c r="A1"/></row>)", "cell \"A1\" of row 1"},
      {R"(<row r="1"><c r="A1"/><c r="A1"/></row>)", "cell \"A1\" of row 1"},
      {R"(<row r="1"><c r="XFD1"/><c/></row>)", "cell \"\" of row 1"},
      {R"(<row r="2"/><row r="1"/>)", "row \"1\""},
      {R"(<row r="2"/><row r="2"/>)", "row \"2\""},
      {R"(<row r="0"/>)", "row \"0\""},
      {R"(<row r="1048577"/>)", "row \"1048577\""},
      {R"(<row r="1048576"/><row/>)", "row \"\""},
      {R"(<row r="x"/>)", "row \"x\""},
  };
  for (const auto& [rows, what] : cases) {
    SCOPED_TRACE(rows);
    ExpectRefusal(SmallWorkbook(rows), kSheetPart, what);
  }
}

TEST_F(DamagedFile, IsRefusedByOtherFaults) {
  const struct {
    const char* part;
    const char* replaced;
    const char* by;
    const char* what;
  } cases[] = {
      {"xl/workbook.xml", "r:id=\"rId1\"", "r:id=\"rId7\"", "sheet \"Prices\" has no part"},
      {"xl/workbook.xml", "<sheet name=\"Prices\" sheetId=\"1\" r:id=\"rId1\"/>", "", "no worksheet"},
      {"xl/styles.xml", "fontId=\"1\"", "fontId=\"9\"", "fontId 9 does not exist"},
      {"xl/styles.xml", "fillId=\"2\"", "fillId=\"9\"", "fillId 9 does not exist"},
      {"xl/styles.xml", "<fonts>", "<numFmts><numFmt formatCode=\"0\"/></numFmts><fonts>", "has no number"},
      {kSheetPart, "<sheetData>", "<cols><col min=\"3\" max=\"2\"/></cols><sheetData>", "list of columns"},
      {kSheetPart, "<sheetData>", "<cols><col min=\"1\" max=\"16385\"/></cols><sheetData>",
       "list of columns"},
  };
  for (const auto& [part, replaced, by, what] : cases) {
    SCOPED_TRACE(what);
    Parts parts = SmallWorkbook();
    ReplaceIn(parts[part], replaced, by);
    ExpectRefusal(parts, part, what);
  }
}

TEST_F(DamagedFile, IsRefusedWhereverItIsCutOff) {
  const std::vector<char> whole = Zip(SmallWorkbook("<row r=\"1\"><c r=\"A1\"><v>1</v></c></row>"));
  ASSERT_TRUE(Opens(whole));
  for (std::size_t length = 0; length < whole.size(); length += 7) {
    SCOPED_TRACE(length);
    EXPECT_FALSE(Opens({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)}));
  }
}

TEST_F(DamagedFile, IsRefusedOrReadWhateverByteIsWrong) {
  const std::vector<char> whole = Zip(SmallWorkbook("<row r=\"1\"><c r=\"A1\"><v>1</v></c></row>"));
  std::mt19937 random(16239);
  int refused = 0;
  for (int round = 0; round < 500; ++round) {
    std::vector<char> bytes = whole;
    bytes[random() % bytes.size()] = static_cast<char>(random());
    if (!Opens(bytes)) ++refused;
  }
  EXPECT_GT(refused, 100);
}

TEST_F(DamagedFile, IsRefusedWhenItIsEncrypted) {
  std::vector<char> bytes = Zip(SmallWorkbook());
  // Bit 0 of an entry's flags: at offset 6 of its local header, 8 of its entry in the directory.
  const std::string_view view(bytes.data(), bytes.size());
  for (std::size_t at = view.find("PK\x03\x04"); at != view.npos; at = view.find("PK\x03\x04", at + 1))
    bytes[at + 6] |= 1;
  for (std::size_t at = view.find("PK\x01\x02"); at != view.npos; at = view.find("PK\x01\x02", at + 1))
    bytes[at + 8] |= 1;
  EXPECT_FALSE(Opens(bytes));
}

}  // namespace
}  // namespace mirelo::testing
