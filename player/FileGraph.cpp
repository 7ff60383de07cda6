// The graph of a file or stream: splitter source, then the video and audio
// decoders as far as the source has such streams, then the renderers.
#include "platform/base/MessageBox.h"
#include "platform/base/UserMessages.h"
#include "player/LavSetup.h"
#include "player/MediaPlayer.h"

namespace {

// Ends the wait cursor on every way out of a build.
class CWaitCursor {
public:
    explicit CWaitCursor(IPlayerFrame* frame) : m_frame(frame) {
        if (m_frame)
            m_frame->BeginWaitCursor();
    }
    ~CWaitCursor() {
        if (m_frame)
            m_frame->EndWaitCursor();
    }
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;

private:
    IPlayerFrame* m_frame;
};

template <typename T>
HRESULT QueryTo(IUnknown* from, REFIID riid, T** to) {
    return from->QueryInterface(riid, reinterpret_cast<void**>(to));
}

} // namespace

BOOL CMediaPlayer::FailPlayback(const CString& text) {
    CleanPlayback();
    if (m_bQuietFailures)
        m_lastFailure = text;
    else
        MessageBoxW(m_hNotifyWnd, text, u"Orvex", MB_OK);
    return FALSE;
}

BOOL CMediaPlayer::PlayFileLav(const CString& path, IPlayerFrame* pFrame) {
    CWaitCursor wait(pFrame);
    if (m_state != 0 && !CleanPlayback())
        return FALSE;

    m_bStream = FALSE;
    CString lower = path;
    lower.MakeLower();
    for (const char16_t* scheme : {u"http://", u"https://", u"rtsp://", u"rtspt://"}) {
        if (lower.Find(CString(scheme)) >= 0)
            m_bStream = TRUE;
    }

    if (FAILED(CoCreateInstance(CLSID_FilterGraph, nullptr, CLSCTX_INPROC_SERVER, IID_IGraphBuilder,
                                reinterpret_cast<void**>(&m_pGraph))))
        return FailPlayback(u"ERROR - Could not create the Filter Graph Manager.");
    if (FAILED(CreateObjectFromPath(m_splitterPath, CLSID_LAVSplitterSource, &m_pLavSrc)))
        return FailPlayback(u"ERROR - CreateObjectFromPath2 failed - clsidLavSrc");

    ILAVFSettings* splitterSettings = nullptr;
    if (FAILED(QueryTo(m_pLavSrc, IID_ILAVFSettings, &splitterSettings)))
        return FailPlayback(u"ERROR - ILAVFSettings not supported");
    splitterSettings->SetRuntimeConfig(TRUE);
    splitterSettings->Release();

    IFileSourceFilter* source = nullptr;
    if (FAILED(QueryTo(m_pLavSrc, IID_IFileSourceFilter, &source)))
        return FailPlayback(u"ERROR - QueryInterface failed - IID_IFileSourceFilter");
    if (FAILED(source->Load(path.GetString(), nullptr))) {
        source->Release();
        CString text;
        text.Format(u"File Source Error - could not open %s.", path);
        return FailPlayback(text);
    }
    if (FAILED(m_pGraph->AddFilter(m_pLavSrc, u"LAV Splitter Source"))) {
        source->Release();
        return FailPlayback(u"ERROR - AddFilter failed - m_pLavSrc");
    }
    source->Release();

    IPin* pin = nullptr;
    BOOL hasVideo = SUCCEEDED(GetPin(m_pLavSrc, PINDIR_OUTPUT, MEDIATYPE_Video, &pin));
    SafeRelease(pin);
    BOOL hasAudio = SUCCEEDED(GetPin(m_pLavSrc, PINDIR_OUTPUT, MEDIATYPE_Audio, &pin));
    SafeRelease(pin);
    if (!hasVideo && !hasAudio)
        return FailPlayback(u"ERROR - Media type not supported.");

    RECT rect;
    if (!pFrame->SetVideoWindow(hasVideo, hasAudio, &m_hVideoOwner, &m_hNotifyWnd, &rect))
        return FailPlayback(u"ERROR - SetVideoWindow function failed.");
    if (hasVideo && !BuildVideoChain(rect))
        return FALSE;
    if (hasAudio && !BuildAudioChain(pFrame))
        return FALSE;

    if (FAILED(QueryTo(m_pGraph, IID_IMediaControl, &m_pControl)))
        return FailPlayback(u"ERROR - IMediaControl not supported.");
    if (FAILED(QueryTo(m_pGraph, IID_IMediaEventEx, &m_pEvent)))
        return FailPlayback(u"ERROR - IMediaEventEx not supported.");
    if (FAILED(QueryTo(m_pGraph, IID_IMediaSeeking, &m_pSeeking)))
        return FailPlayback(u"ERROR - IMediaSeeking not supported.");
    if (FAILED(m_pEvent->SetNotifyWindow(m_hNotifyWnd, UM_GRAPH_NOTIFY, 0)))
        return FailPlayback(u"ERROR - SetNotifyWindow failed.");
    if (FAILED(m_pControl->Run()))
        return FailPlayback(u"ERROR - Run failed.");
    OAFilterState state = State_Stopped;
    if (FAILED(m_pControl->GetState(1000, &state)))
        return FailPlayback(u"ERROR - GetState failed.");
    if (state != State_Running)
        return FailPlayback(u"ERROR - not State_Running.");
    m_state = 2;
    ReadDuration();
    return TRUE;
}

