#include "adapters/calc/views/graphics.h"

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/graphic/GraphicProvider.hpp>
#include <com/sun/star/io/SequenceInputStream.hpp>
#include <cstdint>

namespace mirelo::calc {

css::uno::Reference<css::graphic::XGraphic> Graphics::Of(const std::string& svg) {
  if (svg.empty()) return {};
  if (const auto found = read_.find(svg); found != read_.end()) return found->second;
  const css::uno::Sequence<sal_Int8> bytes(reinterpret_cast<const sal_Int8*>(svg.data()),
                                           static_cast<sal_Int32>(svg.size()));
  css::uno::Sequence<css::beans::PropertyValue> source(1);
  source[0].Name = "InputStream";
  source[0].Value <<= css::io::SequenceInputStream::createStreamFromSequence(context_, bytes);
  const auto graphic = css::graphic::GraphicProvider::create(context_)->queryGraphic(source);
  return read_.emplace(svg, graphic).first->second;
}

}  // namespace mirelo::calc
