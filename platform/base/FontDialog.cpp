#include "platform/base/FontDialog.h"

#include "platform/base/HookSlot.h"

namespace {

CHookSlot<FontDialogHook> g_fontHook;

} // namespace

FontDialogHook SetFontDialogHook(FontDialogHook hook) {
    return g_fontHook.Swap(std::move(hook));
}

BOOL RunFontDialog(LOGFONTW& font, DWORD flags) {
    const FontDialogHook hook = g_fontHook.Get();
    if (!hook)
        return FALSE;
    // The dialog works on a copy: a Cancel must leave the caller's font as it was.
    LOGFONTW chosen = font;
    if (!hook(chosen, flags))
        return FALSE;
    font = chosen;
    return TRUE;
}
