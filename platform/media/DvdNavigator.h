// The DVD Navigator: the platform's own source filter for DVD-Video. Its
// output pins have fixed names: "Video" (the MPEG picture), "AC3" (the sound
// track that plays, whatever its coding) and "SubPicture" (the sub-pictures
// and menu buttons); each states MEDIATYPE_DVD_ENCRYPTED_PACK with the
// stream's caps. Steered through IDvdControl2, asked through IDvdInfo2, and
// telling the graph where it is through the EC_DVD_ events.
#pragma once
#include "platform/media/DvdReader.h"
#include "platform/media/GstFilter.h"
#include "platform/media/MediaInterfaces.h"

class CDvdNavigator : public CGstFilter,
                      public IDvdControl2,
                      public IDvdInfo2,
                      public IGraphErrorText {
public:
    CDvdNavigator();
    ~CDvdNavigator() override;

    HRESULT QueryInterface(REFIID riid, void** ppv) override {
        return CGstFilter::QueryInterface(riid, ppv);
    }
    ULONG AddRef() override { return CGstFilter::AddRef(); }
    ULONG Release() override { return CGstFilter::Release(); }

    void PrepareRun() override;
    void JoinGraph(IUnknown* graph) override;
    std::vector<GstCaps*> OfferedCaps(CGstPin* pin) override;

    // IDvdControl2
    HRESULT SetDVDDirectory(LPCWSTR path) override;
    HRESULT PlayTitle(ULONG title, DWORD flags, IDvdCmd** cmd) override;
    HRESULT PlayChapterInTitle(ULONG title, ULONG chapter, DWORD flags, IDvdCmd** cmd) override;
    HRESULT PlayAtTimeInTitle(ULONG title, DVD_HMSF_TIMECODE* time, DWORD flags,
                              IDvdCmd** cmd) override;
    HRESULT ShowMenu(DVD_MENU_ID menu, DWORD flags, IDvdCmd** cmd) override;
    HRESULT SelectAtPosition(POINT point) override;
    HRESULT ActivateAtPosition(POINT point) override;

    // IDvdInfo2
    HRESULT GetCurrentDomain(DVD_DOMAIN* domain) override;
    HRESULT GetNumberOfChapters(ULONG title, ULONG* chapters) override;
    HRESULT GetTotalTitleTime(DVD_HMSF_TIMECODE* total, ULONG* timeCodeFlags) override;
    HRESULT GetDVDVolumeInfo(ULONG* volumes, ULONG* volume, DVD_DISC_SIDE* side,
                             ULONG* titles) override;

    // IGraphErrorText: why the last disc was refused.
    HRESULT GetErrorText(CString* text) override;

protected:
    HRESULT QueryOther(REFIID riid, void** ppv) override;

private:
    // A point of the owner window as a point of the picture's frame; false
    // when it lies outside the picture.
    bool ToFrame(POINT point, int& x, int& y);
    static GstPadProbeReturn OnVideoLeaving(GstPad* pad, GstPadProbeInfo* info, gpointer self);

    CDvdReader m_reader;
    // Where the picture on the screen stands, as the reports tell it on
    // their way out; the reading is ahead of it.
    std::atomic<LONG> m_shownDomain{0};
    std::atomic<LONG> m_shownTitle{0};
    CGstPin* m_outputs[CDvdReader::kOutputs];
    std::mutex m_graphLock;
    IUnknown* m_graph = nullptr;
    std::mutex m_errorLock;
    std::string m_error;
};
