// The graph of a DVD-Video disc: the DVD Navigator, its picture and
// sub-pictures into the two inputs of the video decoder, its sound into the
// audio decoder.
#include "platform/base/MessageBox.h"
#include "player/GraphParts.h"
#include "player/MediaPlayer.h"

namespace {

// What the navigator said of a disc it refused; empty when it said nothing.
CString RefusalReason(IBaseFilter* navigator) {
    CString reason;
    IGraphErrorText* text = nullptr;
    if (navigator && SUCCEEDED(QueryTo(navigator, IID_IGraphErrorText, &text))) {
        if (FAILED(text->GetErrorText(&reason)))
            reason.Empty();
        text->Release();
    }
    return reason;
}

} // namespace

BOOL CMediaPlayer::PlayDvdLav(const CString& path, IPlayerFrame* pFrame) {
    CBuildWaitCursor wait(pFrame);
    if (m_state != 0 && !CleanPlayback())
        return FALSE;

    if (FAILED(CoCreateInstance(CLSID_FilterGraph, nullptr, CLSCTX_INPROC_SERVER, IID_IGraphBuilder,
                                reinterpret_cast<void**>(&m_pGraph))))
        return FailPlayback(u"ERROR - Could not create the Filter Graph Manager.");
    // The navigator is the system's own, not one of the private modules.
    if (FAILED(CoCreateInstance(CLSID_DVDNavigator, nullptr, CLSCTX_INPROC_SERVER, IID_IBaseFilter,
                                reinterpret_cast<void**>(&m_pDvdNav))))
        return FailPlayback(u"ERROR - CreateObjectFromPath2 failed - clsidDvdNav");
    if (FAILED(m_pGraph->AddFilter(m_pDvdNav, u"DVD Navigator")))
        return FailPlayback(u"ERROR - AddFilter failed - m_pDvdNav");
    if (FAILED(QueryTo(m_pDvdNav, IID_IDvdControl2, &m_pDvdControl)))
        return FailPlayback(u"ERROR - QueryInterface failed - IID_IDvdControl2");
    if (FAILED(QueryTo(m_pDvdNav, IID_IDvdInfo2, &m_pDvdInfo)))
        return FailPlayback(u"ERROR - QueryInterface failed - IID_IDvdInfo2");
    if (FAILED(m_pDvdControl->SetDVDDirectory(path.GetString()))) {
        // Why the disc was refused (not a DVD, damaged, encrypted) follows
        // the failure's own words in a box of its own.
        const CString reason = RefusalReason(m_pDvdNav);
        FailPlayback(u"ERROR - SetDVDDirectory failed - IID_IDvdControl2");
        if (!reason.IsEmpty())
            MessageBoxW(m_hNotifyWnd, reason, u"Orvex", MB_OK);
        return FALSE;
    }

    IPin* pin = nullptr;
    const BOOL hasVideo = SUCCEEDED(m_pDvdNav->FindPin(u"Video", &pin));
    SafeRelease(pin);
    const BOOL hasAudio = SUCCEEDED(m_pDvdNav->FindPin(u"AC3", &pin));
    SafeRelease(pin);
    if (!hasVideo || !hasAudio)
        return FailPlayback(u"ERROR - Could not get both Audio and Video DVD streams.");

    RECT rect;
    if (!pFrame->SetVideoWindow(TRUE, TRUE, &m_hVideoOwner, &m_hNotifyWnd, &rect))
        return FailPlayback(u"ERROR - SetVideoWindow function failed.");
    if (!AddVideoDecoder(TRUE))
        return FALSE;
    IPin* out = nullptr;
    IPin* in = nullptr;
    if (FAILED(m_pDvdNav->FindPin(u"Video", &out)))
        return FailPlayback(u"ERROR - GetPin - Out DvdNavigator.");
    if (FAILED(GetPin(m_pLavVid, PINDIR_INPUT, MEDIATYPE_DVD_ENCRYPTED_PACK, &in))) {
        out->Release();
        return FailPlayback(u"ERROR - GetPin - In Lav Video Decoder.");
    }
    if (!ConnectPins(out, in, u"ERROR - Connect failed - DvdNavigator to Video."))
        return FALSE;
    if (FAILED(m_pDvdNav->FindPin(u"SubPicture", &out)))
        return FailPlayback(u"ERROR - FindPin - Out - DvdNavigator sub-picture.");
    if (FAILED(GetPin2(m_pLavVid, PINDIR_INPUT, 1, &in))) {
        out->Release();
        return FailPlayback(u"ERROR - GetPin2 - In - Lav Video Decoder sub-title.");
    }
    if (!ConnectPins(out, in, u"ERROR - Connect failed - DvdNavigator subpicture to LAv subtitle."))
        return FALSE;
    if (!RenderVideoDecoder(rect))
        return FALSE;

    if (!AddAudioDecoder(pFrame))
        return FALSE;
    if (FAILED(m_pDvdNav->FindPin(u"AC3", &out)))
        return FailPlayback(u"ERROR - GetPin - Out DvdNavigator Audio.");
    if (FAILED(GetPin(m_pLavAud, PINDIR_INPUT, MEDIATYPE_DVD_ENCRYPTED_PACK, &in))) {
        out->Release();
        return FailPlayback(u"ERROR - GetPin - In Lav Audio Decoder.");
    }
    if (!ConnectPins(out, in, u"ERROR - Connect failed - DvdNavigator to Audio."))
        return FALSE;
    if (!RenderAudioDecoder(50, u"ERROR - put_Volume failed."))
        return FALSE;
    if (!RunGraph())
        return FALSE;
    m_state = 2;
    m_bDvd = TRUE;
    // A DVD's time comes from its events.
    ReadDuration();
    return TRUE;
}
