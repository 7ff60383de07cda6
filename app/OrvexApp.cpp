#include "app/OrvexApp.h"

#include <cstdlib>

#include "app/MainFrameLink.h"
#include "app/OrvexDoc.h"
#include "platform/base/Clipboard.h"
#include "platform/base/ComponentServices.h"
#include "platform/base/Deployment.h"
#include "platform/base/File.h"
#include "platform/base/MessageBox.h"
#include "platform/base/StartDirectory.h"
#include "platform/base/Version.h"

namespace {

COrvexApp* g_app = nullptr;

} // namespace

COrvexApp* AfxGetOrvexApp() {
    return g_app;
}

IMainFrame* GetMainFrame() {
    return g_app ? g_app->GetMainWnd() : nullptr;
}

COrvexApp::COrvexApp() : m_startDirectory(FindStartDirectory()) {
    g_app = this;
    AfxSetAppContext(this);
}

COrvexApp::~COrvexApp() {
    m_pMainWnd.reset();
    m_document.reset();
    if (g_app == this) {
        g_app = nullptr;
        AfxSetAppContext(nullptr);
    }
}

BOOL COrvexApp::InitInstance() {
    if (!AfxOleInit()) {
        AfxMessageBox(CString(u"ERROR COrvexApp::InitInstance Couldn't initialize COM"));
        return FALSE;
    }
    m_document = std::make_unique<COrvexDoc>();
    if (m_frameFactory)
        m_pMainWnd = m_frameFactory(*m_document);
    if (!m_document->OnNewDocument())
        return FALSE;
    if (m_pMainWnd)
        m_pMainWnd->ShowFrame();
    m_cfMediaItem = RegisterClipboardFormatW(CString(u"CbMediaItem"));
    return TRUE;
}

BOOL COrvexApp::ExitInstance() {
    return m_document ? m_document->SaveModified() : TRUE;
}

BOOL COrvexApp::GetUserDataFolder(CString& out) {
    // The per-user data home of the desktop, with our own folder under it.
    CString base;
    const char* dataHome = getenv("XDG_DATA_HOME");
    if (dataHome && dataHome[0] == '/') {
        base = CString(dataHome);
    } else if (const char* home = getenv("HOME"); home && home[0] == '/') {
        base = CString(home) + u"/.local/share";
    }
    while (base.GetLength() > 1 && base.Right(1) == u"/")
        base.Truncate(base.GetLength() - 1);
    CString folder = base + u"/Orvex";
    if (base.IsEmpty() || !CreateFolderPath(folder)) {
        MessageBoxW(nullptr, CString(u"Application was not installed properly."), CString(u"Orvex"),
                    MB_ICONEXCLAMATION | MB_OK);
        return FALSE;
    }
    out = folder;
    return TRUE;
}

void COrvexApp::SetUpdateStatus(const CString& text) {
    std::lock_guard<std::mutex> lock(m_statusLock);
    m_statusText = text;
}

BOOL COrvexApp::GetUpdateStatus(CString& out) {
    std::lock_guard<std::mutex> lock(m_statusLock);
    out = m_statusText;
    return TRUE;
}

CString COrvexApp::GetAboutText() const {
    CString text;
    text.Format(u"Orvex version:  %s\r\n", m_pDoc ? GetProgramVersionText() : CString());
    text.AppendFormat(u"   %s\r\n", kProjectWebAddress);
    text += u"\r\n";
    text += u"Open source software used by this program:\r\n";
    text += u"\r\n";
    bool first = true;
    for (const CreditedProject& project : kCreditedProjects) {
        if (!first)
            text += u"\r\n";
        first = false;
        text.AppendFormat(u"   %s\r\n       %s", project.name, project.address);
    }
    return text;
}
