// Discs in the frame: a DVD played from its folder, an image or a drive;
// an audio CD's tracks walked one after the other; and the CD-DVD menu.
#include <QAction>
#include <QMenu>

#include "app/OrvexDoc.h"
#include "platform/base/Drives.h"
#include "platform/base/FileDialog.h"
#include "platform/qt/QtGlue.h"
#include "ui/Commands.h"
#include "ui/ListView.h"
#include "ui/MainFrame.h"
#include "ui/SplitterView.h"
#include "ui/desktop/FrameDesktop.h"
#include "ui/dialogs/DvdNavDlg.h"

namespace {

// The part of a path behind its last separator.
CString NameOf(const CString& path) {
    return path.Mid(path.ReverseFind(u'/') + 1);
}

} // namespace

BOOL CMainFrame::StartDvd(const CString& folder) {
    if (!m_player.PlayDvdLav(folder, this)) {
        if (COrvexSplitterView* view = GetSplitterView())
            view->ReplaceView(&COrvexListView::staticMetaObject);
        FocusRightPane();
        return FALSE;
    }
    StartPositionTimer();
    setWindowTitle(m_mediaTitle.IsEmpty() ? QStringLiteral("ORVEX DVD") : ToQString(m_mediaTitle));
    FocusRightPane();
    m_desktop->OnStarted(folder, folder);
    return TRUE;
}

BOOL CMainFrame::StartCd(const CString& path) {
    if (!m_player.PlayCdLav(path, this, 50)) {
        if (COrvexSplitterView* view = GetSplitterView())
            view->ReplaceView(&COrvexListView::staticMetaObject);
        FocusRightPane();
        return FALSE;
    }
    StartPositionTimer();
    if (!m_mediaTitle.IsEmpty()) {
        setWindowTitle(ToQString(m_mediaTitle));
    } else if (path.ReverseFind(u'/') == 0) {
        setWindowTitle(QStringLiteral("Orvex CD"));
    } else {
        CString title;
        title.Format(u"Orvex CD:  %s", NameOf(path));
        setWindowTitle(ToQString(title));
    }
    FocusRightPane();
    m_desktop->OnStarted(path, path);
    return TRUE;
}

BOOL CMainFrame::StartCdFolder(const CString& folder) {
    m_cdListActive = FALSE;
    m_cdIndex = -1;
    m_cdTracks.RemoveAll();
    m_mediaPath.Empty();
    m_mediaTitle.Empty();
    std::vector<CFolderEntry> entries;
    if (GetDriveList().ListFolder(folder, entries)) {
        for (size_t i = 0; i < entries.size(); ++i) {
            if (entries[i].m_isFolder)
                continue;
            // The folder comes with its separator: the names join it as they are.
            const CString track = folder + entries[i].m_name;
            m_cdTracks.Add(track);
            if (i == 0) {
                m_mediaPath = track;
                m_mediaTitle.Format(u"Orvex:  %s", NameOf(track));
            }
        }
    }
    if (m_cdTracks.IsEmpty() || m_mediaPath.IsEmpty())
        return FALSE;
    m_cdIndex = 0;
    m_cdListActive = TRUE;
    StartCd(m_mediaPath);
    return TRUE;
}

void CMainFrame::StepCdTrack(int step) {
    if (m_player.m_state == 0 || !m_cdListActive || m_cdIndex < 0)
        return;
    const int target = m_cdIndex + step;
    if (target < 0 || target >= m_cdTracks.GetSize())
        return;
    PlayCdTrack(target);
}

void CMainFrame::StartNextCdTrack() {
    if (m_player.m_state == 0 || !m_cdListActive || m_cdTracks.IsEmpty() || m_cdIndex == -1 ||
        m_cdIndex + 1 >= m_cdTracks.GetSize()) {
        m_cdListActive = FALSE;
        m_cdIndex = -1;
        m_cdTracks.RemoveAll();
        StopPlayback(FALSE);
        return;
    }
    PlayCdTrack(m_cdIndex + 1);
}

