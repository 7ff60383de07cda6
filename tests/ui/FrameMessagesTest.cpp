// What the frame tells the user, word for word, and what it does besides:
// the Open URL rules, failed starts and the window that owns the picture,
// the title rules, and the medium named on the command line.
#include <QAction>
#include <QLineEdit>

#include "platform/base/Deployment.h"
#include "platform/base/UserMessages.h"
#include "tests/support/TestHttpServer.h"
#include "tests/ui/FrameMedia.h"
#include "ui/CommandLine.h"
#include "ui/Commands.h"
#include "ui/ListView.h"
#include "ui/OpenUrlDlg.h"
#include "ui/SplitterView.h"
#include "ui/VideoView.h"

namespace {

std::vector<CString> Texts(std::initializer_list<const char16_t*> texts) {
    std::vector<CString> out;
    for (const char16_t* t : texts)
        out.emplace_back(t);
    return out;
}

} // namespace

using FrameMessages = PlaybackTest;

TEST_F(FrameMessages, OpenUrlRefusesWhatIsNoStreamAndPlaysTheRestAsTyped) {
    // The box starts with the sample selected whole.
    AnswerDialog<COpenUrlDlg>([](COpenUrlDlg* dialog) {
        auto* edit = dialog->findChild<QLineEdit*>(QStringLiteral("1009"));
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Open Media URL"));
        EXPECT_EQ(edit->text(), ToQString(CString(kSampleStreamUrl)));
        EXPECT_EQ(edit->selectedText(), edit->text());
        dialog->reject();
    });
    Frame().CommandAction(ID_OPEN_MEDIA_URL)->trigger();

    const std::pair<const char*, const char16_t*> refused[] = {
        {"ftp://example.org/a.mp3", u"Invalid URL - no http://, https://, rtsp:// or rtspt://."},
        {"example.org/radio", u"Invalid URL - no http://, https://, rtsp:// or rtspt://."},
        {"http://example.org/list.PLS", u"Use Tools-Import for a .pls file."},
        {"http://example.org/a.pls/stream", u"Use Tools-Import for a .pls file."},
        {"https://example.org/list.m3u", u"Use Tools-Import for a .m3u file."},
    };
    for (const auto& [url, text] : refused) {
        m_boxes.Clear();
        TypeAndConfirm("1009", QString::fromUtf8(url));
        Frame().CommandAction(ID_OPEN_MEDIA_URL)->trigger();
        EXPECT_EQ(m_boxes.Texts(), Texts({text})) << url;
        EXPECT_EQ(Engine().m_state, 0);
    }
    m_boxes.Clear();
    TypeAndConfirm("1009", QString());
    Frame().CommandAction(ID_OPEN_MEDIA_URL)->trigger();
    EXPECT_TRUE(m_boxes.Texts().empty());

    // An .m3u8 address goes to the player, with its scheme as typed; a
    // stream's title is its whole address, and space over its picture mutes.
    TestHttpServer server;
    server.Route("/live/clip.m3u8", TempDir::Read(Media().clip));
    const QString url =
        QStringLiteral("HTTP") + QString::fromStdString(server.Url("/live/clip.m3u8")).mid(4);
    Frame().SetMediaTitle(CString(u"kept"));
    TypeAndConfirm("1009", url);
    Frame().CommandAction(ID_OPEN_MEDIA_URL)->trigger();
    ASSERT_EQ(Engine().m_state, 2) << m_boxes.Texts().size();
    EXPECT_TRUE(Engine().m_bStream);
    EXPECT_EQ(Frame().windowTitle(), QStringLiteral("kept"));
    EXPECT_EQ(CMainFrame::TitleFor(FromQString(url), TRUE), FromQString("ORVEX:  " + url));
    QTest::keyClick(Frame().GetSplitterView()->GetVideoView(), Qt::Key_Space);
    EXPECT_TRUE(Engine().m_bMuted);
    EXPECT_EQ(Engine().m_state, 2);
    EXPECT_TRUE(m_boxes.Texts().empty());
}

