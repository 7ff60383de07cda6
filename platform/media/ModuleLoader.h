// Loading code modules at run time.
#pragma once
#include "platform/base/CString.h"
#include "platform/media/ComTypes.h"

using HMODULE = void*;

// Loads (or finds again) the module at path; null on failure, with the
// reason in GetLastError (ERROR_MOD_NOT_FOUND for a missing file,
// ERROR_BAD_EXE_FORMAT for one that is not a loadable module).
HMODULE AfxLoadLibrary(const CString& path);
// An export of a loaded module; null with ERROR_PROC_NOT_FOUND.
void* GetProcAddress(HMODULE module, const char* name);
// The system error of the calling thread's last failed call here.
DWORD GetLastError();
