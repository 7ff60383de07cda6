#include "platform/base/HelpViewer.h"

#include <mutex>

#include "platform/base/AppContext.h"
#include "platform/base/File.h"
#include "platform/base/MessageBox.h"

namespace {

std::mutex g_helpHookLock;
HelpViewerHook g_helpHook;

} // namespace

HelpViewerHook SetHelpViewerHook(HelpViewerHook hook) {
    std::lock_guard<std::mutex> lock(g_helpHookLock);
    HelpViewerHook previous = std::move(g_helpHook);
    g_helpHook = std::move(hook);
    return previous;
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
    HelpViewerHook hook;
    {
        std::lock_guard<std::mutex> lock(g_helpHookLock);
        hook = g_helpHook;
    }
    return hook ? hook(path, anchor) : FALSE;
}
