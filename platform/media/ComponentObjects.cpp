// Objects the platform makes by class identifier, and the loading of filter
// modules from files.
#include <dlfcn.h>

#include <cerrno>
#include <map>
#include <mutex>
#include <sys/stat.h>

#include "platform/base/ComponentServices.h"
#include "platform/media/DvdNavigator.h"
#include "platform/media/FilterGraph.h"
#include "platform/media/ModuleLoader.h"
#include "platform/media/PipelineService.h"

namespace {

thread_local DWORD t_lastError = 0;

// A program that makes graphs has this file linked in, and with it the
// pipeline among the services its start-up brings up.
const bool g_pipelineService = (RegisterComponentService(StartPipelineService), true);

} // namespace

HRESULT CoCreateInstance(REFCLSID clsid, IUnknown* outer, DWORD, REFIID riid, void** ppv) {
    if (!ppv)
        return E_POINTER;
    *ppv = nullptr;
    if (outer)
        return CLASS_E_NOAGGREGATION;
    if (!(clsid == CLSID_FilterGraph) && !(clsid == CLSID_DVDNavigator))
        return REGDB_E_CLASSNOTREG;
    if (!EnsureGstInit())
        return E_FAIL;
    IUnknown* object = nullptr;
    if (clsid == CLSID_FilterGraph)
        object = static_cast<IGraphBuilder*>(new CFilterGraph);
    else
        object = static_cast<IBaseFilter*>(new CDvdNavigator);
    HRESULT hr = object->QueryInterface(riid, ppv);
    object->Release();
    return hr;
}

HMODULE AfxLoadLibrary(const CString& path) {
    std::string narrow = path.ToUtf8();
    struct stat st;
    if (narrow.empty() || stat(narrow.c_str(), &st) != 0) {
        t_lastError = ERROR_MOD_NOT_FOUND;
        return nullptr;
    }
    // Modules stay loaded for the life of the process: callbacks into them
    // may still be registered with the pipeline library.
    void* handle = dlopen(narrow.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (!handle) {
        t_lastError = ERROR_BAD_EXE_FORMAT;
        return nullptr;
    }
    return static_cast<HMODULE>(handle);
}

void* GetProcAddress(HMODULE module, const char* name) {
    void* symbol = module ? dlsym(module, name) : nullptr;
    if (!symbol)
        t_lastError = ERROR_PROC_NOT_FOUND;
    return symbol;
}

DWORD GetLastError() {
    return t_lastError;
}
