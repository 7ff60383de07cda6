// The splitter in its source form: opens a file or URL, finds its streams
// and offers each as an output pin with its media type before anything is
// connected.
#pragma once
#include "modules/lav/LavSplitterStreams.h"
#include "modules/lav/StreamTap.h"

class CLavSplitterSource : public CLavSplitterStreams,
                           public IFileSourceFilter,
                           public IStreamRecorder {
public:
    CLavSplitterSource();
    ~CLavSplitterSource() override;

    HRESULT QueryInterface(REFIID riid, void** ppv) override {
        return CGstFilter::QueryInterface(riid, ppv);
    }
    ULONG AddRef() override { return CGstFilter::AddRef(); }
    ULONG Release() override { return CGstFilter::Release(); }

    HRESULT Load(LPCOLESTR fileName, const AM_MEDIA_TYPE* mt) override;

    // IStreamRecorder
    HRESULT StartRecording(LPCWSTR folder, LPCWSTR name) override;
    HRESULT StopRecording() override;
    HRESULT IsRecording() override;
    HRESULT GetRecordingFailure(char16_t* text, ULONG size) override;

protected:
    HRESULT QueryOther(REFIID riid, void** ppv) override;
    void OnAllStreamsFound() override;

private:
    void Unload();

    GstElement* m_decode = nullptr;
    GstBus* m_loadBus = nullptr;
    CStreamTap m_tap;
};

IUnknown* NewLavSplitterSource();
