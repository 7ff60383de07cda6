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

    bool AcceptsMajor(CGstPin* pin, REFGUID major) override;
    std::vector<GUID> FurtherMajors(CGstPin* pin) override;
    HRESULT OnReceiveConnection(CGstPin* pin, IPin* connector, GstCaps* caps) override;
    void OnDisconnect(CGstPin* pin) override;
    std::vector<GstCaps*> OfferedCaps(CGstPin* pin) override;

protected:
    // Whether the decoder may take a stream of these caps.
    virtual bool Accepts(const GstCaps*) { return true; }
    // Whether the input takes the DVD Navigator's streams
    // (MEDIATYPE_DVD_ENCRYPTED_PACK) as well.
    virtual bool TakesDvdStreams() const = 0;
    // Elements after the decoder, in order; none by default.
    virtual std::vector<GstElement*> MakeTail() { return {}; }
    // Links the last element of the chain to what follows it inside the
    // filter; gives the pad the output pin carries. By default the last
    // element's own output.
    virtual GstPad* LinkTail(GstElement* last);
    // What leaves the decoder for a given input, before it has negotiated.
    virtual GstCaps* OutputFor(const GstCaps* input) = 0;

    GUID m_major;
    CGstPin* m_input;
    CGstPin* m_output;
    std::mutex m_chainLock;
    GstCaps* m_inputCaps = nullptr;
    std::vector<GstElement*> m_chain;

private:
    // The chain for a stream of these caps: a parser first for a DVD's
    // streams, which come as the disc holds them, then the decoder and the
    // tail. Called with m_chainLock held.
    bool BuildChainLocked(const GstCaps* caps);
    void DropChainLocked();
    // A DVD's sound changes its coding between menus and titles: the chain
    // is rebuilt for the new stream as its description arrives.
    static GstPadProbeReturn OnDvdInputEvent(GstPad* pad, GstPadProbeInfo* info, gpointer self);

    bool m_fromDvd = false;
    gulong m_dvdProbe = 0;
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
    // On: the filter takes the DVD Navigator's picture, and a second input
    // pin, "Subtitle Input", takes its sub-pictures, drawn onto the picture
    // with the menu buttons' highlights.
    HRESULT SetDVDVideoSupport(BOOL enabled) override;

    bool AcceptsMajor(CGstPin* pin, REFGUID major) override;
    HRESULT OnReceiveConnection(CGstPin* pin, IPin* connector, GstCaps* caps) override;
    std::vector<GstCaps*> OfferedCaps(CGstPin* pin) override;

protected:
    HRESULT QueryOther(REFIID riid, void** ppv) override;
    bool TakesDvdStreams() const override { return m_dvdVideo; }
    GstPad* LinkTail(GstElement* last) override;
    GstCaps* OutputFor(const GstCaps* input) override;

private:
    BOOL m_runtimeConfig = FALSE;
    std::atomic<BOOL> m_dvdVideo{FALSE};
    GstElement* m_overlay = nullptr;      // owned by the bin
    GstElement* m_plainPicture = nullptr; // owned by the bin
    CGstPin* m_subtitle = nullptr;
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
    bool TakesDvdStreams() const override { return true; }
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
