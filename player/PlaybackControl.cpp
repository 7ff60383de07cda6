// What is done to a running graph: teardown, pause, volume, mute, seeking,
// position, the picture rectangle and the event pump.
#include <cmath>

#include "platform/base/MessageBox.h"
#include "player/MediaPlayer.h"

namespace {

constexpr LONGLONG kUnitsPerSecond = 10000000;

void RemoveAndRelease(IGraphBuilder* graph, IBaseFilter*& filter) {
    if (!filter)
        return;
    filter->SetSyncSource(nullptr);
    if (graph)
        graph->RemoveFilter(filter);
    SafeRelease(filter);
}

int Clamp(int v) {
    return v < 0 ? 0 : (v > 100 ? 100 : v);
}

} // namespace

BOOL CMediaPlayer::CleanPlayback() {
    // The recording ends before the stream does, its files complete.
    StopRecording();
    BOOL ok = TRUE;
    auto complain = [this, &ok](const char16_t* text) {
        if (m_hNotifyWnd)
            MessageBoxW(m_hNotifyWnd, text, u"Orvex", MB_OK);
        ok = FALSE;
    };
    if (m_pControl && FAILED(m_pControl->Stop()))
        complain(u"ERROR CleanPlayback - Stop failed.");
    if (m_pEvent) {
        LONG code = 0;
        m_pEvent->WaitForCompletion(-1, &code);
    }
    if (m_pVideoWindow && FAILED(m_pVideoWindow->put_Visible(0)))
        complain(u"ERROR CleanPlayback - put_Visable failed.");
    if (m_pVideoWindow && FAILED(m_pVideoWindow->put_Owner(nullptr)))
        complain(u"ERROR CleanPlayback - put_Owner failed.");
    SafeRelease(m_pSeeking);
    if (m_pEvent) {
        m_pEvent->SetNotifyWindow(nullptr, 0, 0);
        SafeRelease(m_pEvent);
    }
    SafeRelease(m_pControl);
    SafeRelease(m_pBasicAudio);
    SafeRelease(m_pBasicVideo);
    SafeRelease(m_pVideoWindow);
    SafeRelease(m_pDvdNav);
    SafeRelease(m_pDvdControl);
    SafeRelease(m_pDvdInfo);
    RemoveAndRelease(m_pGraph, m_pAsyncCdSrc);
    RemoveAndRelease(m_pGraph, m_pLavAud);
    RemoveAndRelease(m_pGraph, m_pLavVid);
    RemoveAndRelease(m_pGraph, m_pLavSrc);
    SafeRelease(m_pGraph);
    m_bDvd = FALSE;
    m_bCd = FALSE;
    m_bMuted = FALSE;
    m_state = 0;
    m_duration = 0;
    m_bStream = FALSE;
    m_volume = 50;
    m_streamTitle.Empty();
    return ok;
}

void CMediaPlayer::ReadDuration() {
    if (m_state != 2 || m_bDvd)
        return;
    m_duration = 0;
    if (!m_pSeeking)
        return;
    DWORD caps = AM_SEEKING_CanSeekAbsolute | AM_SEEKING_CanGetDuration;
    if (m_pSeeking->CheckCapabilities(&caps) != S_OK ||
        m_pSeeking->GetDuration(&m_duration) != S_OK)
        m_duration = 0;
}

BOOL CMediaPlayer::PauseResume() {
    if (!m_pControl || m_state == 0)
        return FALSE;
    if (m_state == 2) {
        if (FAILED(m_pControl->Pause()))
            return FALSE;
        m_state = 1;
    } else if (m_state == 1) {
        if (FAILED(m_pControl->Run()))
            return FALSE;
        m_state = 2;
    }
    return TRUE;
}

LONG CMediaPlayer::PercentToVolume(int percent) {
    if (percent < 1)
        return -10000;
    if (percent >= 100)
        return 0;
    double value = std::fabs(std::log10(percent / 100.0)) * -5000.0;
    auto result = static_cast<LONG>(value);
    if (result < -10000)
        return -10000;
    return result > 0 ? 0 : result;
}

BOOL CMediaPlayer::SetVolume(int percent) {
    if (m_bMuted || !m_pBasicAudio)
        return FALSE;
    int v = Clamp(percent);
    if (FAILED(m_pBasicAudio->put_Volume(PercentToVolume(v))))
        return FALSE;
    m_volume = v;
    return TRUE;
}

