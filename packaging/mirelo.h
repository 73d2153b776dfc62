#pragma once

// All that a program needs which uses the library as the spreadsheet's macros do:
//
//   mirelo::LinuxHost machine;
//   const mirelo::host::HostScope installed(machine);  // before the first object of the library is made
//   mirelo::cMirelo facade;
//   facade.LoadMasPosition();
//   ...
//
// Link with Mirelo::linux, and with Mirelo::workbook for a spreadsheet to hand over as ExcelApplication. A
// program that calls or replaces a port of the machine includes mirelo_host.h as well; one that stands on
// another machine links with Mirelo::mirelo alone.

#include "adapters/workbook/file_stamp.h"
#include "adapters/workbook/load_limits.h"
#include "adapters/workbook/spreadsheet.h"
#include "automation/runtime_error.h"
#include "automation/variant.h"
#include "core/CAppSettings.h"
#include "core/cMirelo.h"
#include "core/cTickerDateTimes.h"
#include "core/mGlobal.h"
#include "core/product.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "host/host.h"
#include "host/message_loop.h"
#include "linux/linux_host.h"
#include "streaming/cQTStreaming.h"
