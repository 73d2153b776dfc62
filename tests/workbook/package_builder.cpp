#include "workbook/package_builder.h"

#include <zip.h>

#include <stdexcept>

#include "adapters/workbook/load_limits.h"

namespace mirelo::testing {

namespace {

constexpr std::string_view kHead = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
constexpr std::string_view kMain = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
constexpr std::string_view kOffice = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
constexpr std::string_view kPackage = "http://schemas.openxmlformats.org/package/2006/";

std::string Joined(std::initializer_list<std::string_view> pieces) {
  std::string text(kHead);
  for (const std::string_view piece : pieces) text += piece;
  return text;
}

std::string Relationship(std::string_view id, std::string_view type, std::string_view target) {
  return Joined({"<Relationship Id=\"", id, "\" Type=\"", kOffice, "/", type, "\" Target=\"", target, "\"/>"})
      .substr(kHead.size());
}

void Check(bool ok, const char* what) {
  if (!ok) throw std::runtime_error(what);
}

}  // namespace

Parts SmallWorkbook(std::string_view sheet_data) {
  Parts parts;
  parts["[Content_Types].xml"] =
      Joined({"<Types xmlns=\"", kPackage,
              "content-types\"><Default Extension=\"xml\" ContentType=\"application/xml\"/>",
              "<Default Extension=\"rels\" "
              "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>",
              "<Override PartName=\"/xl/workbook.xml\" ContentType=\"application/",
              "vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml\"/></Types>"});
  parts["_rels/.rels"] =
      Joined({"<Relationships xmlns=\"", kPackage, "relationships\">",
              Relationship("rId1", "officeDocument", "xl/workbook.xml"), "</Relationships>"});
  parts["xl/workbook.xml"] =
      Joined({"<workbook xmlns=\"", kMain, "\" xmlns:r=\"", kOffice,
              "\"><workbookPr/><bookViews><workbookView/></bookViews>",
              "<sheets><sheet name=\"Prices\" sheetId=\"1\" r:id=\"rId1\"/></sheets></workbook>"});
  parts["xl/_rels/workbook.xml.rels"] =
      Joined({"<Relationships xmlns=\"", kPackage, "relationships\">",
              Relationship("rId1", "worksheet", "worksheets/sheet1.xml"),
              Relationship("rId2", "styles", "styles.xml"),
              Relationship("rId3", "sharedStrings", "sharedStrings.xml"),
              Relationship("rId4", "theme", "theme/theme1.xml"), "</Relationships>"});
  parts["xl/styles.xml"] =
      Joined({"<styleSheet xmlns=\"", kMain,
              "\"><fonts><font><sz val=\"11\"/><color theme=\"1\"/><name val=\"Calibri\"/></font>",
              "<font><b/><sz val=\"11\"/><name val=\"Calibri\"/></font></fonts>",
              "<fills><fill><patternFill patternType=\"none\"/></fill><fill><patternFill "
              "patternType=\"gray125\"/></fill>",
              "<fill><patternFill patternType=\"solid\"><fgColor rgb=\"FFFFFF00\"/><bgColor "
              "indexed=\"64\"/></patternFill></fill>",
              "</fills><borders><border/></borders><cellXfs><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" "
              "borderId=\"0\"/>",
              "<xf numFmtId=\"14\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/>",
              "<xf numFmtId=\"0\" fontId=\"1\" fillId=\"2\" borderId=\"0\"/>",
              "<xf numFmtId=\"2\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/></cellXfs></styleSheet>"});
  parts["xl/sharedStrings.xml"] =
      Joined({"<sst xmlns=\"", kMain,
              "\"><si><t>MSFT</t></si><si><t xml:space=\"preserve\"> two words </t></si></sst>"});
  parts["xl/theme/theme1.xml"] = Joined(
      {"<a:theme "
       "xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\"><a:themeElements><a:clrScheme>",
       "<a:dk1><a:sysClr val=\"windowText\" lastClr=\"000000\"/></a:dk1>",
       "<a:lt1><a:sysClr val=\"window\" lastClr=\"FFFFFF\"/></a:lt1><a:dk2><a:srgbClr "
       "val=\"1F497D\"/></a:dk2>",
       "<a:lt2><a:srgbClr val=\"EEECE1\"/></a:lt2><a:accent1><a:srgbClr val=\"4F81BD\"/></a:accent1>",
       "</a:clrScheme></a:themeElements></a:theme>"});
  parts[kSheetPart] = Joined({"<worksheet xmlns=\"", kMain, "\" xmlns:r=\"", kOffice, "\"><sheetData>",
                              sheet_data, "</sheetData></worksheet>"});
  return parts;
}

void InsertBehind(std::string& part, std::string_view mark, std::string_view what) {
  const std::size_t place = part.find(mark);
  Check(place != std::string::npos, "the mark is not in the part");
  part.insert(place + mark.size(), what);
}

void ReplaceIn(std::string& part, std::string_view what, std::string_view with) {
  const std::size_t place = part.find(what);
  Check(place != std::string::npos, "what is to be replaced is not in the part");
  part.replace(place, what.size(), with);
}

void FillFormats(Parts& parts) {
  std::string& styles = parts["xl/styles.xml"];
  std::size_t count = 0;
  for (std::size_t at = styles.find("<xf ", styles.find("<cellXfs")); at < styles.find("</cellXfs>");
       at = styles.find("<xf ", at + 1))
    ++count;
  std::string more;
  for (; count < workbook::LoadLimits().styles; ++count) more += "<xf numFmtId=\"0\"/>";
  styles.insert(styles.find("</cellXfs>"), more);
}

std::vector<char> Zip(const Parts& parts) {
  zip_error_t error;
  zip_error_init(&error);
  zip_source_t* buffer = zip_source_buffer_create(nullptr, 0, 0, &error);
  Check(buffer != nullptr, "no buffer for the archive");
  zip_t* archive = zip_open_from_source(buffer, ZIP_TRUNCATE, &error);
  Check(archive != nullptr, "no archive");
  zip_source_keep(buffer);
  for (const auto& [name, text] : parts) {
    zip_source_t* source = zip_source_buffer(archive, text.data(), text.size(), 0);
    Check(source != nullptr && zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8) >= 0,
          "no entry");
  }
  Check(zip_close(archive) == 0, "the archive cannot be closed");

