// The component object model the playback engine is written against: result
// codes, class and interface identifiers, reference-counted interfaces and
// class factories. Modules loaded at run time speak it too, so nothing here
// may depend on how one side or the other is built.
#pragma once
#include <cstdint>
#include <cstring>

#include "platform/base/Types.h"

using HRESULT = int32_t;
using ULONG = uint32_t;
using LONG_PTR = intptr_t;
using LPCWSTR = const char16_t*;
using LPCOLESTR = const char16_t*;

constexpr HRESULT MakeHresult(uint32_t code) {
    return static_cast<HRESULT>(code);
}

constexpr HRESULT S_OK = 0;
constexpr HRESULT S_FALSE = 1;
constexpr HRESULT E_NOTIMPL = MakeHresult(0x80004001);
constexpr HRESULT E_NOINTERFACE = MakeHresult(0x80004002);
constexpr HRESULT E_POINTER = MakeHresult(0x80004003);
constexpr HRESULT E_ABORT = MakeHresult(0x80004004);
constexpr HRESULT E_FAIL = MakeHresult(0x80004005);
constexpr HRESULT E_UNEXPECTED = MakeHresult(0x8000FFFF);
constexpr HRESULT E_OUTOFMEMORY = MakeHresult(0x8007000E);
constexpr HRESULT E_INVALIDARG = MakeHresult(0x80070057);
constexpr HRESULT CLASS_E_NOAGGREGATION = MakeHresult(0x80040110);
constexpr HRESULT CLASS_E_CLASSNOTAVAILABLE = MakeHresult(0x80040111);
constexpr HRESULT REGDB_E_CLASSNOTREG = MakeHresult(0x80040154);
constexpr HRESULT VFW_E_ALREADY_CONNECTED = MakeHresult(0x80040204);
constexpr HRESULT VFW_E_NO_ACCEPTABLE_TYPES = MakeHresult(0x80040207);
constexpr HRESULT VFW_E_INVALID_DIRECTION = MakeHresult(0x80040208);
constexpr HRESULT VFW_E_NOT_CONNECTED = MakeHresult(0x80040209);
constexpr HRESULT VFW_E_NOT_FOUND = MakeHresult(0x80040216);
constexpr HRESULT VFW_E_CANNOT_RENDER = MakeHresult(0x80040218);
constexpr HRESULT VFW_E_WRONG_STATE = MakeHresult(0x80040227);
constexpr HRESULT VFW_E_TYPE_NOT_ACCEPTED = MakeHresult(0x8004022A);
constexpr HRESULT VFW_E_NOT_IN_GRAPH = MakeHresult(0x8004025F);
constexpr HRESULT VFW_E_UNKNOWN_FILE_TYPE = MakeHresult(0x80040240);
constexpr HRESULT VFW_E_TIMEOUT = MakeHresult(0x8004028A);
constexpr HRESULT VFW_S_STATE_INTERMEDIATE = 0x00040237;

constexpr bool SUCCEEDED(HRESULT hr) {
    return hr >= 0;
}
constexpr bool FAILED(HRESULT hr) {
    return hr < 0;
}

// A system error number as a result code: masked to 16 bits and marked as a
// failure of the operating system's facility.
constexpr HRESULT HRESULT_FROM_WIN32(DWORD code) {
    return static_cast<int32_t>(code) <= 0 ? static_cast<HRESULT>(code)
                                           : MakeHresult((code & 0xFFFF) | 0x80070000u);
}

constexpr DWORD ERROR_FILE_NOT_FOUND = 2;
constexpr DWORD ERROR_MOD_NOT_FOUND = 126;
constexpr DWORD ERROR_PROC_NOT_FOUND = 127;
constexpr DWORD ERROR_BAD_EXE_FORMAT = 193;

struct GUID {
    uint32_t Data1;
    uint16_t Data2;
    uint16_t Data3;
    uint8_t Data4[8];
};
using IID = GUID;
using CLSID = GUID;
using REFIID = const IID&;
using REFCLSID = const CLSID&;
using REFGUID = const GUID&;

inline bool IsEqualGUID(REFGUID a, REFGUID b) {
    return memcmp(&a, &b, sizeof(GUID)) == 0;
}
inline bool operator==(REFGUID a, REFGUID b) {
    return IsEqualGUID(a, b);
}

extern const IID IID_IUnknown;
extern const IID IID_IClassFactory;

class IUnknown {
public:
    virtual HRESULT QueryInterface(REFIID riid, void** ppv) = 0;
    virtual ULONG AddRef() = 0;
    virtual ULONG Release() = 0;

protected:
    ~IUnknown() = default;
};

class IClassFactory : public IUnknown {
public:
    virtual HRESULT CreateInstance(IUnknown* outer, REFIID riid, void** ppv) = 0;
    virtual HRESULT LockServer(BOOL lock) = 0;
};

// The one export of a filter module.
using DllGetClassObjectFn = HRESULT (*)(REFCLSID clsid, REFIID riid, void** ppv);

constexpr DWORD CLSCTX_INPROC_SERVER = 1;

// Memory that crosses from one module to another (media type records and
// their format blocks) comes from and goes back to this one allocator.
void* CoTaskMemAlloc(size_t size);
void CoTaskMemFree(void* p);

// Releases an interface pointer and clears it.
template <typename T>
void SafeRelease(T*& p) {
    if (p) {
        p->Release();
        p = nullptr;
    }
}
