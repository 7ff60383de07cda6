// The stretches of a graph that every builder shares: the decoders joining
// the graph, their outputs rendered, and the graph set running.
#include "player/GraphParts.h"

#include "platform/base/UserMessages.h"
#include "player/LavSetup.h"
#include "player/MediaPlayer.h"

BOOL CMediaPlayer::ConnectPins(IPin* out, IPin* in, const char16_t* failure) {
    const HRESULT hr = out->Connect(in, nullptr);
    out->Release();
    in->Release();
    return FAILED(hr) ? FailPlayback(failure) : TRUE;
}

BOOL CMediaPlayer::SetSplitterRuntimeConfig() {
    ILAVFSettings* settings = nullptr;
    if (FAILED(QueryTo(m_pLavSrc, IID_ILAVFSettings, &settings)))
        return FailPlayback(u"ERROR - ILAVFSettings not supported");
    settings->SetRuntimeConfig(TRUE);
    settings->Release();
    return TRUE;
}

BOOL CMediaPlayer::LoadSourceFile(IBaseFilter* filter, const CString& path) {
    IFileSourceFilter* source = nullptr;
    if (FAILED(QueryTo(filter, IID_IFileSourceFilter, &source)))
        return FailPlayback(u"ERROR - QueryInterface failed - IID_IFileSourceFilter");
    const HRESULT hr = source->Load(path.GetString(), nullptr);
    source->Release();
    if (FAILED(hr)) {
        CString text;
        text.Format(u"File Source Error - could not open %s.", path);
        return FailPlayback(text);
    }
    return TRUE;
}

BOOL CMediaPlayer::AddVideoDecoder(BOOL dvd) {
    if (FAILED(CreateObjectFromPath(m_videoPath, CLSID_LAVVideo, &m_pLavVid)))
        return FailPlayback(u"ERROR - CreateObjectFromPath failed - clsidLavVid");
    ILAVVideoSettings* settings = nullptr;
    if (FAILED(QueryTo(m_pLavVid, IID_ILAVVideoSettings, &settings)))
        return FailPlayback(u"ERROR - ILAVVideoSettings not supported");
    // Made before the filter joins the graph.
    settings->SetRuntimeConfig(TRUE);
    if (dvd)
        settings->SetDVDVideoSupport(TRUE);
    settings->Release();
    if (FAILED(m_pGraph->AddFilter(m_pLavVid, u"LAV Video Decoder")))
        return FailPlayback(u"ERROR - AddFilter failed - LAV Video Decoder.");
    return TRUE;
}

BOOL CMediaPlayer::RenderVideoDecoder(const RECT& rect) {
    IPin* out = nullptr;
    if (FAILED(GetPin(m_pLavVid, PINDIR_OUTPUT, MEDIATYPE_Video, &out)))
        return FailPlayback(u"ERROR - GetPin - Out Video Decoder.");
    HRESULT hr = m_pGraph->Render(out);
    out->Release();
    if (FAILED(hr))
        return FailPlayback(u"ERROR - Render video failed.");

    if (FAILED(QueryTo(m_pGraph, IID_IVideoWindow, &m_pVideoWindow)))
        return FailPlayback(u"ERROR - IVideoWindow not supported.");
    if (FAILED(QueryTo(m_pGraph, IID_IBasicVideo, &m_pBasicVideo)))
        return FailPlayback(u"ERROR - IBasicVideo not supported.");
    if (FAILED(m_pVideoWindow->put_Owner(m_hVideoOwner)))
        return FailPlayback(u"ERROR - put_Owner failed.");
    // Mouse and key messages that reach the picture go to the owner window.
    if (FAILED(m_pVideoWindow->put_MessageDrain(m_hVideoOwner)))
        return FailPlayback(u"ERROR - put_MessageDrain failed.");
    // A child window that clips its siblings.
    if (FAILED(m_pVideoWindow->put_WindowStyle(0x44000000)))
        return FailPlayback(u"ERROR - put_WindowStyle failed.");
    return SetVideoRect(rect);
}

BOOL CMediaPlayer::AddAudioDecoder(IPlayerFrame* pFrame) {
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
    return TRUE;
}

BOOL CMediaPlayer::RenderAudioDecoder(int volume, const char16_t* volumeFailure) {
    IPin* out = nullptr;
    if (FAILED(GetPin(m_pLavAud, PINDIR_OUTPUT, MEDIATYPE_Audio, &out)))
        return FailPlayback(u"ERROR - GetPin - Out Audio Decoder.");
    HRESULT hr = m_pGraph->Render(out);
    out->Release();
    if (FAILED(hr))
        return FailPlayback(u"ERROR - Render audio failed.");
    if (FAILED(QueryTo(m_pGraph, IID_IBasicAudio, &m_pBasicAudio)))
        return FailPlayback(u"ERROR - IBasicAudio not supported.");
    if (FAILED(m_pBasicAudio->put_Volume(PercentToVolume(volume))))
        return FailPlayback(volumeFailure);
    return TRUE;
}

BOOL CMediaPlayer::RunGraph() {
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
    // Up to a second for the graph to get there.
    OAFilterState state = State_Stopped;
    if (FAILED(m_pControl->GetState(1000, &state)))
        return FailPlayback(u"ERROR - GetState failed.");
    if (state != State_Running)
        return FailPlayback(u"ERROR - not State_Running.");
    return TRUE;
}
