// A library that Windows lets neither register nor take away.

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

extern "C" {

__declspec(dllexport) HRESULT WINAPI DllRegisterServer();
__declspec(dllexport) HRESULT WINAPI DllUnregisterServer();

HRESULT WINAPI DllRegisterServer() { return E_ACCESSDENIED; }
HRESULT WINAPI DllUnregisterServer() { return E_ACCESSDENIED; }

}  // extern "C"
