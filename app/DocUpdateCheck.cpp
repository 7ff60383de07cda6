// The document's part of the update check: the command and the version text
// it compares, which the About box shows as well.
#include "app/OrvexDoc.h"
#include "app/UpdateCheck.h"
#include "platform/base/Version.h"

void COrvexDoc::OnCheckForUpdates() {
    CString current;
    if (!GetVersionString(current))
        current.Empty();
    CheckForUpdates(m_dataFolder, DownloadServerAddress(), current);
}

BOOL COrvexDoc::GetVersionString(CString& out) {
    out = GetProgramVersionText();
    return TRUE;
}
