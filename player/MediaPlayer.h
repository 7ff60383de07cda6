// The playback engine: builds the pipeline for a medium filter by filter
// from the private filter modules, and controls it while it plays.
#pragma once
#include "platform/base/Array.h"
#include "platform/base/CString.h"
#include "platform/base/Rect.h"
#include "platform/media/LavInterfaces.h"
#include "platform/media/MediaInterfaces.h"
#include "player/PlayerFrame.h"

class CMediaPlayer {
public:
    CMediaPlayer();

    IGraphBuilder* m_pGraph = nullptr;
    IMediaControl* m_pControl = nullptr;
    IMediaEventEx* m_pEvent = nullptr;
    IMediaSeeking* m_pSeeking = nullptr;
    IVideoWindow* m_pVideoWindow = nullptr;
    IBasicVideo* m_pBasicVideo = nullptr;
    IBasicAudio* m_pBasicAudio = nullptr;
    IBaseFilter* m_pDvdNav = nullptr;
    IDvdControl2* m_pDvdControl = nullptr;
    IDvdInfo2* m_pDvdInfo = nullptr;
    BOOL m_bMuted = FALSE;
    int32_t m_volume = 50;
    HWND m_hVideoOwner = nullptr;
    HWND m_hNotifyWnd = nullptr;
    BOOL m_bCd = FALSE;
    BOOL m_bDvd = FALSE;
    uint32_t m_dvdChapter = 0;
    uint32_t m_dvdTitle = 0;
    uint32_t m_dvdDomain = 0;
    uint32_t m_dvdSeconds = 0;
    uint32_t m_dvdTitleSeconds = 0;
    uint32_t m_dvdTitleCount = 0;
    uint32_t m_dvdChapterCount = 0;
    uint32_t m_dvdButtonCount = 0;
    uint32_t m_dvdButton = 0;
    IBaseFilter* m_pLavSrc = nullptr;
    IBaseFilter* m_pLavVid = nullptr;
    IBaseFilter* m_pLavAud = nullptr;
    CString m_splitterPath;
    CString m_videoPath;
    CString m_audioPath;
    IBaseFilter* m_pAsyncCdSrc = nullptr;
    CString m_asyncCdPath;
    CString m_startFolder;
    int32_t m_state = 0;
    LONGLONG m_duration = 0;
    BOOL m_bStream = FALSE;
    // The song the stream now playing announced last; empty when none.
    CString m_streamTitle;
    // While set, a failed build keeps its text in m_lastFailure instead of
    // showing it: the frame decides what the user hears (a reconnect).
    BOOL m_bQuietFailures = FALSE;
    CString m_lastFailure;

    // Filter loading and pins.
    void InitFilterPaths();
    HRESULT CreateObjectFromPath(CString path, REFCLSID clsid, IBaseFilter** ppFilter);
    static HRESULT GetPin(IBaseFilter* pFilter, PIN_DIRECTION direction, REFGUID majorType,
                          IPin** ppPin);
    static HRESULT GetPin2(IBaseFilter* pFilter, PIN_DIRECTION direction, int index, IPin** ppPin);
    static bool PinHasMajorType(IPin* pin, REFGUID majorType, PIN_DIRECTION direction);

    // The file and stream graph.
    BOOL PlayFileLav(const CString& path, IPlayerFrame* pFrame);
    BOOL FailPlayback(const CString& text);
    // The CD graph: one track, at this volume in percent.
    BOOL PlayCdLav(const CString& path, IPlayerFrame* pFrame, int volume);
    // The DVD graph: a VIDEO_TS folder, a disc image or a drive.
    BOOL PlayDvdLav(const CString& path, IPlayerFrame* pFrame);

    // DVD navigation (DvdNavigation.cpp).
    void PlayChapterInTitle(uint32_t title, uint32_t chapter);
    void ShowDvdMenu(DVD_MENU_ID menu);
    uint32_t GetChapterCount(uint32_t title);
    // A point of the video view, in its client coordinates.
    void SelectMenuButton(int x, int y);
    void ActivateMenuButton(int x, int y);
    CString GetDomainName() const;
    CString GetTitleDurationText() const;
    void OnDvdChapterStart();
    static uint32_t BcdTimeToSeconds(uint32_t v);
    static uint32_t HmsfToSeconds(uint32_t v);
    static DVD_HMSF_TIMECODE SecondsToHmsf(uint32_t seconds);
    // The words the pump forms for EC_DVD_ERROR and EC_DVD_WARNING; empty
    // for an error it has none for.
    static CString DvdProblemText(LONG code, LONG_PTR p1);

    // Control of the running graph.
    BOOL CleanPlayback();
    void ReadDuration();
    BOOL PauseResume();
    static LONG PercentToVolume(int percent);
    BOOL SetVolume(int percent);
    BOOL StepVolume(BOOL up, int& out);
    void ToggleMute();
    BOOL SeekDrag(BOOL starting, int in, int& out);
    BOOL SeekTo(int in, int& out);
    BOOL GetPosition(int& outPerMille, int& outSeconds);
    BOOL SetVideoRect(RECT rect);
    void ShowVideo(BOOL hide);
    BOOL OnGraphEvent(IPlayerFrame* pFrame);

    // Streams: recording as received, media time, fading (StreamControl.cpp).
    // Starts recording the stream into folder; name names the file of what
    // comes before the first title. A failure's text goes to *error.
    BOOL StartRecording(const CString& folder, const CString& name, CString* error);
    void StopRecording();
    BOOL IsRecording();
    // Why the recording stopped by itself.
    CString RecordingFailure();
    // Media time now, in 100-nanosecond units; false when unknown.
    BOOL GetMediaTime(LONGLONG& now);
    // Seeks a file to a media time, within its length and never before
    // 1 second; gives the time it went to. Running or paused.
    BOOL SeekToTime(LONGLONG target, LONGLONG& reached);
    // Sets the sound to a share (percent) of the volume, leaving m_volume:
    // a fade that the next medium forgets.
    void FadeVolume(int share);

private:
    BOOL BuildVideoChain(const RECT& rect);
    BOOL BuildAudioChain(IPlayerFrame* pFrame);
    // Stretches the builders share (GraphParts.cpp). Each reports its own
    // failure and gives false.
    BOOL ConnectPins(IPin* out, IPin* in, const char16_t* failure);
    // The splitter's settings are the program's, not the ones it keeps.
    BOOL SetSplitterRuntimeConfig();
    // Opens `path` in a source filter.
    BOOL LoadSourceFile(IBaseFilter* filter, const CString& path);
    BOOL AddVideoDecoder(BOOL dvd);
    BOOL RenderVideoDecoder(const RECT& rect);
    BOOL AddAudioDecoder(IPlayerFrame* pFrame);
    BOOL RenderAudioDecoder(int volume, const char16_t* volumeFailure);
    BOOL RunGraph();
    // One DVD row of the pump.
    void OnDvdEvent(LONG code, LONG_PTR p1, LONG_PTR p2, CStringArray& messages);
    // The words of the error that ended the graph's streams.
    CString GraphErrorText();
    void OnStreamTitleEvent(IPlayerFrame* pFrame);
    IStreamRecorder* Recorder();
};
