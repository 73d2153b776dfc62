#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace mirelo {

// A quote source: the file that QuoteTracker describes it in, and the text that people pick it by.
struct QuoteSourceRow {
  std::string_view file;
  std::string_view text;
};

// The quote sources that are offered until a list has been fetched from QuoteTracker, by their files. A blank
// in front of a text makes it sort first; the bracket that is left open is the provider's own.
inline constexpr std::array<QuoteSourceRow, 80> kFirstSources{{
    {"ABAX_FR.SDF", "Abax (France) - RealTime (Customers Only)"},
    {"ACTIVOBANK_PT.SDF", "ActivoBank (Portugal) - RealTime (Customers Only)"},
    {"ADVFNSTR.SDF", " ADVFN - STREAMING RealTime (Subscription)"},
    {"AMSTR.SDF", "TD AMERITRADE - Streamer (Clients Only)"},
    {"AMTRADE.SDF", "TD AMERITRADE - Snapshot (Clients Only)"},
    {"ANDREWEST_AU.SDF", "Andrew West (Australia) - RealTime (Clients Only)"},
    {"ASKRESEARCH.SDF", "Ask Research - RealTime (Subscribers Only)"},
    {"ASX_AU.SDF", "ASX (Australia) - Delayed"},
    {"BANCAM.SDF", "Bancam - RealTime (Customers Only)"},
    {"CAPITOL_FR.SDF", "Capitol (France) - RealTime (Customers Only)"},
    {"CHOICETRADE.SDF", "ChoiceTrade - RealTime (Customers Only)"},
    {"CIBC_CA.SDF", "CIBC (Canada) - RealTime (Customers Only)"},
    {"COMDIRECT_DE.SDF", "comdirect (Germany) - Delayed"},
    {"COMSEC_AU.SDF", "ComSec (Australia) - RealTime (Clients Only)"},
    {"COTATIONS_FR.SDF", "Cotations (France) RealTime (Subscribers Only"},
    {"CSWATCH.SDF", "CSWatch - RealTime (Subscribers Only)"},
    {"CSWATCHDELAYED.SDF", "CSWatch - Delayed"},
    {"CSWSTR.SDF", " CSWatch - STREAMING RealTime (Subscription)"},
    {"DIRABA_DE.SDF", "Diraba (Germany) - RealTime (Customers Only)"},
    {"DIRECTA_IT.SDF", "Directa (Italy) - RealTime (Customers Only)"},
    {"DIRECTBR_AU.SDF", "Direct Broking (Australia) - RealTime (Clients Only)"},
    {"DIRECTBR_NZ.SDF", "Direct Broking (New Zealand) - RealTime (Clients Only)"},
    {"DIRFIN_FR.SDF", "Direct Finance (France) - RealTime (Customers Only)"},
    {"DISNAT_CA.SDF", "Disnat (Canada) - RealTime (Customers Only)"},
    {"DISNAT_CAM.SDF", "Disnat (Canada) - Montreal RealTime (Customers Only)"},
    {"DISNAT_CAV.SDF", "Disnat (Canada) - Venture RealTime (Customers Only)"},
    {"EFINET.SDF", "EFI Net - Delayed"},
    {"ENORTHERN.SDF", "eNorthern - RealTime (Clients Only)"},
    {"ESIGNAL.SDF", "eSignal STREAMING (Customers)"},
    {"ETRADESTR.SDF", "E*TRADE - Streamer (Clients Only)"},
    {"ETRADE_UK.SDF", "E*TRADE (UK) - RealTime (Customers Only)"},
    {"FACTOR_BR.SDF", "Factor (Brazil) - RealTime (Customers Only)"},
    {"FIDELITY.SDF", "Fidelity - RealTime (Clients Only)"},
    {"FINANCIALINE.SDF", "FinanciaLine - Delayed"},
    {"FINECO_IT.SDF", "Fineco (Italy) - RealTime (Customers Only)"},
    {"FIRSTRADE.SDF", "Firstrade - Snapshot (Clients Only)"},
    {"FIRSTSTR.SDF", "Firstrade - Streamer (Clients Only)"},
    {"FOOL_UK.SDF", "Fool (UK) - Delayed"},
    {"FORTUNEO_FR.SDF", "Fortuneo (France) - RealTime (Customers Only)"},
    {"GLOB.SDF", "Glob - Delayed"},
    {"HSBC_CA.SDF", "HSBC (Canada) - RealTime (Customers Only)"},
    {"HSBC_CAU.SDF", "HSBC (Canada) - US Quotes (Customers Only)"},
    {"IBSTR.SDF", " IB - STREAMING RealTime (Clients Only)"},
    {"IMARKEDETDL_NO.SDF", "iMarkedet (Norway) - Delayed"},
    {"IMARKEDET_NO.SDF", "iMarkedet (Norway) - RealTime (Subscribers Only)"},
    {"INTERQ.SDF", "InterQuote - RealTime (Subscription)"},
    {"INVESTRADE.SDF", "Investrade - RealTime (Clients Only)"},
    {"INVESTSHOPRT_BR.SDF", "InvestShop (Brazil) - RealTime (Customers Only)"},
    {"INVESTSHOP_BR.SDF", "InvestShop (Brazil) - Delayed"},
    {"IQFEED.SDF", " IQFeed US - STREAMING RealTime (Subscription)"},
    {"JSE.SDF", "JSE (South Africa) - Delayed"},
    {"LOWTRADES.SDF", "LowTrades - RealTime (Clients Only)"},
    {"LS_DE.SDF", "L&S (Germany) - RealTime"},
    {"MACQUARIE_AU.SDF", "Macquarie (Australia) - RealTime (Clients Only)"},
    {"MARKETFEED.SDF", "MarketFeed - RealTime (Subscription)"},
    {"MBT.SDF", "MBT - RealTime (Clients Only)"},
    {"MONEY.SDF", "Money - Delayed"},
    {"MONEYSTR.SDF", " Money - STREAMING RealTime (Subscription)"},
    {"NAFT_GR.SDF", "Naft (Greece) - Delayed"},
    {"NATIONAL_AU.SDF", "National (Australia) - RealTime (Clients Only)"},
    {"NETWEALTH_AU.SDF", "NetWealth (Australia) - RealTime (Clients Only)"},
    {"OCSEC.SDF", "OC Securities"},
    {"OPTXPRSTR.SDF", "optXpr - Streamer (Clients Only)"},
    {"PCQUOTE.SDF", "PC Quote - RealTime (Subscribers Only)"},
    {"PROPHET.SDF", "Prophet - Snapshot (Subscribers Only)"},
    {"PROPHETSTR.SDF", " Prophet - STREAMING RealTime (Subscription)"},
    {"QCOM.SDF", "Q.com - Delayed"},
    {"RMLPN.SDF", "RML Trading - Penson"},
    {"ROYALBANK_CA.SDF", "Royal Bank (Canada) - RealTime (Customers Only)"},
    {"ROYALBANK_CAU.SDF", "Royal Bank (Canada) - US Quotes (Customers Only)"},
    {"SCHWAB.SDF", "Schwab - RealTime (Clients Only)"},
    {"SCOTTNEW.SDF", "Scott - RealTime (Clients Only)"},
    {"SUNCORPMETWAY_AU.SDF", "Suncorp Metway (Australia) - RealTime (Clients Only)"},
    {"SWISS.SDF", "Alpstein Finance (delayed)"},
    {"TFPN_CA.SDF", "TF Penson (Canada) - RealTime (Clients Only)"},
    {"WALLETWATCH.SDF", "WalletWatch - Delayed"},
    {"WEBLINK_AU.SDF", "WebLink (Australia) - RealTime (Subscribers Only)"},
    {"WHOUSE_CA.SDF", "W House (Canada) - RealTime (Customers Only)"},
    {"WHOUSE_UK.SDF", "W House (UK) - RealTime (Customers Only)"},
    {"WSTITALIA.SDF", "WST Italia (Italy) - RealTime (Customers Only)"},
}};

// The source that is picked at first.
inline constexpr std::string_view kFirstSourceFile = "SWISS.SDF";
inline constexpr std::string_view kFirstSourceText = [] {
  const auto is_first = [](const QuoteSourceRow& row) { return row.file == kFirstSourceFile; };
  return std::find_if(kFirstSources.begin(), kFirstSources.end(), is_first)->text;
}();

}  // namespace mirelo
