// The decoder filters: one input pin, one output pin, and between them the
// decoder that the connected stream's type calls for, preferring the FFmpeg
// decoders. The audio decoder also honours its codec switches and mixes down
// to two channels when asked.
#pragma once
#include "platform/media/GstFilter.h"
#include "platform/media/LavInterfaces.h"

class CLavDecoder : public CGstFilter {
public:
    CLavDecoder(const char* name, REFGUID major);
    ~CLavDecoder() override;

    HRESULT OnReceiveConnection(CGstPin* pin, IPin* connector, GstCaps* caps) override;
    void OnDisconnect(CGstPin* pin) override;
    std::vector<GstCaps*> OfferedCaps(CGstPin* pin) override;

protected:
    // Whether the decoder may take a stream of these caps.
    virtual bool Accepts(const GstCaps*) { return true; }
    // Elements after the decoder, in order; none by default.
    virtual std::vector<GstElement*> MakeTail() { return {}; }
    // What leaves the decoder for a given input, before it has negotiated.
    virtual GstCaps* OutputFor(const GstCaps* input) = 0;

    GUID m_major;
    CGstPin* m_input;
    CGstPin* m_output;
    std::mutex m_chainLock;
    GstCaps* m_inputCaps = nullptr;
    std::vector<GstElement*> m_chain;
};

class CLavVideo : public CLavDecoder, public ILAVVideoSettings {
public:
    CLavVideo();
    HRESULT QueryInterface(REFIID riid, void** ppv) override {
        return CGstFilter::QueryInterface(riid, ppv);
    }
    ULONG AddRef() override { return CGstFilter::AddRef(); }
    ULONG Release() override { return CGstFilter::Release(); }

    HRESULT SetRuntimeConfig(BOOL runtime) override;
    HRESULT SetDVDVideoSupport(BOOL enabled) override;

protected:
    HRESULT QueryOther(REFIID riid, void** ppv) override;
    GstCaps* OutputFor(const GstCaps* input) override;

private:
    BOOL m_runtimeConfig = FALSE;
    BOOL m_dvdVideo = FALSE;
};

class CLavAudio : public CLavDecoder, public ILAVAudioSettings {
public:
    CLavAudio();
    HRESULT QueryInterface(REFIID riid, void** ppv) override {
        return CGstFilter::QueryInterface(riid, ppv);
    }
    ULONG AddRef() override { return CGstFilter::AddRef(); }
    ULONG Release() override { return CGstFilter::Release(); }

    HRESULT SetRuntimeConfig(BOOL runtime) override;
    HRESULT SetFormatConfiguration(LAVAudioCodec codec, BOOL enabled) override;
    BOOL GetFormatConfiguration(LAVAudioCodec codec) override;
    HRESULT SetMixingEnabled(BOOL enabled) override;
    BOOL GetMixingEnabled() override;

    // The codec switch a stream falls under, or -1 when none does.
    static int CodecOf(const GstCaps* caps);

protected:
    HRESULT QueryOther(REFIID riid, void** ppv) override;
    bool Accepts(const GstCaps* caps) override;
    std::vector<GstElement*> MakeTail() override;
    GstCaps* OutputFor(const GstCaps* input) override;

private:
    GstCaps* MixCaps() const;

    BOOL m_runtimeConfig = FALSE;
    BOOL m_codecs[kLavAudioCodecSlots];
    std::atomic<BOOL> m_mixing{FALSE};
    GstElement* m_mixFilter = nullptr;
};

IUnknown* NewLavVideo();
IUnknown* NewLavAudio();
