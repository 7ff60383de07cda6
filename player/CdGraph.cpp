// The graph of one audio CD track: the AsyncCd source's "Output" into the
// splitter, its sound into the audio decoder, rendered.
#include "player/GraphParts.h"
#include "player/MediaPlayer.h"

BOOL CMediaPlayer::PlayCdLav(const CString& path, IPlayerFrame* pFrame, int volume) {
    CBuildWaitCursor wait(pFrame);
    if (m_state != 0 && !CleanPlayback())
        return FALSE;

    if (FAILED(CoCreateInstance(CLSID_FilterGraph, nullptr, CLSCTX_INPROC_SERVER, IID_IGraphBuilder,
                                reinterpret_cast<void**>(&m_pGraph))))
        return FailPlayback(u"ERROR - Could not create the Filter Graph Manager.");
    if (FAILED(CreateObjectFromPath(m_asyncCdPath, CLSID_AsyncCd, &m_pAsyncCdSrc)))
        return FailPlayback(u"ERROR - CreateObjectFromPath failed - clsidAsyncCd");
    if (!LoadSourceFile(m_pAsyncCdSrc, path))
        return FALSE;
    if (FAILED(m_pGraph->AddFilter(m_pAsyncCdSrc, u"AsyncCD Filter")))
        return FailPlayback(u"ERROR - AddFilter failed - m_pAsyncCdSrc");
    // The splitter here is the form that sits behind another source.
    if (FAILED(CreateObjectFromPath(m_splitterPath, CLSID_LAVSplitter, &m_pLavSrc)))
        return FailPlayback(u"ERROR - CreateObjectFromPath2 failed - clsidLavSrc");
    if (!SetSplitterRuntimeConfig())
        return FALSE;
    if (FAILED(m_pGraph->AddFilter(m_pLavSrc, u"LAV Splitter Source")))
        return FailPlayback(u"ERROR - AddFilter failed - m_pLavSrc");

    IPin* out = nullptr;
    IPin* in = nullptr;
    if (FAILED(m_pAsyncCdSrc->FindPin(u"Output", &out)))
        return FailPlayback(u"ERROR - GetPin - Out AsyncCD Filter.");
    if (FAILED(GetPin(m_pLavSrc, PINDIR_INPUT, MEDIATYPE_Stream, &in))) {
        out->Release();
        return FailPlayback(u"ERROR - GetPin - In Lav Video Decoder.");
    }
    if (!ConnectPins(out, in, u"ERROR - Connect failed - Lav Source to Video."))
        return FALSE;
    IPin* pin = nullptr;
    if (FAILED(GetPin(m_pLavSrc, PINDIR_OUTPUT, MEDIATYPE_Audio, &pin)))
        return FailPlayback(u"ERROR - Media type not supported.");
    pin->Release();

    RECT rect;
    if (!pFrame->SetVideoWindow(FALSE, TRUE, &m_hVideoOwner, &m_hNotifyWnd, &rect))
        return FailPlayback(u"ERROR - SetVideoWindow function failed.");
    if (!AddAudioDecoder(pFrame))
        return FALSE;
    if (FAILED(GetPin(m_pLavSrc, PINDIR_OUTPUT, MEDIATYPE_Audio, &out)))
        return FailPlayback(u"ERROR - GetPin - Out Lav Source Splitter Audio.");
    if (FAILED(GetPin(m_pLavAud, PINDIR_INPUT, MEDIATYPE_Audio, &in))) {
        out->Release();
        return FailPlayback(u"ERROR - GetPin - In Lav Audio Decoder.");
    }
    if (!ConnectPins(out, in, u"ERROR - Connect failed - Lav Source to Audio."))
        return FALSE;
    if (!RenderAudioDecoder(volume, u"ERROR - PlayCdLav - put_Volume failed."))
        return FALSE;
    m_volume = volume;
    if (!RunGraph())
        return FALSE;
    m_state = 2;
    m_bCd = TRUE;
    ReadDuration();
    return TRUE;
}
