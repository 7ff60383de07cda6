// What the engine does for streams beyond playing them: the title they
// announce, recording them as received, and the media time for the
// desktop's controls and the fade of the sleep timer.
#include "player/MediaPlayer.h"

namespace {

constexpr LONGLONG kUnitsPerSecond = 10000000;
constexpr ULONG kFailureUnits = 1024;

} // namespace

void CMediaPlayer::OnStreamTitleEvent(IPlayerFrame* pFrame) {
    // A file's own tags name the file, not a song of a station.
    if (!m_bStream || !m_pEvent)
        return;
    IGraphStreamTitle* titles = nullptr;
    if (FAILED(m_pEvent->QueryInterface(IID_IGraphStreamTitle, reinterpret_cast<void**>(&titles))))
        return;
    CString title;
    HRESULT hr = titles->GetStreamTitle(&title);
    titles->Release();
    if (FAILED(hr) || title == m_streamTitle)
        return;
    m_streamTitle = title;
    pFrame->OnStreamTitle(title);
}

IStreamRecorder* CMediaPlayer::Recorder() {
    IStreamRecorder* recorder = nullptr;
    if (!m_pLavSrc ||
        FAILED(m_pLavSrc->QueryInterface(IID_IStreamRecorder, reinterpret_cast<void**>(&recorder))))
        return nullptr;
    return recorder;
}

BOOL CMediaPlayer::StartRecording(const CString& folder, const CString& name, CString* error) {
    IStreamRecorder* recorder = m_state != 0 && m_bStream ? Recorder() : nullptr;
    if (!recorder) {
        if (error)
            *error = u"Recording is not available for this stream.";
        return FALSE;
    }
    HRESULT hr = recorder->StartRecording(folder.GetString(), name.GetString());
    recorder->Release();
    if (SUCCEEDED(hr))
        return TRUE;
    if (error)
        *error = hr == VFW_E_NOT_CONNECTED ? CString(u"Recording is not available for this stream.")
                                           : RecordingFailure();
    return FALSE;
}

void CMediaPlayer::StopRecording() {
    if (IStreamRecorder* recorder = Recorder()) {
        recorder->StopRecording();
        recorder->Release();
    }
}

BOOL CMediaPlayer::IsRecording() {
    IStreamRecorder* recorder = Recorder();
    if (!recorder)
        return FALSE;
    BOOL recording = recorder->IsRecording() == S_OK;
    recorder->Release();
    return recording;
}

CString CMediaPlayer::RecordingFailure() {
    IStreamRecorder* recorder = Recorder();
    if (!recorder)
        return CString();
    char16_t text[kFailureUnits];
    CString failure;
    if (SUCCEEDED(recorder->GetRecordingFailure(text, kFailureUnits)))
        failure = text;
    recorder->Release();
    return failure;
}

BOOL CMediaPlayer::GetMediaTime(LONGLONG& now) {
    if (!m_pSeeking || m_state == 0)
        return FALSE;
    LONGLONG position = 0;
    if (FAILED(m_pSeeking->GetCurrentPosition(&position)) || position < 0)
        return FALSE;
    now = position;
    return TRUE;
}

BOOL CMediaPlayer::SeekToTime(LONGLONG target, LONGLONG& reached) {
    // The same rules as the bar's seeking: a file of known length, never
    // before its first second.
    if (m_state == 0 || !m_pSeeking || m_bStream || m_bDvd || m_duration <= 0)
        return FALSE;
    if (target > m_duration)
        target = m_duration;
    if (target < kUnitsPerSecond)
        target = kUnitsPerSecond;
    if (FAILED(m_pSeeking->SetPositions(&target, AM_SEEKING_AbsolutePositioning, nullptr,
                                        AM_SEEKING_NoPositioning)))
        return FALSE;
    reached = target;
    return TRUE;
}

void CMediaPlayer::FadeVolume(int share) {
    if (!m_pBasicAudio || m_bMuted)
        return;
    share = share < 0 ? 0 : (share > 100 ? 100 : share);
    m_pBasicAudio->put_Volume(PercentToVolume(m_volume * share / 100));
}
