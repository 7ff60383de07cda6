#include "player/LavSetup.h"

#include "platform/media/LavInterfaces.h"

HRESULT CLavSetup::SetOrvexAudio(ILAVAudioSettings* pSettings) const {
    if (!pSettings)
        return E_POINTER;
    HRESULT result = S_OK;
    auto note = [&result](HRESULT hr) {
        if (FAILED(hr))
            result = hr;
    };
    note(pSettings->SetRuntimeConfig(TRUE));
    note(pSettings->SetFormatConfiguration(Codec_WMA2, m_bWma2));
    note(pSettings->SetFormatConfiguration(Codec_WMAPRO, m_bWmaPro));
    note(pSettings->SetFormatConfiguration(Codec_WMALL, m_bWmaAll));
    note(pSettings->SetMixingEnabled(m_bStereoSpeakers));
    return result;
}
