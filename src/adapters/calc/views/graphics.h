#pragma once

#include <com/sun/star/graphic/XGraphic.hpp>
#include <com/sun/star/uno/Reference.hxx>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <map>
#include <string>

namespace mirelo::calc {

namespace css = com::sun::star;

// Pictures as the office shows them, each read once.
class Graphics {
 public:
  explicit Graphics(const css::uno::Reference<css::uno::XComponentContext>& context) : context_(context) {}

  // The picture of a text of SVG; null for an empty one.
  css::uno::Reference<css::graphic::XGraphic> Of(const std::string& svg);

 private:
  css::uno::Reference<css::uno::XComponentContext> context_;
  std::map<std::string, css::uno::Reference<css::graphic::XGraphic>> read_;
};

}  // namespace mirelo::calc
