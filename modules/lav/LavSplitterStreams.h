// What both forms of the splitter share: the settings interface, and the
// streams their demuxing chain finds, each offered as an output pin with its
// media type and held there until the graph first runs.
#pragma once
#include "platform/media/GstFilter.h"
#include "platform/media/LavInterfaces.h"

class CLavSplitterStreams : public CGstFilter, public ILAVFSettings {
public:
    explicit CLavSplitterStreams(const char* binName);
    explicit CLavSplitterStreams(GstElement* bin);
    ~CLavSplitterStreams() override;

    HRESULT QueryInterface(REFIID riid, void** ppv) override {
        return CGstFilter::QueryInterface(riid, ppv);
    }
    ULONG AddRef() override { return CGstFilter::AddRef(); }
    ULONG Release() override { return CGstFilter::Release(); }

    HRESULT SetRuntimeConfig(BOOL runtime) override;
    void PrepareRun() override;

protected:
    HRESULT QueryOther(REFIID riid, void** ppv) override;
    // A decoding bin that stops at parsed, compressed streams and offers
    // each of them here as an output pin.
    GstElement* MakeDemuxer(const char* factory);
    // Lets go of the held streams; their pins stay.
    void ReleaseStreams();
    // Called on a streaming thread once the demuxer has found every stream.
    virtual void OnAllStreamsFound() = 0;

private:
    struct HeldStream {
        GstPad* pad;
        gulong probe;
        CGstPin* pin;
    };
    static void OnPadAdded(GstElement* element, GstPad* pad, gpointer self);
    static void OnNoMorePads(GstElement* element, gpointer self);

    std::mutex m_streamLock;
    std::vector<HeldStream> m_streams;
    int m_videoCount = 0, m_audioCount = 0, m_otherCount = 0;
    BOOL m_runtimeConfig = FALSE;
    bool m_running = false; // under m_streamLock
};
