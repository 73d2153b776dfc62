#pragma once

#include <string>
#include <string_view>

#include "core/known_setting.h"
#include "forms/button.h"
#include "forms/check_box.h"
#include "forms/combo_box.h"
#include "forms/form.h"
#include "forms/grid.h"
#include "forms/list_box.h"
#include "forms/scroll_bar.h"
#include "forms/simple_controls.h"
#include "forms/tab.h"
#include "forms/text_box.h"

namespace mirelo {

// The controls of the settings dialog, in tab order.
struct SettingsControls : forms::Form {
  using Form::Form;

  // From the catalogue: the ends of scroll bars, but for those of VScrollChartPoints, which reach further
  // down and less far up than what the setting may be; and texts before the dialog is filled.
  static constexpr const Setting& kRows = catalogue::Row(catalogue::kSettings, "RowsLimit");
  static constexpr const Setting& kSeconds = catalogue::Row(catalogue::kSettings, "Seconds");
  static constexpr const Setting& kPlaces = catalogue::Row(catalogue::kSettings, "txtDecimalPlaces");
  static constexpr std::string_view kAddress = catalogue::DialogDefault(catalogue::kSettings, "Webaddress");
  static constexpr std::string_view kHttpPort = catalogue::DialogDefault(catalogue::kSettings, "HTTPPort");
  static constexpr std::string_view kSocketPort =
      catalogue::DialogDefault(catalogue::kSettings, "SocketPort");

  forms::Panel C1Elastic1{*this, "C1Elastic1", nullptr};
  forms::Tab C1TTickersSettings{*this, "C1TTickersSettings", &C1Elastic1,
                                "&Tickers|&Settings|&Charting|&Fields"};

  forms::Panel C1ElaTickers{*this, "C1ElaTickers", &C1TTickersSettings};
  forms::TextBox txtTicker{*this, "txtTicker", &C1ElaTickers};
  forms::Button ButAdd{*this, "ButAdd", &C1ElaTickers, "Add"};
  forms::Button ButTickerUp{*this, "ButTickerUp", &C1ElaTickers};
  forms::Button ButTickerDown{*this, "ButTickerDown", &C1ElaTickers};
  forms::Button ButDel{*this, "ButDel", &C1ElaTickers};
  forms::Button ButImport{*this, "ButImport", &C1ElaTickers, "Import"};
  forms::Button ButExport{*this, "ButExport", &C1ElaTickers, "Export"};
  forms::Button ButSort{*this, "ButSort", &C1ElaTickers, "Sort Tickers"};
  forms::Grid FG{*this, "FG", &C1ElaTickers};
  forms::CheckBox chkVerTable{*this, "chkVerTable", &C1ElaTickers, "Add vertical quotes table"};
  forms::CheckBox chkLimitRows{*this, "chkLimitRows", &C1ElaTickers, "Limit number of rows to:"};
  forms::TextBox txtRows{*this, "txtRows", &C1ElaTickers};
  forms::ScrollBar VScrollRows{*this, "VScrollRows", &C1ElaTickers, kRows.greatest, kRows.least};
  forms::Image ImageChart{*this, "ImageChart", &C1ElaTickers, "chart"};

