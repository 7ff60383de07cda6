// LAVSplitter_1.ax: the splitter source.
#include "modules/lav/LavSplitterSource.h"
#include "modules/lav/ModuleExport.h"

namespace {

const ModuleClass kClasses[] = {
    {&CLSID_LAVSplitterSource, &NewLavSplitterSource},
};

} // namespace

ORVEX_MODULE_EXPORT HRESULT DllGetClassObject(REFCLSID clsid, REFIID riid, void** ppv) {
    return GetModuleClassObject(kClasses, sizeof(kClasses) / sizeof(kClasses[0]), clsid, riid, ppv);
}
