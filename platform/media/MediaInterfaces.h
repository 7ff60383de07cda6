// The pipeline interfaces the playback engine calls: filters, pins, media
// types, the graph and its control, events, seeking, audio and picture.
// Only what the engine uses is declared.
#pragma once
#include "platform/base/CString.h"
#include "platform/base/Rect.h"
#include "platform/base/Window.h"
#include "platform/media/ComTypes.h"
#include "platform/media/DvdEvents.h"
#include "platform/media/Guids.h"

// A fixed width: a direction a failed query leaves behind may hold any value.
enum PIN_DIRECTION : int32_t { PINDIR_INPUT = 0, PINDIR_OUTPUT = 1 };

// One media type. The format block and pUnk belong to the record: free it
// with FreeMediaType / DeleteMediaType.
struct AM_MEDIA_TYPE {
    GUID majortype;
    GUID subtype;
    BOOL bFixedSizeSamples;
    BOOL bTemporalCompression;
    ULONG lSampleSize;
    GUID formattype;
    IUnknown* pUnk;
    ULONG cbFormat;
    BYTE* pbFormat;
};

// Frees the format block and the pUnk reference; the record stays.
void FreeMediaType(AM_MEDIA_TYPE& mt);
// Frees a record made by an enumerator, with what it holds.
void DeleteMediaType(AM_MEDIA_TYPE* pmt);

class IPin;
class IBaseFilter;
class IReferenceClock;

class IEnumMediaTypes : public IUnknown {
public:
    // Gives up to count records, each for the caller to DeleteMediaType.
    virtual HRESULT Next(ULONG count, AM_MEDIA_TYPE** types, ULONG* fetched) = 0;
    virtual HRESULT Skip(ULONG count) = 0;
    virtual HRESULT Reset() = 0;
};

class IPin : public IUnknown {
public:
    // Connects this output pin to receiver; with mt null the types are tried.
    virtual HRESULT Connect(IPin* receiver, const AM_MEDIA_TYPE* mt) = 0;
    // Called on an input pin by the output pin that connects to it.
    virtual HRESULT ReceiveConnection(IPin* connector, const AM_MEDIA_TYPE* mt) = 0;
    virtual HRESULT Disconnect() = 0;
    virtual HRESULT QueryDirection(PIN_DIRECTION* direction) = 0;
    // The pin's name, as FindPin knows it; copy of at most size-1 units.
    virtual HRESULT QueryId(char16_t* id, ULONG size) = 0;
    virtual HRESULT EnumMediaTypes(IEnumMediaTypes** types) = 0;
};

class IEnumPins : public IUnknown {
public:
    virtual HRESULT Next(ULONG count, IPin** pins, ULONG* fetched) = 0;
    virtual HRESULT Skip(ULONG count) = 0;
    virtual HRESULT Reset() = 0;
};

class IBaseFilter : public IUnknown {
public:
    virtual HRESULT EnumPins(IEnumPins** pins) = 0;
    virtual HRESULT FindPin(LPCWSTR id, IPin** pin) = 0;
    virtual HRESULT SetSyncSource(IReferenceClock* clock) = 0;
};

class IFileSourceFilter : public IUnknown {
public:
    virtual HRESULT Load(LPCOLESTR fileName, const AM_MEDIA_TYPE* mt) = 0;
};

class IGraphBuilder : public IUnknown {
public:
    virtual HRESULT AddFilter(IBaseFilter* filter, LPCWSTR name) = 0;
    virtual HRESULT RemoveFilter(IBaseFilter* filter) = 0;
    // Completes the pipeline from an output pin to a renderer.
    virtual HRESULT Render(IPin* pin) = 0;
};

using OAFilterState = LONG;
constexpr OAFilterState State_Stopped = 0;
constexpr OAFilterState State_Paused = 1;
constexpr OAFilterState State_Running = 2;

class IMediaControl : public IUnknown {
public:
    virtual HRESULT Run() = 0;
    virtual HRESULT Pause() = 0;
    virtual HRESULT Stop() = 0;
    // Waits up to timeoutMs for a transition to finish. VFW_S_STATE_INTERMEDIATE
    // when it has not, with the state reached so far.
    virtual HRESULT GetState(LONG timeoutMs, OAFilterState* state) = 0;
};

