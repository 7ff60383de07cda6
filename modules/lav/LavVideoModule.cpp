// LAVVideo_1.ax: the video decoder.
#include "modules/ModuleExport.h"
#include "modules/lav/LavDecoder.h"

namespace {

const ModuleClass kClasses[] = {
    {&CLSID_LAVVideo, &NewLavVideo},
};

} // namespace

ORVEX_MODULE_EXPORT HRESULT DllGetClassObject(REFCLSID clsid, REFIID riid, void** ppv) {
    return GetModuleClassObject(kClasses, sizeof(kClasses) / sizeof(kClasses[0]), clsid, riid, ppv);
}