TEST_F(FrameMessages, AFailedStartShowsTheEngineTextAndPutsTheListBack) {
    ChooseFile("/no/such/folder/film.mkv");
    Frame().CommandAction(ID_FILE_OPEN)->trigger();
    EXPECT_EQ(m_boxes.Texts(),
              Texts({u"File Source Error - could not open /no/such/folder/film.mkv."}));
    EXPECT_EQ(Engine().m_state, 0);
    EXPECT_NE(Frame().GetSplitterView()->GetListView(), nullptr);
    EXPECT_EQ(Frame().windowTitle(), QStringLiteral("Orvex"));

    // Without the splitter view there is no window for the picture.
    m_boxes.Clear();
    COrvexSplitterView* view = App().m_pSplitterView;
    App().m_pSplitterView = nullptr;
    EXPECT_FALSE(Frame().StartMediaFile(CString(Media().clip)));
    App().m_pSplitterView = view;
    EXPECT_EQ(m_boxes.Texts(), Texts({u"ERROR Video Window not accessable.",
                                      u"ERROR - SetVideoWindow function failed."}));

    // Without the document the pane cannot change hands.
    m_boxes.Clear();
    COrvexDoc* doc = App().m_pDoc;
    App().m_pDoc = nullptr;
    EXPECT_FALSE(Frame().StartMediaFile(CString(Media().clip)));
    App().m_pDoc = doc;
    EXPECT_EQ(m_boxes.Texts(), Texts({u"CMySplitterWnd ReplaceView - pDoc Null.",
                                      u"ERROR could not create VideoView Window",
                                      u"ERROR - SetVideoWindow function failed.",
                                      u"CMySplitterWnd ReplaceView - pDoc Null."}));

    // Sound alone, started while a picture plays, finds no list to own it.
    m_boxes.Clear();
    ASSERT_TRUE(Frame().StartMediaFile(CString(Media().movie)));
    EXPECT_FALSE(Frame().StartMediaFile(CString(Media().song)));
    EXPECT_EQ(m_boxes.Texts(), Texts({u"ListView Video Window not available.",
                                      u"ERROR - SetVideoWindow function failed."}));
    EXPECT_NE(Frame().GetSplitterView()->GetListView(), nullptr);
    EXPECT_EQ(Engine().m_state, 0);
    // A list handle with no window behind it has no area to give.
    m_boxes.Clear();
    const HWND list = App().m_hwndList;
    App().m_hwndList = Frame().GetSafeHwnd();
    HWND owner = nullptr, notify = nullptr;
    RECT rect;
    EXPECT_FALSE(Frame().SetVideoWindow(FALSE, TRUE, &owner, &notify, &rect));
    App().m_hwndList = list;
    EXPECT_EQ(m_boxes.Texts(), Texts({u"ListView Window area not available."}));
    // Stop with nothing playing changes nothing.
    Frame().StopPlayback(FALSE);
    EXPECT_EQ(Frame().windowTitle(), QStringLiteral("ORVEX:  movie.mkv"));
}

TEST_F(FrameMessages, TitlesVolumeClampAndDiscRemovalWhileAFilePlays) {
    EXPECT_EQ(CMainFrame::TitleFor(CString(u"/films/a/b.mkv"), FALSE), CString(u"ORVEX:  b.mkv"));
    EXPECT_EQ(CMainFrame::TitleFor(CString(u"b.mkv"), FALSE), CString(u"ORVEX:  b.mkv"));
    EXPECT_EQ(CMainFrame::TitleFor(CString(u"/b.mkv"), FALSE), CString(u"ORVEX"));

    ASSERT_TRUE(Frame().StartMediaFile(CString(Media().movie)));
    PostMessageW(Frame().GetSafeHwnd(), UM_SET_VOLUME, 0, 250);
    ASSERT_TRUE(WaitFor([&] { return Engine().m_volume == 100; }));
    // A volume that goes away while a file plays only reaches the views.
    Doc().OnDiscChange(CString(u"/dev/sr0"), FALSE);
    EXPECT_EQ(Engine().m_state, 2);
    EXPECT_TRUE(m_boxes.Texts().empty());
}

TEST_F(FrameMessages, TheCommandLineMediumPlaysOnceTheWindowStands) {
    EXPECT_EQ(MediumFromArgument("film.mkv", "/home/me"), CString(u"/home/me/film.mkv"));
    EXPECT_EQ(MediumFromArgument("Live:2019.mp3", "/m"), CString(u"/m/Live:2019.mp3"));
    EXPECT_EQ(MediumFromArgument("/a/b c.mkv", "/m"), CString(u"/a/b c.mkv"));
    EXPECT_EQ(MediumFromArgument("file:///a/b%20c.mkv", "/m"), CString(u"/a/b c.mkv"));
    EXPECT_EQ(MediumFromArgument("rtsp://cam/live", "/m"), CString(u"rtsp://cam/live"));
    EXPECT_EQ(MediumFromArgument("https://h/x?a=1", "/m"), CString(u"https://h/x?a=1"));

    Frame().PlayAtStart(CString(Media().clip));
    EXPECT_EQ(Engine().m_state, 0); // not before the message loop runs
    ASSERT_TRUE(WaitFor([&] { return Engine().m_state == 2; }));
    EXPECT_EQ(Frame().windowTitle(), QStringLiteral("ORVEX:  clip.mkv"));
}
