// The user's choices for the audio decoder module, kept in the user data file.
#pragma once
#include "platform/base/Types.h"

class CLavSetup {
public:
    BOOL m_bWma2 = TRUE;
    BOOL m_bWmaPro = TRUE;
    BOOL m_bWmaAll = TRUE;
    BOOL m_bStereoSpeakers = TRUE;
};
