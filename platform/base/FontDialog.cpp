#include "platform/base/FontDialog.h"

#include <mutex>

namespace {

std::mutex g_fontHookLock;
FontDialogHook g_fontHook;

} // namespace

FontDialogHook SetFontDialogHook(FontDialogHook hook) {
    std::lock_guard<std::mutex> lock(g_fontHookLock);
    FontDialogHook previous = std::move(g_fontHook);
    g_fontHook = std::move(hook);
    return previous;
}

BOOL RunFontDialog(LOGFONTW& font, DWORD flags) {
    FontDialogHook hook;
    {
        std::lock_guard<std::mutex> lock(g_fontHookLock);
        hook = g_fontHook;
    }
    if (!hook)
        return FALSE;
    // The dialog works on a copy: a Cancel must leave the caller's font as it was.
    LOGFONTW chosen = font;
    if (!hook(chosen, flags))
        return FALSE;
    font = chosen;
    return TRUE;
}
