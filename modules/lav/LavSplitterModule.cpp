// LAVSplitter_1.ax: the splitter, as a source of its own and as a filter
// behind another source.
#include "modules/ModuleExport.h"
#include "modules/lav/LavSplitter.h"
#include "modules/lav/LavSplitterSource.h"

namespace {

const ModuleClass kClasses[] = {
    {&CLSID_LAVSplitterSource, &NewLavSplitterSource},
    {&CLSID_LAVSplitter, &NewLavSplitter},
};

} // namespace

ORVEX_MODULE_EXPORT HRESULT DllGetClassObject(REFCLSID clsid, REFIID riid, void** ppv) {
    return GetModuleClassObject(kClasses, sizeof(kClasses) / sizeof(kClasses[0]), clsid, riid, ppv);
}