  forms::Panel C1ElaSettings{*this, "C1ElaSettings", &C1TTickersSettings};
  forms::Label lblTimingOptions{*this, "lblTimingOptions", &C1ElaSettings, "Timing Options:"};
  forms::CheckBox chkUpdOrNot{*this, "chkUpdOrNot", &C1ElaSettings, "Update every"};
  forms::TextBox txtSec{*this, "txtSec", &C1ElaSettings};
  forms::ScrollBar VScrollSec{*this, "VScrollSec", &C1ElaSettings, kSeconds.greatest, kSeconds.least};
  forms::Label lblSeconds{*this, "lblSeconds", &C1ElaSettings, "seconds."};
  forms::ComboBox ComQuoteSource{*this, "ComQuoteSource", &C1ElaSettings, forms::ComboBox::Style::DropDown,
                                 true};
  forms::Button ButUpDate{*this, "ButUpDate", &C1ElaSettings, "UpDate"};
  forms::Label lblStatus{*this, "lblStatus", &C1ElaSettings};
  forms::Line Line1{*this, "Line1", &C1ElaSettings};
  forms::TextBox txtWebAddress{*this, "txtWebAddress", &C1ElaSettings, std::string(kAddress)};
  forms::TextBox txtHTTPPort{*this, "txtHTTPPort", &C1ElaSettings, std::string(kHttpPort)};
  forms::TextBox txtSocketPort{*this, "txtSocketPort", &C1ElaSettings, std::string(kSocketPort)};
  forms::ComboBox ComDisplayTimezone{*this, "ComDisplayTimezone", &C1ElaSettings};
  forms::ComboBox ComDisplayOffset{*this, "ComDisplayOffset", &C1ElaSettings};
  forms::Line Line2{*this, "Line2", &C1ElaSettings};
  forms::CheckBox chkStyleOrNot{*this, "chkStyleOrNot", &C1ElaSettings, "Table style"};
  forms::ComboBox ComStyle{*this, "ComStyle", &C1ElaSettings};
  forms::TextBox txtOn{*this, "txtOn", &C1ElaSettings};
  forms::Button ButOn{*this, "ButOn", &C1ElaSettings, "On"};
  forms::TextBox txtOff{*this, "txtOff", &C1ElaSettings};
  forms::Button ButOff{*this, "ButOff", &C1ElaSettings, "Off"};
  forms::TextBox txtDecimalPlaces{*this, "txtDecimalPlaces", &C1ElaSettings};
  forms::ScrollBar VScrollDecimalplaces{*this, "VScrollDecimalplaces", &C1ElaSettings, kPlaces.greatest,
                                        kPlaces.least};
  forms::Label lblExample{*this, "lblExample", &C1ElaSettings, "2.12"};
  forms::TextBox txtVerticalSheet{*this, "txtVerticalSheet", &C1ElaSettings};
  forms::Label lblTicker{*this, "lblTicker", &C1ElaSettings, "(Ticker)"};
  forms::Label lblExampleSheet{*this, "lblExampleSheet", &C1ElaSettings, "Quotes_Vertical(Ticker)"};

  forms::Panel C1ElaCharting{*this, "C1ElaCharting", &C1TTickersSettings};
  forms::CheckBox chkBuildCharts{*this, "chkBuildCharts", &C1ElaCharting, "Build charts"};
  forms::CheckBox chkChartStyle{*this, "chkChartStyle", &C1ElaCharting, "Chart style:"};
  forms::ComboBox ComChartStyle{*this, "ComChartStyle", &C1ElaCharting};
  forms::TextBox txtChartPoints{*this, "txtChartPoints", &C1ElaCharting};
  forms::ScrollBar VScrollChartPoints{*this, "VScrollChartPoints", &C1ElaCharting, 100, 0};
  forms::CheckBox chkAddYAxis{*this, "chkAddYAxis", &C1ElaCharting, "Add Y Axis"};
  forms::CheckBox chkColorPoints{*this, "chkColorPoints", &C1ElaCharting, "Color Points"};
  forms::CheckBox chkGreyOut{*this, "chkGreyOut", &C1ElaCharting, "Use grey-outing"};

  forms::Panel C1ElaFields{*this, "C1ElaFields", &C1TTickersSettings};
  forms::Label lblAvailableColums{*this, "lblAvailableColums", &C1ElaFields, "Available columns"};
  forms::ListBox ListLeft{*this, "ListLeft", &C1ElaFields};
  forms::Button ButRight{*this, "ButRight", &C1ElaFields};
  forms::Button ButAllRight{*this, "ButAllRight", &C1ElaFields};
  forms::Button ButLeft{*this, "ButLeft", &C1ElaFields};
  forms::Button ButAllLeft{*this, "ButAllLeft", &C1ElaFields};
  forms::Label lblColumsTo{*this, "lblColumsTo", &C1ElaFields, "Columns to view"};
  forms::ListBox ListRight{*this, "ListRight", &C1ElaFields};
  forms::Button ButUp{*this, "ButUp", &C1ElaFields};
  forms::Button ButDown{*this, "ButDown", &C1ElaFields};

  forms::Button ButGo{*this, "ButGo", &C1Elastic1, "Go"};
  forms::Button ButClose{*this, "ButClose", &C1Elastic1, "Close"};
  forms::Button ButCancel{*this, "ButCancel", &C1Elastic1, "Cancel"};
};

}  // namespace mirelo
