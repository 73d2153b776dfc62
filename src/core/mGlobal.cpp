#include "core/mGlobal.h"

#include <memory>
#include <utility>

#include "automation/runtime_error.h"
#include "core/CAppSettings.h"
#include "diagnostics/CErrorHandler.h"

namespace mirelo::mGlobal {

namespace {

std::unique_ptr<CErrorHandler> error_handler;
std::unique_ptr<CAppSettings> app_settings;
bool services_are_shared = false;

}  // namespace

CErrorHandler& ErrorHandler() {
  if (!error_handler) throw Errors::ObjectNotSet();
  return *error_handler;
}

CAppSettings& AppSettings() {
  if (!app_settings) throw Errors::ObjectNotSet();
  return *app_settings;
}

void ShareServices(bool share) { services_are_shared = share; }

bool ServicesAreShared() { return services_are_shared; }

bool HasServices() { return error_handler && app_settings; }

void SetErrorHandler(std::unique_ptr<CErrorHandler> handler) { error_handler = std::move(handler); }

void SetAppSettings(std::unique_ptr<CAppSettings> settings) { app_settings = std::move(settings); }

}  // namespace mirelo::mGlobal
