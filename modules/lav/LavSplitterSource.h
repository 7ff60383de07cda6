// The splitter in its source form: opens a file or URL, finds its streams
// and offers each as an output pin with its media type before anything is
// connected. The streams wait, held at the pins, until the graph first runs.
#pragma once
#include "platform/media/GstFilter.h"
#include "platform/media/LavInterfaces.h"

class CLavSplitterSource : public CGstFilter, public IFileSourceFilter, public ILAVFSettings {
public:
    CLavSplitterSource();
    ~CLavSplitterSource() override;

    HRESULT QueryInterface(REFIID riid, void** ppv) override {
        return CGstFilter::QueryInterface(riid, ppv);
    }
    ULONG AddRef() override { return CGstFilter::AddRef(); }
    ULONG Release() override { return CGstFilter::Release(); }

    HRESULT Load(LPCOLESTR fileName, const AM_MEDIA_TYPE* mt) override;
    HRESULT SetRuntimeConfig(BOOL runtime) override;
    void PrepareRun() override;

protected:
    HRESULT QueryOther(REFIID riid, void** ppv) override;

private:
    struct HeldStream {
        GstPad* pad;
        gulong probe;
        CGstPin* pin;
    };
    static void OnPadAdded(GstElement* element, GstPad* pad, gpointer self);
    static void OnNoMorePads(GstElement* element, gpointer self);
    void Unload();

    GstElement* m_decode = nullptr;
    GstBus* m_loadBus = nullptr;
    std::mutex m_streamLock;
    std::vector<HeldStream> m_streams;
    int m_videoCount = 0, m_audioCount = 0, m_otherCount = 0;
    BOOL m_runtimeConfig = FALSE;
    bool m_running = false; // under m_streamLock
};

IUnknown* NewLavSplitterSource();
