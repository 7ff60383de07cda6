// The document's own menu commands and the exit prompt. Files are written
// only here (and by export); loading never marks the contents as changed.
#include "app/MainFrameLink.h"
#include "app/OrvexApp.h"
#include "app/OrvexDoc.h"
#include "platform/base/FontDialog.h"
#include "platform/base/HelpViewer.h"
#include "platform/base/MessageBox.h"

CString COrvexDoc::ContentsFilePath() const {
    return m_dataFolder + u"/OrvexContents.dat";
}

CString COrvexDoc::UserDataFilePath() const {
    return m_dataFolder + u"/OrvexUser.dat";
}

BOOL COrvexDoc::SaveModified() {
    // Playback ends before any question, so nothing plays behind the prompt.
    if (IMainFrame* frame = GetMainFrame())
        frame->StopPlaybackForExit();
    if (m_bContentsChanged && AfxMessageBox(CString(u"Save Changes to Contents?"),
                                            MB_YESNO | MB_ICONINFORMATION) == IDYES) {
        SaveContents(ContentsFilePath());
        SaveUserData(UserDataFilePath());
    }
    // There is no Cancel: the exit always goes on.
    return TRUE;
}

void COrvexDoc::OnSaveContents() {
    SaveContents(ContentsFilePath());
    SaveUserData(UserDataFilePath());
    // A failure has been shown; asking again at exit would not help.
    m_bContentsChanged = FALSE;
}

namespace {

BOOL ChoosePaneFont(LOGFONTW& font) {
    return RunFontDialog(font, CF_EFFECTS | CF_SCREENFONTS);
}

} // namespace

void COrvexDoc::OnFontLeft() {
    if (!ChoosePaneFont(m_leftFont))
        return;
    UpdateAllViews(nullptr, HINT_LEFT_FONT);
    m_bContentsChanged = TRUE;
}

void COrvexDoc::OnFontRight() {
    if (!ChoosePaneFont(m_rightFont))
        return;
    UpdateAllViews(nullptr, HINT_RIGHT_FONT);
    m_bContentsChanged = TRUE;
}

void COrvexDoc::SetFolderLocations(const CString& contentsFolder, const CString& videoFolder) {
    m_contentsFolder = contentsFolder;
    m_videoFolder = videoFolder;
    m_bContentsChanged = TRUE;
}

void COrvexDoc::OnFolderLocations() {
    if (!m_pDialogs)
        return;
    CFoldersFields dialog;
    dialog.m_contentsFolder = m_contentsFolder;
    dialog.m_videoFolder = m_videoFolder;
    dialog.m_recordingsFolder = m_desktopSettings.m_recordingsFolder;
    if (m_pDialogs->DoModal(dialog) != IDOK)
        return;
    SetFolderLocations(dialog.m_contentsFolder, dialog.m_videoFolder);
    // The recordings folder is no part of the user data file: it is kept
    // at once in the desktop settings.
    if (dialog.m_recordingsFolder != m_desktopSettings.m_recordingsFolder) {
        m_desktopSettings.m_recordingsFolder = dialog.m_recordingsFolder;
        SaveDesktopSettings();
    }
}

void COrvexDoc::OnLavSetup() {
    if (!m_pDialogs)
        return;
    CLavSetupFields dialog;
    dialog.m_bWma2 = m_lavSetup.m_bWma2;
    dialog.m_bWmaPro = m_lavSetup.m_bWmaPro;
    dialog.m_bWmaAll = m_lavSetup.m_bWmaAll;
    dialog.m_bStereoSpeakers = m_lavSetup.m_bStereoSpeakers;
    if (m_pDialogs->DoModal(dialog) != IDOK)
        return;
    m_lavSetup.m_bWma2 = dialog.m_bWma2;
    m_lavSetup.m_bWmaPro = dialog.m_bWmaPro;
    m_lavSetup.m_bWmaAll = dialog.m_bWmaAll;
    m_lavSetup.m_bStereoSpeakers = dialog.m_bStereoSpeakers;
    // A running graph keeps what it was built with; the next one takes these.
    if (dialog.m_bChanged)
        m_bContentsChanged = TRUE;
}

void COrvexDoc::OnDiscChange(const CString& drive, BOOL arrived) {
    if (arrived) {
        UpdateAllViews(nullptr, HINT_DISC_ARRIVED, &drive);
        return;
    }
    IMainFrame* frame = GetMainFrame();
    if (!frame)
        return;
    // Any eject ends disc playback, even from another drive, before the tree
    // drops the disc's rows.
    frame->StopDiscPlayback();
    UpdateAllViews(nullptr, HINT_DISC_REMOVED, &drive);
}

void COrvexDoc::OnHelp() {
    // The result is of no further use: a missing manual has said so itself.
    HtmlHelpW();
}