BOOL CMediaPlayer::BuildVideoChain(const RECT& rect) {
    if (FAILED(CreateObjectFromPath(m_videoPath, CLSID_LAVVideo, &m_pLavVid)))
        return FailPlayback(u"ERROR - CreateObjectFromPath failed - clsidLavVid");
    ILAVVideoSettings* settings = nullptr;
    if (FAILED(QueryTo(m_pLavVid, IID_ILAVVideoSettings, &settings)))
        return FailPlayback(u"ERROR - ILAVVideoSettings not supported");
    settings->SetRuntimeConfig(TRUE);
    settings->Release();
    if (FAILED(m_pGraph->AddFilter(m_pLavVid, u"LAV Video Decoder")))
        return FailPlayback(u"ERROR - AddFilter failed - LAV Video Decoder.");

    IPin* sourcePin = nullptr;
    IPin* decoderPin = nullptr;
    if (FAILED(GetPin(m_pLavSrc, PINDIR_OUTPUT, MEDIATYPE_Video, &sourcePin)))
        return FailPlayback(u"ERROR - GetPin - Out Lav Source Splitter Video.");
    if (FAILED(GetPin(m_pLavVid, PINDIR_INPUT, MEDIATYPE_Video, &decoderPin))) {
        sourcePin->Release();
        return FailPlayback(u"ERROR - GetPin - In Lav Video Decoder.");
    }
    HRESULT hr = sourcePin->Connect(decoderPin, nullptr);
    sourcePin->Release();
    decoderPin->Release();
    if (FAILED(hr))
        return FailPlayback(u"ERROR - Connect failed - Lav Source to Video.");

    IPin* out = nullptr;
    if (FAILED(GetPin(m_pLavVid, PINDIR_OUTPUT, MEDIATYPE_Video, &out)))
        return FailPlayback(u"ERROR - GetPin - Out Video Decoder.");
    hr = m_pGraph->Render(out);
    out->Release();
    if (FAILED(hr))
        return FailPlayback(u"ERROR - Render video failed.");

    if (FAILED(QueryTo(m_pGraph, IID_IVideoWindow, &m_pVideoWindow)))
        return FailPlayback(u"ERROR - IVideoWindow not supported.");
    if (FAILED(QueryTo(m_pGraph, IID_IBasicVideo, &m_pBasicVideo)))
        return FailPlayback(u"ERROR - IBasicVideo not supported.");
    if (FAILED(m_pVideoWindow->put_Owner(m_hVideoOwner)))
        return FailPlayback(u"ERROR - put_Owner failed.");
    if (FAILED(m_pVideoWindow->put_MessageDrain(m_hVideoOwner)))
        return FailPlayback(u"ERROR - put_MessageDrain failed.");
    if (FAILED(m_pVideoWindow->put_WindowStyle(0x44000000)))
        return FailPlayback(u"ERROR - put_WindowStyle failed.");
    return SetVideoRect(rect);
}

BOOL CMediaPlayer::BuildAudioChain(IPlayerFrame* pFrame) {
    if (FAILED(CreateObjectFromPath(m_audioPath, CLSID_LAVAudio, &m_pLavAud)))
        return FailPlayback(u"ERROR - CreateObjectFromPath failed - clsidLavAud");
    ILAVAudioSettings* settings = nullptr;
    if (FAILED(QueryTo(m_pLavAud, IID_ILAVAudioSettings, &settings)))
        return FailPlayback(u"ERROR - ILAVAudioSettings not supported");
    HRESULT hr = pFrame->GetLavSetup().SetOrvexAudio(settings);
    settings->Release();
    if (FAILED(hr))
        return FailPlayback(u"ERROR - m_lavSetup.SetOrvexAudio failed - LAV Audio Decoder.");
    if (FAILED(m_pGraph->AddFilter(m_pLavAud, u"LAV Audio Decoder")))
        return FailPlayback(u"ERROR - AddFilter failed - LAV Audio Decoder.");

    IPin* sourcePin = nullptr;
    IPin* decoderPin = nullptr;
    if (FAILED(GetPin(m_pLavSrc, PINDIR_OUTPUT, MEDIATYPE_Audio, &sourcePin)))
        return FailPlayback(u"ERROR - GetPin - Out Lav Source Splitter Audio.");
    if (FAILED(GetPin(m_pLavAud, PINDIR_INPUT, MEDIATYPE_Audio, &decoderPin))) {
        sourcePin->Release();
        return FailPlayback(u"ERROR - GetPin - In Lav Audio Decoder.");
    }
    hr = sourcePin->Connect(decoderPin, nullptr);
    sourcePin->Release();
    decoderPin->Release();
    if (FAILED(hr))
        return FailPlayback(u"ERROR - Connect failed - Lav Source to Audio.");

    IPin* out = nullptr;
    if (FAILED(GetPin(m_pLavAud, PINDIR_OUTPUT, MEDIATYPE_Audio, &out)))
        return FailPlayback(u"ERROR - GetPin - Out Audio Decoder.");
    hr = m_pGraph->Render(out);
    out->Release();
    if (FAILED(hr))
        return FailPlayback(u"ERROR - Render audio failed.");

    if (FAILED(QueryTo(m_pGraph, IID_IBasicAudio, &m_pBasicAudio)))
        return FailPlayback(u"ERROR - IBasicAudio not supported.");
    if (FAILED(m_pBasicAudio->put_Volume(PercentToVolume(50))))
        return FailPlayback(u"ERROR - put_Volume failed.");
    return TRUE;
}
