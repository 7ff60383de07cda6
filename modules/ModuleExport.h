// The class-object export of a filter module and the factory behind it.
#pragma once
#include <functional>

#include "platform/media/GstFilter.h"

#define ORVEX_MODULE_EXPORT extern "C" __attribute__((visibility("default")))

// Makes a new filter object each time; the module's one kind of factory.
class CFilterFactory final : public IClassFactory {
public:
    using Maker = IUnknown* (*)();
    explicit CFilterFactory(Maker maker) : m_maker(maker) {}

    HRESULT QueryInterface(REFIID riid, void** ppv) override;
    ULONG AddRef() override { return ++m_refs; }
    ULONG Release() override;
    HRESULT CreateInstance(IUnknown* outer, REFIID riid, void** ppv) override;
    HRESULT LockServer(BOOL) override { return S_OK; }

private:
    std::atomic<ULONG> m_refs{1};
    Maker m_maker;
};

struct ModuleClass {
    const CLSID* clsid;
    CFilterFactory::Maker maker;
};

// The body of DllGetClassObject for a module's table of classes.
HRESULT GetModuleClassObject(const ModuleClass* classes, size_t count, REFCLSID clsid, REFIID riid,
                             void** ppv);
