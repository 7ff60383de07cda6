// The user's choices for the audio decoder module, kept in the user data file.
#pragma once
#include "platform/base/Types.h"

class ILAVAudioSettings;
using HRESULT = int32_t;

class CLavSetup {
public:
    BOOL m_bWma2 = TRUE;
    BOOL m_bWmaPro = TRUE;
    BOOL m_bWmaAll = TRUE;
    BOOL m_bStereoSpeakers = TRUE;

    // Pushes the four choices into an audio decoder. Every call is made
    // whatever the earlier ones give; the result is the code of the last
    // call that failed, or 0.
    HRESULT SetOrvexAudio(ILAVAudioSettings* pSettings) const;
};
