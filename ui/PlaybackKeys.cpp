#include "ui/PlaybackKeys.h"

#include "app/OrvexApp.h"
#include "platform/base/UserMessages.h"
#include "player/MediaPlayer.h"

void PauseOrMuteBySpace(CMediaPlayer& engine) {
    COrvexApp* app = AfxGetOrvexApp();
    HWND bar = app ? app->m_hwndControls : nullptr;
    if (engine.m_bStream) {
        engine.ToggleMute();
        PostMessageW(bar, UM_BAR_MUTED, 0, engine.m_bMuted ? 1 : 0);
    } else {
        engine.PauseResume();
        PostMessageW(bar, UM_BAR_PAUSED, 0, engine.m_state == 1 ? 1 : 0);
    }
}
