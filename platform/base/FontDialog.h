// The font dialog, reached from logic code through one installable hook: the
// user interface shows a real dialog, tests answer it themselves.
#pragma once
#include <functional>

#include "platform/base/LogFont.h"

constexpr DWORD CF_SCREENFONTS = 0x00000001;
constexpr DWORD CF_EFFECTS = 0x00000100;

// Starts on `font`; on OK fills it with the choice and gives 1.
using FontDialogHook = std::function<BOOL(LOGFONTW& font, DWORD flags)>;

// Installs a hook and gives the previous one.
FontDialogHook SetFontDialogHook(FontDialogHook hook);

// Runs the dialog: 1 and the chosen font on OK, 0 and `font` untouched on
// Cancel. With no hook installed there is nobody to choose: 0.
BOOL RunFontDialog(LOGFONTW& font, DWORD flags);
