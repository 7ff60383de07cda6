// The graph of a file or stream: splitter source, then the video and audio
// decoders as far as the source has such streams, then the renderers.
#include "platform/base/MessageBox.h"
#include "player/GraphParts.h"
#include "player/MediaPlayer.h"

BOOL CMediaPlayer::FailPlayback(const CString& text) {
    CleanPlayback();
    if (m_bQuietFailures)
        m_lastFailure = text;
    else
        MessageBoxW(m_hNotifyWnd, text, u"Orvex", MB_OK);
    return FALSE;
}

BOOL CMediaPlayer::PlayFileLav(const CString& path, IPlayerFrame* pFrame) {
    CBuildWaitCursor wait(pFrame);
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

    if (!SetSplitterRuntimeConfig() || !LoadSourceFile(m_pLavSrc, path))
        return FALSE;
    if (FAILED(m_pGraph->AddFilter(m_pLavSrc, u"LAV Splitter Source")))
        return FailPlayback(u"ERROR - AddFilter failed - m_pLavSrc");

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
    if (!RunGraph())
        return FALSE;
    m_state = 2;
    ReadDuration();
    return TRUE;
}

BOOL CMediaPlayer::BuildVideoChain(const RECT& rect) {
    if (!AddVideoDecoder(FALSE))
        return FALSE;
    IPin* sourcePin = nullptr;
    IPin* decoderPin = nullptr;
    if (FAILED(GetPin(m_pLavSrc, PINDIR_OUTPUT, MEDIATYPE_Video, &sourcePin)))
        return FailPlayback(u"ERROR - GetPin - Out Lav Source Splitter Video.");
    if (FAILED(GetPin(m_pLavVid, PINDIR_INPUT, MEDIATYPE_Video, &decoderPin))) {
        sourcePin->Release();
        return FailPlayback(u"ERROR - GetPin - In Lav Video Decoder.");
    }
    if (!ConnectPins(sourcePin, decoderPin, u"ERROR - Connect failed - Lav Source to Video."))
        return FALSE;
    return RenderVideoDecoder(rect);
}

BOOL CMediaPlayer::BuildAudioChain(IPlayerFrame* pFrame) {
    if (!AddAudioDecoder(pFrame))
        return FALSE;
    IPin* sourcePin = nullptr;
    IPin* decoderPin = nullptr;
    if (FAILED(GetPin(m_pLavSrc, PINDIR_OUTPUT, MEDIATYPE_Audio, &sourcePin)))
        return FailPlayback(u"ERROR - GetPin - Out Lav Source Splitter Audio.");
    if (FAILED(GetPin(m_pLavAud, PINDIR_INPUT, MEDIATYPE_Audio, &decoderPin))) {
        sourcePin->Release();
        return FailPlayback(u"ERROR - GetPin - In Lav Audio Decoder.");
    }
    if (!ConnectPins(sourcePin, decoderPin, u"ERROR - Connect failed - Lav Source to Audio."))
        return FALSE;
    return RenderAudioDecoder(50, u"ERROR - put_Volume failed.");
}