BOOL CMediaPlayer::StepVolume(BOOL up, int& out) {
    if (m_bMuted || !m_pBasicAudio)
        return FALSE;
    int v = Clamp(m_volume + (up ? 4 : -4));
    if (FAILED(m_pBasicAudio->put_Volume(PercentToVolume(v))))
        return FALSE;
    m_volume = v;
    out = v;
    return TRUE;
}

void CMediaPlayer::ToggleMute() {
    if (!m_pBasicAudio)
        return;
    LONG current = 0;
    if (FAILED(m_pBasicAudio->get_Volume(&current)))
        return;
    if (current != -10000) {
        if (SUCCEEDED(m_pBasicAudio->put_Volume(-10000)))
            m_bMuted = TRUE;
    } else if (SUCCEEDED(m_pBasicAudio->put_Volume(PercentToVolume(m_volume)))) {
        m_bMuted = FALSE;
    }
}

BOOL CMediaPlayer::SeekDrag(BOOL starting, int in, int& out) {
    if (m_bDvd && m_pDvdControl) {
        const auto seconds =
            static_cast<uint32_t>(static_cast<uint64_t>(m_dvdTitleSeconds) * in / 1000);
        if (starting) {
            if (m_state == 2) {
                if (!m_pControl || FAILED(m_pControl->Pause()))
                    return FALSE;
                m_state = 1;
            }
            out = static_cast<int>(seconds);
            return TRUE;
        }
        if (m_state != 1)
            return TRUE;
        DVD_HMSF_TIMECODE time = SecondsToHmsf(seconds);
        const HRESULT seek = m_pDvdControl->PlayAtTimeInTitle(m_dvdTitle, &time, 0, nullptr);
        const HRESULT run = m_pControl ? m_pControl->Run() : E_POINTER;
        if (FAILED(seek)) {
            if (SUCCEEDED(run))
                m_state = 2;
            return FALSE;
        }
        if (FAILED(run))
            return FALSE;
        m_state = 2;
        out = static_cast<int>(seconds);
        return TRUE;
    }
    if (!m_pControl || !m_pSeeking || m_state == 0)
        return FALSE;
    LONGLONG target = m_duration * in / 1000;
    if (target < kUnitsPerSecond)
        target = kUnitsPerSecond;
    out = static_cast<int>(target / kUnitsPerSecond);
    if (starting) {
        if (m_state == 2) {
            if (FAILED(m_pControl->Pause()))
                return FALSE;
            m_state = 1;
        }
        if (FAILED(m_pSeeking->SetPositions(&target, AM_SEEKING_AbsolutePositioning, nullptr,
                                            AM_SEEKING_NoPositioning)))
            return FALSE;
    } else if (m_state == 1) {
        if (FAILED(m_pSeeking->SetPositions(&target, AM_SEEKING_AbsolutePositioning, nullptr,
                                            AM_SEEKING_NoPositioning)))
            return FALSE;
        if (FAILED(m_pControl->Run()))
            return FALSE;
        m_state = 2;
    }
    return TRUE;
}

BOOL CMediaPlayer::SeekTo(int in, int& out) {
    if (m_state != 2 || !m_pControl || !m_pSeeking)
        return FALSE;
    if (m_bDvd) {
        uint64_t seconds = static_cast<uint64_t>(m_dvdTitleSeconds) * in / 1000;
        if (seconds > m_dvdTitleSeconds)
            seconds = m_dvdTitleSeconds;
        DVD_HMSF_TIMECODE time = SecondsToHmsf(static_cast<uint32_t>(seconds));
        if (!m_pDvdControl ||
            FAILED(m_pDvdControl->PlayAtTimeInTitle(m_dvdTitle, &time, 0, nullptr)))
            return FALSE;
        out = static_cast<int>(seconds);
        return TRUE;
    }
    LONGLONG target = m_duration * in / 1000;
    if (target < kUnitsPerSecond)
        target = kUnitsPerSecond;
    out = static_cast<int>(target / kUnitsPerSecond);
    return SUCCEEDED(m_pSeeking->SetPositions(&target, AM_SEEKING_AbsolutePositioning, nullptr,
                                              AM_SEEKING_NoPositioning));
}