constexpr LONG EC_COMPLETE = 0x01;
constexpr LONG EC_USERABORT = 0x02;
constexpr LONG EC_ERRORABORT = 0x03;

// Events of the program's own, in the range above the pipeline's.
constexpr LONG EC_USER = 0x8000;
// A stream announced a new title, the song now playing; param1 counts the
// titles. IGraphStreamTitle gives the text.
constexpr LONG EC_STREAM_TITLE = EC_USER + 1;
// A filter's recording of its stream stopped by itself (a full disc, a
// write error); the filter's IStreamRecorder says why.
constexpr LONG EC_RECORDING_STOPPED = EC_USER + 2;

class IMediaEventEx : public IUnknown {
public:
    // Takes the oldest queued event; E_ABORT when none comes within timeoutMs.
    virtual HRESULT GetEvent(LONG* code, LONG_PTR* param1, LONG_PTR* param2, LONG timeoutMs) = 0;
    virtual HRESULT FreeEventParams(LONG code, LONG_PTR param1, LONG_PTR param2) = 0;
    // Waits for the end of a running graph; returns at once on one that is not.
    virtual HRESULT WaitForCompletion(LONG timeoutMs, LONG* code) = 0;
    // Every queued event is announced by posting message to window.
    virtual HRESULT SetNotifyWindow(HWND window, UINT message, LONG_PTR instance) = 0;
};

// What the media library said of the error that ended a graph's streams.
// The graph follows such an error with EC_COMPLETE carrying a failure code.
class IGraphErrorText : public IUnknown {
public:
    // E_FAIL when no error has ended the streams since the graph last ran.
    virtual HRESULT GetErrorText(CString* text) = 0;
};

// The title the stream now playing announced last (its current song), as
// the renderers have heard it.
class IGraphStreamTitle : public IUnknown {
public:
    // E_FAIL when the streams have announced no title since the graph was made.
    virtual HRESULT GetStreamTitle(CString* text) = 0;
};

// Recording of a stream as it is received, before any decoder: the bytes
// are written unchanged, one file per title the stream announces. Offered
// by a source filter that receives a stream over the network.
class IStreamRecorder : public IUnknown {
public:
    // Starts writing into folder, made when missing; name (UTF-16, zero
    // ended) names the file of what comes before the stream's first title.
    // VFW_E_NOT_CONNECTED when the source has no stream to record;
    // HRESULT_FROM_WIN32 of the system's error when the folder can't be made.
    virtual HRESULT StartRecording(LPCWSTR folder, LPCWSTR name) = 0;
    virtual HRESULT StopRecording() = 0;
    // S_OK while recording, S_FALSE when not.
    virtual HRESULT IsRecording() = 0;
    // Why the recording stopped by itself (the file and the system's words),
    // copied into text, at most size-1 units; empty when it did not.
    virtual HRESULT GetRecordingFailure(char16_t* text, ULONG size) = 0;
};

constexpr DWORD AM_SEEKING_CanSeekAbsolute = 0x1;
constexpr DWORD AM_SEEKING_CanSeekForwards = 0x2;
constexpr DWORD AM_SEEKING_CanSeekBackwards = 0x4;
constexpr DWORD AM_SEEKING_CanGetCurrentPos = 0x8;
constexpr DWORD AM_SEEKING_CanGetStopPos = 0x10;
constexpr DWORD AM_SEEKING_CanGetDuration = 0x20;
constexpr DWORD AM_SEEKING_NoPositioning = 0x0;
constexpr DWORD AM_SEEKING_AbsolutePositioning = 0x1;

class IMediaSeeking : public IUnknown {
public:
    // S_OK when every asked capability is there, S_FALSE when some are (the
    // argument then holds those), E_FAIL when none is.
    virtual HRESULT CheckCapabilities(DWORD* capabilities) = 0;
    virtual HRESULT GetDuration(LONGLONG* duration) = 0;
    virtual HRESULT GetCurrentPosition(LONGLONG* position) = 0;
    virtual HRESULT SetPositions(LONGLONG* current, DWORD currentFlags, LONGLONG* stop,
                                 DWORD stopFlags) = 0;
};

