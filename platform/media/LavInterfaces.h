// Run-time settings of the three LAV filter modules.
#pragma once
#include "platform/media/ComTypes.h"

// Codec switches of the audio decoder; the values are fixed by the modules'
// published interface.
enum LAVAudioCodec {
    Codec_WMA2 = 13,
    Codec_WMAPRO = 14,
    Codec_WMALL = 17,
};
// Switches the audio decoder keeps, one per codec number below this.
constexpr int kLavAudioCodecSlots = 32;

class ILAVFSettings : public IUnknown {
public:
    virtual HRESULT SetRuntimeConfig(BOOL runtime) = 0;
};

class ILAVVideoSettings : public IUnknown {
public:
    virtual HRESULT SetRuntimeConfig(BOOL runtime) = 0;
    virtual HRESULT SetDVDVideoSupport(BOOL enabled) = 0;
};

class ILAVAudioSettings : public IUnknown {
public:
    virtual HRESULT SetRuntimeConfig(BOOL runtime) = 0;
    virtual HRESULT SetFormatConfiguration(LAVAudioCodec codec, BOOL enabled) = 0;
    virtual BOOL GetFormatConfiguration(LAVAudioCodec codec) = 0;
    // On: every stream leaves the decoder as two channels.
    virtual HRESULT SetMixingEnabled(BOOL enabled) = 0;
    virtual BOOL GetMixingEnabled() = 0;
};