BOOL CMediaPlayer::GetPosition(int& outPerMille, int& outSeconds) {
    if (m_bDvd) {
        if (m_dvdTitleSeconds == 0 || m_dvdSeconds == 0)
            return FALSE;
        uint64_t perMille = static_cast<uint64_t>(m_dvdSeconds) * 1000 / m_dvdTitleSeconds;
        if (perMille > 1000)
            return FALSE;
        outPerMille = static_cast<int>(perMille);
        outSeconds = static_cast<int>(m_dvdSeconds);
        return TRUE;
    }
    if (!m_pSeeking || m_state != 2)
        return FALSE;
    LONGLONG now = 0;
    if (FAILED(m_pSeeking->GetCurrentPosition(&now)) || m_duration <= 0)
        return FALSE;
    LONGLONG perMille = now * 1000 / m_duration;
    LONGLONG seconds = now / kUnitsPerSecond;
    if (perMille > 1000 || seconds < 0)
        return FALSE;
    outPerMille = static_cast<int>(perMille);
    outSeconds = static_cast<int>(seconds);
    return TRUE;
}

BOOL CMediaPlayer::SetVideoRect(RECT rect) {
    if (!m_pGraph || !m_pVideoWindow || !m_pBasicVideo || IsRectEmpty(rect))
        return FALSE;
    double w = rect.Width();
    double h = rect.Height();
    LONG vw = 0, vh = 0;
    if (FAILED(m_pBasicVideo->GetVideoSize(&vw, &vh)) || vh == 0)
        return FailPlayback(u"ERROR - GetVideoSize failed.");
    double aspect = static_cast<double>(vw) / vh;
    double fit = aspect * h;
    if (w >= fit) {
        InflateRect(rect, -static_cast<LONG>((w - fit) * 0.5), 0);
    } else {
        double height = w / aspect;
        if (height > h)
            return FailPlayback(u"ERROR - SetVideoRect error.");
        InflateRect(rect, 0, -static_cast<LONG>((h - height) * 0.5));
    }
    if (FAILED(m_pVideoWindow->SetWindowPosition(rect.left, rect.top, rect.Width(), rect.Height())))
        return FailPlayback(u"ERROR - SetWindowPosition failed.");
    return TRUE;
}

void CMediaPlayer::ShowVideo(BOOL hide) {
    if (m_pVideoWindow)
        m_pVideoWindow->put_Visible(hide ? OAFALSE : OATRUE);
}

BOOL CMediaPlayer::OnGraphEvent(IPlayerFrame* pFrame) {
    if (!m_pEvent)
        return FALSE;
    LONG code = 0;
    LONG_PTR p1 = 0, p2 = 0;
    CStringArray dvdMessages;
    while (m_pEvent && SUCCEEDED(m_pEvent->GetEvent(&code, &p1, &p2, 0))) {
        m_pEvent->FreeEventParams(code, p1, p2);
        if (code >= EC_DVD_DOMAIN_CHANGE && code <= EC_DVD_CURRENT_HMSF_TIME) {
            OnDvdEvent(code, p1, p2, dvdMessages);
            continue;
        }
        if (code == EC_STREAM_TITLE) {
            OnStreamTitleEvent(pFrame);
        } else if (code == EC_RECORDING_STOPPED) {
            pFrame->OnRecordingStopped(RecordingFailure());
        } else if (code == EC_COMPLETE || code == EC_USERABORT) {
            // An end forced by an error is told once playback has ended,
            // as every failure of the engine is.
            CString error = code == EC_COMPLETE && FAILED(static_cast<HRESULT>(p1))
                                ? GraphErrorText()
                                : CString();
            // A stream with no length never ends by itself: it dropped.
            if (code == EC_COMPLETE && m_bStream && m_duration == 0 &&
                pFrame->OnStreamDropped(error))
                break;
            pFrame->StopPlayback(TRUE);
            if (!error.IsEmpty()) {
                CString text;
                text.Format(u"Playback Error - %s", error);
                MessageBoxW(m_hNotifyWnd, text, u"Orvex", MB_OK);
            }
            break;
        }
    }
    return TRUE;
}

CString CMediaPlayer::GraphErrorText() {
    CString text;
    IGraphErrorText* errors = nullptr;
    if (m_pEvent && SUCCEEDED(m_pEvent->QueryInterface(IID_IGraphErrorText,
                                                       reinterpret_cast<void**>(&errors)))) {
        if (FAILED(errors->GetErrorText(&text)))
            text.Empty();
        errors->Release();
    }
    return text.IsEmpty() ? CString(u"Internal data stream error.") : text;
}