class IBasicAudio : public IUnknown {
public:
    // Hundredths of a decibel, -10000 (silent) to 0.
    virtual HRESULT put_Volume(LONG volume) = 0;
    virtual HRESULT get_Volume(LONG* volume) = 0;
};

class IBasicVideo : public IUnknown {
public:
    virtual HRESULT GetVideoSize(LONG* width, LONG* height) = 0;
};

constexpr LONG OATRUE = -1;
constexpr LONG OAFALSE = 0;

class IVideoWindow : public IUnknown {
public:
    virtual HRESULT put_Owner(HWND owner) = 0;
    virtual HRESULT get_Owner(HWND* owner) = 0;
    virtual HRESULT put_MessageDrain(HWND drain) = 0;
    virtual HRESULT get_MessageDrain(HWND* drain) = 0;
    virtual HRESULT put_WindowStyle(LONG style) = 0;
    virtual HRESULT get_WindowStyle(LONG* style) = 0;
    virtual HRESULT put_Visible(LONG visible) = 0;
    virtual HRESULT get_Visible(LONG* visible) = 0;
    virtual HRESULT SetWindowPosition(LONG left, LONG top, LONG width, LONG height) = 0;
    virtual HRESULT GetWindowPosition(LONG* left, LONG* top, LONG* width, LONG* height) = 0;
};

// ---- The DVD Navigator ----

// Where the navigator stands.
enum DVD_DOMAIN : int32_t {
    DVD_DOMAIN_FirstPlay = kDvdDomainFirstPlay,
    DVD_DOMAIN_VideoManagerMenu = kDvdDomainVideoManagerMenu,
    DVD_DOMAIN_VideoTitleSetMenu = kDvdDomainVideoTitleSetMenu,
    DVD_DOMAIN_Title = kDvdDomainTitle,
    DVD_DOMAIN_Stop = kDvdDomainStop,
};

enum DVD_MENU_ID : int32_t {
    DVD_MENU_Title = 2,
    DVD_MENU_Root = 3,
};

enum DVD_DISC_SIDE : int32_t { DVD_SIDE_A = 1, DVD_SIDE_B = 2 };

// A time in a title: four bytes in this order in memory.
struct DVD_HMSF_TIMECODE {
    BYTE bHours;
    BYTE bMinutes;
    BYTE bSeconds;
    BYTE bFrames;
};

// The frame rate the navigator states beside a title's length.
constexpr ULONG DVD_TC_FLAG_30fps = 0x2;

// A command's completion object; the engine never asks for one.
class IDvdCmd;

class IDvdControl2 : public IUnknown {
public:
    // Opens the disc of a VIDEO_TS folder, an image file or a drive.
    virtual HRESULT SetDVDDirectory(LPCWSTR path) = 0;
    virtual HRESULT PlayTitle(ULONG title, DWORD flags, IDvdCmd** cmd) = 0;
    virtual HRESULT PlayChapterInTitle(ULONG title, ULONG chapter, DWORD flags, IDvdCmd** cmd) = 0;
    virtual HRESULT PlayAtTimeInTitle(ULONG title, DVD_HMSF_TIMECODE* time, DWORD flags,
                                      IDvdCmd** cmd) = 0;
    virtual HRESULT ShowMenu(DVD_MENU_ID menu, DWORD flags, IDvdCmd** cmd) = 0;
    // A point in the client coordinates of the window that owns the picture.
    virtual HRESULT SelectAtPosition(POINT point) = 0;
    virtual HRESULT ActivateAtPosition(POINT point) = 0;
};

class IDvdInfo2 : public IUnknown {
public:
    virtual HRESULT GetCurrentDomain(DVD_DOMAIN* domain) = 0;
    virtual HRESULT GetNumberOfChapters(ULONG title, ULONG* chapters) = 0;
    // The length of the title that plays.
    virtual HRESULT GetTotalTitleTime(DVD_HMSF_TIMECODE* total, ULONG* timeCodeFlags) = 0;
    virtual HRESULT GetDVDVolumeInfo(ULONG* volumes, ULONG* volume, DVD_DISC_SIDE* side,
                                     ULONG* titles) = 0;
};

// Makes an object of a class the platform provides (the Filter Graph Manager).
HRESULT CoCreateInstance(REFCLSID clsid, IUnknown* outer, DWORD context, REFIID riid, void** ppv);