  zip_stat_t stat;
  Check(zip_source_stat(buffer, &stat) == 0 && zip_source_open(buffer) == 0, "the archive cannot be read");
  std::vector<char> bytes(static_cast<std::size_t>(stat.size));
  Check(zip_source_read(buffer, bytes.data(), bytes.size()) == static_cast<std::int64_t>(bytes.size()),
        "short read");
  zip_source_close(buffer);
  zip_source_free(buffer);
  zip_error_fini(&error);
  return bytes;
}

Parts Unzip(std::string_view bytes) {
  constexpr std::uint64_t kMost = 16 << 20;
  Parts parts;
  zip_source_t* source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, nullptr);
  if (source == nullptr) return parts;
  zip_t* archive = zip_open_from_source(source, ZIP_RDONLY, nullptr);
  if (archive == nullptr) {
    zip_source_free(source);
    return parts;
  }
  for (zip_int64_t i = 0; i < zip_get_num_entries(archive, 0); ++i) {
    zip_stat_t stat;
    if (zip_stat_index(archive, static_cast<zip_uint64_t>(i), 0, &stat) != 0 || stat.size > kMost) continue;
    zip_file_t* file = zip_fopen_index(archive, static_cast<zip_uint64_t>(i), 0);
    if (file == nullptr) continue;
    std::string text(static_cast<std::size_t>(stat.size), '\0');
    const zip_int64_t count = zip_fread(file, text.data(), text.size());
    if (count >= 0) parts[stat.name] = text.substr(0, static_cast<std::size_t>(count));
    zip_fclose(file);
  }
  zip_discard(archive);
  return parts;
}

}  // namespace mirelo::testing
