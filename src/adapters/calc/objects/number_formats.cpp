#include "adapters/calc/objects/number_formats.h"

#include <algorithm>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/util/MalformedNumberFormatException.hpp>
#include <com/sun/star/util/NumberFormat.hpp>
#include <com/sun/star/util/NumberFormatter.hpp>
#include <utility>

#include "adapters/calc/objects/properties.h"
#include "automation/text.h"
#include "spreadsheet/errors.h"

namespace mirelo::calc {

using spreadsheet::FormatKind;
namespace types = css::util::NumberFormat;

NumberFormats::NumberFormats(const Reference<css::uno::XComponentContext>& context,
                             const Reference<css::sheet::XSpreadsheetDocument>& document)
    : context_(context),
      formats_(As<css::util::XNumberFormatsSupplier>(document)->getNumberFormats()),
      types_(As<css::util::XNumberFormatTypes>(formats_)),
      of_codes_("en", "US", ""),
      supplier_(As<css::util::XNumberFormatsSupplier>(document)),
      boolean_key_(types_->getStandardFormat(types::LOGICAL, of_person_)) {
  keys_["General"] = types_->getStandardIndex(of_person_);
}

sal_Int32 NumberFormats::Key(std::string_view code) {
  if (const auto known = keys_.find(code); known != keys_.end()) return known->second;
  sal_Int32 key = 0;
  try {
    // Days stay in the order in which they are written, and then a separator of the person's would mislead.
    const bool is_date = spreadsheet::KindOfFormat(code) == FormatKind::Date;
    key = formats_->addNewConverted(OfficeText(code), of_codes_, is_date ? of_codes_ : of_person_);
  } catch (const css::util::MalformedNumberFormatException&) {
    throw spreadsheet::Refused("LibreOffice cannot read the number format \"" + std::string(code) + "\".");
  }
  keys_.emplace(code, key);
  // The first code of a key stays: the office may have one key for several ways to write it.
  Format format = Read(key);
  format.code = code;
  by_key_.try_emplace(key, std::move(format));
  return key;
}

bool NumberFormats::IsNameOfBoolean(std::string_view text) {
  if (names_of_booleans_.empty()) {
    const auto formatter = css::util::NumberFormatter::create(context_);
    formatter->attachNumberFormatsSupplier(supplier_);
    for (const double value : {0.0, 1.0})
      names_of_booleans_.push_back(TextOf(formatter->convertNumberToString(boolean_key_, value)));
  }
  return std::ranges::any_of(names_of_booleans_, [&](const auto& name) { return EqualText(name, text); });
}

void NumberFormats::Put(const Properties& cells, std::string_view code) {
  if (const auto key = KeyToSet(code)) {
    cells.Set("NumberFormat", *key);
  } else {
    cells.Reset("NumberFormat");
  }
}

std::optional<sal_Int32> NumberFormats::KeyToSet(std::string_view code) {
  const sal_Int32 key = Key(code);
  return key == keys_.find("General")->second ? std::nullopt : std::optional(key);
}

const NumberFormats::Format& NumberFormats::Of(sal_Int32 key) {
  if (const auto known = by_key_.find(key); known != by_key_.end()) return known->second;
  return by_key_.emplace(key, Read(key)).first->second;
}

NumberFormats::Format NumberFormats::Read(sal_Int32 key) const {
  const Properties format(formats_->getByKey(key));
  const auto type = format.Get<sal_Int16>("Type", 0);
  const auto locale = format.Get("Locale", css::lang::Locale());
  if ((type & types::LOGICAL) != 0) return {"General", FormatKind::General, true};
  if (types_->getStandardIndex(locale) == key) return {"General", FormatKind::General, false};
  std::string code = TextOf(format.Get("FormatString", rtl::OUString()));
  if (locale.Language != of_codes_.Language) {
    const sal_Int32 translated = formats_->addNewConverted(OfficeText(code), locale, of_codes_);
    code = TextOf(Properties(formats_->getByKey(translated)).Get("FormatString", rtl::OUString()));
  }
  const FormatKind kind = code == "@"                     ? FormatKind::Text
                          : (type & types::DATETIME) != 0 ? FormatKind::Date
                                                          : FormatKind::Other;
  return {std::move(code), kind, false};
}

}  // namespace mirelo::calc
