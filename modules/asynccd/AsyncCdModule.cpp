// AsyncCd.ax: the audio CD source.
#include "modules/ModuleExport.h"
#include "modules/asynccd/AsyncCdSource.h"

namespace {

const ModuleClass kClasses[] = {
    {&CLSID_AsyncCd, &NewAsyncCdSource},
};

} // namespace

ORVEX_MODULE_EXPORT HRESULT DllGetClassObject(REFCLSID clsid, REFIID riid, void** ppv) {
    return GetModuleClassObject(kClasses, sizeof(kClasses) / sizeof(kClasses[0]), clsid, riid, ppv);
}
