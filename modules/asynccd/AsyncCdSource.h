// AsyncCd.ax: the audio CD source. It opens a "TrackNN.cda" path of a
// drive's folder (or of a disc image's) and delivers the track as the bytes
// of a WAV file on its pin "Output", for the splitter behind it. The bytes
// are held until that pin is connected, and can be sought.
#pragma once
#include "modules/asynccd/CdTrackReader.h"
#include "platform/media/GstFilter.h"

class CAsyncCdSource : public CGstFilter, public IFileSourceFilter {
public:
    CAsyncCdSource();
    ~CAsyncCdSource() override;

    HRESULT QueryInterface(REFIID riid, void** ppv) override {
        return CGstFilter::QueryInterface(riid, ppv);
    }
    ULONG AddRef() override { return CGstFilter::AddRef(); }
    ULONG Release() override { return CGstFilter::Release(); }

    HRESULT Load(LPCOLESTR fileName, const AM_MEDIA_TYPE* mt) override;

protected:
    HRESULT QueryOther(REFIID riid, void** ppv) override;

private:
    static void OnLinked(GstPad* pad, GstPad* peer, gpointer self);

    GstElement* m_source = nullptr; // owned by the bin
    GstPad* m_sourcePad = nullptr;
    std::atomic<gulong> m_hold{0};
};

IUnknown* NewAsyncCdSource();
