#include "adapters/calc/objects/number_formats.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/util/MalformedNumberFormatException.hpp>
#include <com/sun/star/util/NumberFormat.hpp>
#include <com/sun/star/util/XNumberFormatsSupplier.hpp>

#include "adapters/calc/objects/properties.h"
#include "spreadsheet/errors.h"

namespace mirelo::calc {

using spreadsheet::FormatKind;
namespace types = css::util::NumberFormat;

NumberFormats::NumberFormats(const Reference<css::sheet::XSpreadsheetDocument>& document)
    : formats_(As<css::util::XNumberFormatsSupplier>(document)->getNumberFormats()),
      types_(As<css::util::XNumberFormatTypes>(formats_)),
      locale_("en", "US", ""),
      boolean_key_(types_->getStandardFormat(types::LOGICAL, locale_)) {
  keys_["General"] = types_->getStandardIndex(locale_);
}

sal_Int32 NumberFormats::Key(std::string_view code) {
  if (const auto known = keys_.find(code); known != keys_.end()) return known->second;
  sal_Int32 key = formats_->queryKey(OfficeText(code), locale_, false);
  if (key < 0) {
    try {
      key = formats_->addNew(OfficeText(code), locale_);
    } catch (const css::util::MalformedNumberFormatException&) {
      throw spreadsheet::Refused("LibreOffice cannot read the number format \"" + std::string(code) + "\".");
    }
  }
  keys_.emplace(code, key);
  // The first code of a key stays: the office may have one key for several ways to write it.
  Format format = Read(key);
  format.code = code;
  by_key_.try_emplace(key, std::move(format));
  return key;
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
  if (locale.Language != locale_.Language) {
    const sal_Int32 translated = formats_->addNewConverted(OfficeText(code), locale, locale_);
    code = TextOf(Properties(formats_->getByKey(translated)).Get("FormatString", rtl::OUString()));
  }
  const FormatKind kind = code == "@"                     ? FormatKind::Text
                          : (type & types::DATETIME) != 0 ? FormatKind::Date
                                                          : FormatKind::Other;
  return {std::move(code), kind, false};
}

}  // namespace mirelo::calc
