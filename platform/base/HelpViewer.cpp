#include "platform/base/HelpViewer.h"

#include "platform/base/AppContext.h"
#include "platform/base/File.h"
#include "platform/base/HookSlot.h"
#include "platform/base/MessageBox.h"

namespace {

CHookSlot<HelpViewerHook> g_helpHook;

} // namespace

HelpViewerHook SetHelpViewerHook(HelpViewerHook hook) {
    return g_helpHook.Swap(std::move(hook));
}

BOOL HtmlHelpW(const CString& page, const CString& anchor) {
    const CString path = AfxGetAppContext().GetStartDirectory() + u"/" + kHelpFolder + u"/" + page;
    CFileStatus status;
    if (!CFile::GetStatus(path, status)) {
        CString text;
        text.Format(u"The help file %s could not be found.", path);
        AfxMessageBox(text, MB_OK | MB_ICONEXCLAMATION);
        return FALSE;
    }
    const HelpViewerHook hook = g_helpHook.Get();
    return hook ? hook(path, anchor) : FALSE;
}
