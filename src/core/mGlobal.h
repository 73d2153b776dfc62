#pragma once

#include <cstdint>
#include <memory>

namespace mirelo {

class CAppSettings;
class CErrorHandler;
class cQTStreaming;

// What is global to the loaded library. The facade's construction creates the two service objects and its
// destruction releases them, so one live cMirelo at a time is the supported arrangement; a second one
// replaces both, unless they are shared.
namespace mGlobal {

// Error 91 while no facade lives.
CErrorHandler& ErrorHandler();
CAppSettings& AppSettings();

// Whether facades that live side by side share the services: the first makes them, and the last that goes
// takes them along. For a process in which macros, a working day and others each hold one. Without it, the
// default and the rule of the class, each facade makes them anew and takes them along.
void ShareServices(bool share);
bool ServicesAreShared();
bool HasServices();

void SetErrorHandler(std::unique_ptr<CErrorHandler> handler);
void SetAppSettings(std::unique_ptr<CAppSettings> settings);

// The index of the spreadsheet's palette for a colour value (red in the low byte): an exact match of 40
// colours, -4142 (no colour) for every other value.
std::int32_t GetColorIndex(std::int32_t color);

// The stream object that the 100 ms timer calls, kept alive by this reference; null lets go of it. One per
// process. The facade's end lets go of it as well, so that no stream outlives the host. Defined in
// core/streaming_object.cpp, apart from the rest, which knows the services only.
void SetStreamingObject(std::shared_ptr<cQTStreaming> object);
std::shared_ptr<cQTStreaming> StreamingObject();

// What that timer runs: the stream object's RaiseEventTimerProc, if there is one. Defined in
// streaming/delivery.cpp, where the stream object's class is known.
void StreamTimerProc();

}  // namespace mGlobal
}  // namespace mirelo
