// Filter loading and the pin look-ups the graph builders use.
#include "platform/base/AppContext.h"
#include "platform/media/ModuleLoader.h"
#include "platform/media/OsVersion.h"
#include "player/MediaPlayer.h"

CMediaPlayer::CMediaPlayer() {
    m_startFolder = AfxGetAppContext().GetStartDirectory();
    InitFilterPaths();
    m_asyncCdPath.Format(u"%s/%s/AsyncCd.ax", m_startFolder, u"AsyncCd");
}

void CMediaPlayer::InitFilterPaths() {
    OSVERSIONINFOEXW info{};
    info.dwOSVersionInfoSize = sizeof(OSVERSIONINFOEXW);
    if (!GetVersionExW(&info)) {
        info.dwOSVersionInfoSize = sizeof(OSVERSIONINFOW);
        if (!GetVersionExW(&info))
            return;
    }
    const char16_t* folder = u"LAV_XP";
    if (info.dwMajorVersion == 10 || (info.dwMajorVersion == 6 && info.dwMinorVersion >= 1))
        folder = u"LAV";
    m_splitterPath.Format(u"%s/%s/LAVSplitter_1.ax", m_startFolder, folder);
    m_videoPath.Format(u"%s/%s/LAVVideo_1.ax", m_startFolder, folder);
    m_audioPath.Format(u"%s/%s/LAVAudio_1.ax", m_startFolder, folder);
}

HRESULT CMediaPlayer::CreateObjectFromPath(CString path, REFCLSID clsid, IBaseFilter** ppFilter) {
    if (!ppFilter)
        return E_POINTER;
    *ppFilter = nullptr;
    HMODULE module = AfxLoadLibrary(path);
    void* entry = module ? GetProcAddress(module, "DllGetClassObject") : nullptr;
    if (!entry)
        return HRESULT_FROM_WIN32(GetLastError());
    auto getClassObject = reinterpret_cast<DllGetClassObjectFn>(entry);
    IClassFactory* factory = nullptr;
    HRESULT hr = getClassObject(clsid, IID_IClassFactory, reinterpret_cast<void**>(&factory));
    if (FAILED(hr))
        return hr;
    IUnknown* unknown = nullptr;
    hr = factory->CreateInstance(nullptr, IID_IUnknown, reinterpret_cast<void**>(&unknown));
    factory->Release();
    if (FAILED(hr))
        return hr;
    hr = unknown->QueryInterface(IID_IBaseFilter, reinterpret_cast<void**>(ppFilter));
    unknown->Release();
    return FAILED(hr) ? hr : S_OK;
}

bool CMediaPlayer::PinHasMajorType(IPin* pin, REFGUID majorType, PIN_DIRECTION direction) {
    IEnumMediaTypes* types = nullptr;
    if (FAILED(pin->EnumMediaTypes(&types)) || !types)
        return direction == PINDIR_INPUT;
    bool match = false;
    int count = 0;
    AM_MEDIA_TYPE* mt = nullptr;
    ULONG fetched = 0;
    while (!match && types->Next(1, &mt, &fetched) == S_OK && fetched == 1) {
        ++count;
        match = memcmp(&mt->majortype, &majorType, sizeof(GUID)) == 0;
        DeleteMediaType(mt);
        mt = nullptr;
    }
    types->Release();
    if (count == 0)
        return direction == PINDIR_INPUT;
    return match;
}

HRESULT CMediaPlayer::GetPin(IBaseFilter* pFilter, PIN_DIRECTION direction, REFGUID majorType,
                             IPin** ppPin) {
    if (!pFilter || !ppPin)
        return E_POINTER;
    *ppPin = nullptr;
    IEnumPins* pins = nullptr;
    if (FAILED(pFilter->EnumPins(&pins)) || !pins)
        return E_FAIL;
    IPin* pin = nullptr;
    ULONG fetched = 0;
    while (pins->Next(1, &pin, &fetched) == S_OK && fetched == 1) {
        PIN_DIRECTION pinDirection;
        if (FAILED(pin->QueryDirection(&pinDirection))) {
            pin->Release();
            pins->Release();
            return E_UNEXPECTED;
        }
        if (pinDirection == direction && PinHasMajorType(pin, majorType, direction)) {
            *ppPin = pin;
            pins->Release();
            return S_OK;
        }
        pin->Release();
    }
    pins->Release();
    return E_FAIL;
}

HRESULT CMediaPlayer::GetPin2(IBaseFilter* pFilter, PIN_DIRECTION direction, int index,
                              IPin** ppPin) {
    if (!ppPin)
        return E_POINTER;
    *ppPin = nullptr;
    if (!pFilter)
        return E_POINTER;
    IEnumPins* pins = nullptr;
    HRESULT hr = pFilter->EnumPins(&pins);
    if (FAILED(hr))
        return hr;
    IPin* pin = nullptr;
    ULONG fetched = 0;
    while (pins->Next(1, &pin, &fetched) == S_OK && fetched == 1) {
        auto pinDirection = static_cast<PIN_DIRECTION>(3);
        pin->QueryDirection(&pinDirection);
        if (pinDirection == direction) {
            if (index == 0) {
                *ppPin = pin;
                pins->Release();
                return S_OK;
            }
            --index;
        }
        pin->Release();
    }
    pins->Release();
    return E_FAIL;
}
