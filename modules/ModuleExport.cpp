#include "modules/ModuleExport.h"

HRESULT CFilterFactory::QueryInterface(REFIID riid, void** ppv) {
    if (!ppv)
        return E_POINTER;
    if (riid == IID_IUnknown || riid == IID_IClassFactory) {
        *ppv = static_cast<IClassFactory*>(this);
        AddRef();
        return S_OK;
    }
    *ppv = nullptr;
    return E_NOINTERFACE;
}

ULONG CFilterFactory::Release() {
    ULONG left = --m_refs;
    if (left == 0)
        delete this;
    return left;
}

HRESULT CFilterFactory::CreateInstance(IUnknown* outer, REFIID riid, void** ppv) {
    if (!ppv)
        return E_POINTER;
    *ppv = nullptr;
    if (outer)
        return CLASS_E_NOAGGREGATION;
    if (!EnsureGstInit())
        return E_FAIL;
    IUnknown* object = m_maker();
    if (!object)
        return E_OUTOFMEMORY;
    HRESULT hr = object->QueryInterface(riid, ppv);
    object->Release();
    return hr;
}

HRESULT GetModuleClassObject(const ModuleClass* classes, size_t count, REFCLSID clsid, REFIID riid,
                             void** ppv) {
    if (!ppv)
        return E_POINTER;
    *ppv = nullptr;
    for (size_t i = 0; i < count; ++i) {
        if (*classes[i].clsid == clsid) {
            auto* factory = new CFilterFactory(classes[i].maker);
            HRESULT hr = factory->QueryInterface(riid, ppv);
            factory->Release();
            return hr;
        }
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}
