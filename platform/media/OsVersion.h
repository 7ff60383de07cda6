// The operating system's version, as the choice of filter folder needs it.
#pragma once
#include <functional>

#include "platform/base/Types.h"

struct OSVERSIONINFOW {
    DWORD dwOSVersionInfoSize;
    DWORD dwMajorVersion;
    DWORD dwMinorVersion;
    DWORD dwBuildNumber;
    DWORD dwPlatformId;
};

struct OSVERSIONINFOEXW : OSVERSIONINFOW {
    WORD wServicePackMajor;
    WORD wServicePackMinor;
    WORD wSuiteMask;
    BYTE wProductType;
    BYTE wReserved;
};

// Fills the record whose size field says which form it is. The platform
// reports 10.0.
BOOL GetVersionExW(OSVERSIONINFOW* info);

// Replaces the answer (for tests): the function gets the record and gives the
// result of the call. An empty function restores the platform's answer.
using OsVersionQuery = std::function<BOOL(OSVERSIONINFOW*)>;
void SetOsVersionQuery(OsVersionQuery query);
