#include "ui/FontChooser.h"

#include <QFontDialog>

#include "platform/base/FontDialog.h"
#include "platform/qt/QtGlue.h"

void InstallFontChooser() {
    SetFontDialogHook([](LOGFONTW& font, DWORD) -> BOOL {
        // The dialog always offers the effects and lists only screen fonts,
        // which is what the panes ask for.
        bool ok = false;
        const QFont chosen = QFontDialog::getFont(&ok, FontFromLogFont(font), nullptr);
        if (!ok)
            return FALSE;
        font = LogFontFromFont(chosen);
        return TRUE;
    });
}