void CMainFrame::PlayCdTrack(int index) {
    m_cdIndex = index;
    // Read before the build, whose teardown of the old track puts it back
    // to 50.
    int volume = m_player.m_volume;
    if (volume < 0 || volume > 100)
        volume = 50;
    const CString track = m_cdTracks[m_cdIndex];
    if (m_player.PlayCdLav(track, this, volume)) {
        CString title;
        title.Format(u"Orvex CD:  %s", NameOf(track));
        setWindowTitle(ToQString(title));
        FocusRightPane();
        m_desktop->OnStarted(track, track, NameOf(track));
        return;
    }
    COrvexSplitterView* view = GetSplitterView();
    if (view && view->ReplaceView(&COrvexListView::staticMetaObject))
        FocusRightPane();
}

void CMainFrame::OnPlayCdRequest() {
    m_cdListActive = FALSE;
    m_cdIndex = -1;
    m_cdTracks.RemoveAll();
    for (int i = 0; i < m_document.m_displayTopic.m_media.GetSize(); ++i) {
        const CString& location = m_document.m_displayTopic.m_media[i].m_location;
        m_cdTracks.Add(location);
        if (location == m_mediaPath)
            m_cdIndex = i;
    }
    if (!m_cdTracks.IsEmpty() && m_cdIndex != -1) {
        m_cdListActive = TRUE;
    } else {
        m_cdIndex = -1;
        m_cdTracks.RemoveAll();
    }
    if (!m_mediaPath.IsEmpty())
        StartCd(m_mediaPath);
}

void CMainFrame::OnPlayDvdFolderOrImage() {
    FileDialogRequest request;
    request.open = TRUE;
    request.flags = OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST;
    request.filter = u"DVD Folders and Images (VIDEO_TS.IFO *.iso)|VIDEO_TS.IFO;*.iso|"
                     u"All Files (*.*)|*.*||";
    request.initialFolder = m_document.m_videoFolder;
    CString path;
    if (!RunFileDialog(request, path))
        return;
    // A folder is chosen by its VIDEO_TS.IFO; an image plays as it is.
    CString name = NameOf(path);
    name.MakeUpper();
    if (name == u"VIDEO_TS.IFO")
        path = path.Left(path.ReverseFind(u'/') + 1);
    m_mediaPath.Empty();
    m_mediaTitle.Empty();
    StartDvd(path);
}

void CMainFrame::RunDvdNavigation() {
    CDvdNavDlg dialog(this);
    dialog.m_pPlayer = &m_player;
    dialog.DoModal();
}

void UpdateDiscCommands(CMainFrame& frame, COrvexDoc& doc) {
    if (QAction* action = frame.CommandAction(ID_DVD_NAVIGATION))
        action->setEnabled(doc.OnUpdateDvdNavigation());
    if (QAction* action = frame.CommandAction(ID_PLAY_DVD))
        action->setEnabled(doc.OnUpdatePlayDvd());
    if (QAction* action = frame.CommandAction(ID_PLAY_CD))
        action->setEnabled(doc.OnUpdatePlayCd());
}

void ConnectDiscCommands(CMainFrame& frame, COrvexDoc& doc) {
    // The drives are read as the menu opens, so that a disc shows there.
    if (auto* menu = frame.findChild<QMenu*>(QStringLiteral("CD-DVD")))
        QObject::connect(menu, &QMenu::aboutToShow, &frame,
                         [&frame, &doc] { UpdateDiscCommands(frame, doc); });
    auto connect = [&frame](int id, auto handler) {
        if (QAction* action = frame.CommandAction(id))
            QObject::connect(action, &QAction::triggered, &frame, handler);
    };
    connect(ID_DVD_NAVIGATION, [&doc] { doc.OnDvdNavigation(); });
    connect(ID_PLAY_DVD, [&doc] { doc.OnPlayDvd(); });
    connect(ID_PLAY_CD, [&doc] { doc.OnPlayCd(); });
    connect(ID_PLAY_DVD_FOLDER, [&frame] { frame.OnPlayDvdFolderOrImage(); });
    if (QAction* action = frame.CommandAction(ID_PLAY_DVD_FOLDER))
        action->setEnabled(true);
}
