#include "app/OrvexDoc.h"

#include <algorithm>

#include "app/MainFrameLink.h"
#include "app/OrvexApp.h"
#include "platform/base/AppContext.h"
#include "platform/base/File.h"
#include "platform/base/MessageBox.h"

const char16_t* const kSeededDataFiles[4] = {u"OrvexContents.dat", u"OrvexUser.dat",
                                             u"RadioBrowse.dat", u"results.txt"};

COrvexDoc::COrvexDoc() {
    m_rightFont = GetSystemMenuFont();
    m_leftFont = GetSystemMenuFont();
}

CString COrvexDoc::SettleDataFolder(const CString& startDirectory) {
    COrvexApp* app = AfxGetOrvexApp();
    CString userFolder;
    if (!app || !app->GetUserDataFolder(userFolder)) {
        // Nowhere of the user's own to keep data: work in the start directory,
        // which is where the defaults are and where saving can still succeed.
        return startDirectory;
    }
    BOOL allCopied = TRUE;
    for (const char16_t* file : kSeededDataFiles) {
        const CString target = userFolder + u"/" + file;
        CFileStatus status;
        if (CFile::GetStatus(target, status))
            continue;
        if (!CopyFileW(startDirectory + u"/" + file, target, TRUE))
            allCopied = FALSE;
    }
    if (allCopied)
        return userFolder;
    AfxMessageBox(CString(u"User AppData folder not available. Changes cannot be saved."));
    return startDirectory;
}

BOOL COrvexDoc::OnNewDocument() {
    COrvexApp* app = AfxGetOrvexApp();
    if (app)
        app->m_pDoc = this;
    // The alias table must stand before the contents load: it maps their names.
    m_aliases.LoadAliases();
    m_extensions.LoadExtensions();
    const CString startDirectory = AfxGetAppContext().GetStartDirectory();
    m_dataFolder = SettleDataFolder(startDirectory);
    // Results are not examined: start-up never stops because of a data file.
    LoadContents(ContentsFilePath());
    LoadUserData(UserDataFilePath());
    m_desktopSettings.Load(DesktopSettingsPath());
    // The radio database comes last, after the contents and the user data.
    LoadRadioDb(m_dataFolder + u"/RadioBrowse.dat");
    return TRUE;
}

void COrvexDoc::AddView(IDocView* view) {
    if (view && std::find(m_views.begin(), m_views.end(), view) == m_views.end())
        m_views.push_back(view);
}

void COrvexDoc::RemoveView(IDocView* view) {
    m_views.erase(std::remove(m_views.begin(), m_views.end(), view), m_views.end());
}

void COrvexDoc::UpdateAllViews(IDocView* sender, int hint, const CString* object) {
    // A view may go away while it is told; walk a copy.
    const std::vector<IDocView*> views = m_views;
    for (IDocView* view : views) {
        if (view != sender && std::find(m_views.begin(), m_views.end(), view) != m_views.end())
            view->OnUpdate(sender, hint, object);
    }
}
