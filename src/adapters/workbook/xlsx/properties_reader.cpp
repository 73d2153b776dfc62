#include "adapters/workbook/xlsx/properties_reader.h"

#include <array>
#include <span>
#include <string_view>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/xml_part.h"
#include "spreadsheet/text_units.h"

namespace mirelo::workbook {

namespace {

struct Field {
  std::string_view element;
  std::string DocumentProperties::*member;
};

constexpr std::array<Field, 7> kCoreFields{{
    {"title", &DocumentProperties::title},
    {"subject", &DocumentProperties::subject},
    {"creator", &DocumentProperties::author},
    {"keywords", &DocumentProperties::keywords},
    {"description", &DocumentProperties::comments},
    {"category", &DocumentProperties::category},
    {"contentStatus", &DocumentProperties::status},
}};
constexpr std::array<Field, 2> kExtendedFields{{
    {"Manager", &DocumentProperties::manager},
    {"Company", &DocumentProperties::company},
}};

void ReadFields(Package& package, const Relationship* relationship, std::string_view root,
                std::span<const Field> fields, DocumentProperties& properties) {
  if (relationship == nullptr || relationship->external || !package.Has(relationship->target)) return;
  const XmlPart xml(package, relationship->target, root);
  for (const auto& [element, member] : fields)
    properties.*member = CleanText(Text(Child(xml.root(), element)));
}

}  // namespace

DocumentProperties ReadProperties(Package& package, const Relationships& relationships) {
  DocumentProperties properties;
  ReadFields(package, relationships.FindType("core-properties"), "coreProperties", kCoreFields, properties);
  ReadFields(package, relationships.FindType("extended-properties"), "Properties", kExtendedFields,
             properties);
  return properties;
}

}  // namespace mirelo::workbook
