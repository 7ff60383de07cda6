// The playback engine: builds the pipeline for a medium filter by filter
// from the private filter modules, and controls it while it plays.
#pragma once
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

private:
    BOOL BuildVideoChain(const RECT& rect);
    BOOL BuildAudioChain(IPlayerFrame* pFrame);
    // The words of the error that ended the graph's streams.
    CString GraphErrorText();
};
