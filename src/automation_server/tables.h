#pragma once

#include "automation_server/class.h"

namespace mirelo::automation_server {

// The tables, each in a source named like it.
Class FacadeClass();         // cMirelo
Class StreamClass();         // cQTStreaming
Class QuoteClass();          // cQTData
Class QuotesClass();         // cQTDatas
Class TickerStateClass();    // cTickerDateTime
Class TickerStatesClass();   // cTickerDateTimes
Class SettingsStoreClass();  // CAppSettings
Class TransferClass();       // WinInet

}  // namespace mirelo::automation_server
