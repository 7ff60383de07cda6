// Stations in the window: the songs a stream announces reach the window
// title, the status area, the bus and the played titles file, Record keeps
// each song as sent, a station given by its playlist plays, and a stream
// that drops is connected again before its failure is told.
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <filesystem>

#include "app/PlayedTitles.h"
#include "platform/base/UserMessages.h"
#include "tests/support/TestHttpServer.h"
#include "tests/ui/FrameMedia.h"
#include "tests/ui/MprisClient.h"
#include "ui/desktop/DesktopCommands.h"
#include "ui/desktop/FrameDesktop.h"
#include "ui/desktop/MprisService.h"
#include "ui/desktop/PlayedTitlesDlg.h"
#include "ui/desktop/StreamReconnect.h"

namespace {

class StationTest : public PlaybackTest {
protected:
    // Plays an address as a library item of that name would.
    void PlayStation(const std::string& url, const char16_t* name) {
        Frame().SetMediaPath(CString(url));
        Frame().SetMediaTitle(name);
        PostMessageW(Frame().GetSafeHwnd(), UM_PLAY_MEDIA, 0, 0);
    }
    QAction* Entry(int id) { return Frame().findChild<QAction*>(QString::number(id)); }

    TestHttpServer m_server;
};

} // namespace

TEST_F(StationTest, AnnouncedSongsReachTheWindowTheBusTheFileAndTheRecording) {
    MprisClient mpris(QString::fromLatin1(CMprisService::kServiceName));
    Doc().m_desktopSettings.m_recordingsFolder = m_data.File("Recordings");
    // The stream's end is a drop; the test looks before any new try.
    Frame().Desktop().Reconnect().SetTiming({60000, 60000, 60000}, 60000);
    std::atomic<bool> release{false};
    const std::vector<TestIcySong> songs =
        ServeIcyStation(m_server, "/radio", TempDir::Read(TestMedia::Get().Mp3Radio()),
                        [&release] { return release.load(); });
    QStringList titles;
    QObject::connect(&Frame(), &QWidget::windowTitleChanged,
                     [&](const QString& title) { titles << title; });

    PlayStation(m_server.Url("/radio"), u"Loopback Radio");
    ASSERT_TRUE(WaitFor([&] { return Engine().m_state == 2; }));
    QAction* record = Entry(ID_RECORD);
    ASSERT_TRUE(record->isEnabled());
    record->trigger();
    ASSERT_TRUE(record->isChecked());
    release = true;
    ASSERT_TRUE(WaitFor([&] { return Frame().Desktop().Reconnect().Active(); }, 20000));

    // The window's title and the status area.
    EXPECT_TRUE(titles.contains(QStringLiteral("Loopback Radio \u2014 Song One")));
    EXPECT_TRUE(titles.contains(QStringLiteral("Loopback Radio \u2014 Song Two")));
    EXPECT_LT(titles.indexOf(QStringLiteral("Loopback Radio \u2014 Song One")),
              titles.indexOf(QStringLiteral("Loopback Radio \u2014 Song Two")));
    EXPECT_EQ(Frame().findChild<QLabel*>(QStringLiteral("NowPlaying"))->text(),
              QStringLiteral("Song Two"));
    // The bus: two songs, each with its station.
    EXPECT_TRUE(WaitFor([&] { return mpris.Titles().size() >= 3; }));
    EXPECT_EQ(mpris.Titles(), (QStringList{"Loopback Radio", "Song One", "Song Two"}));
    EXPECT_EQ(mpris.Metadata().value(QStringLiteral("xesam:album")),
              QStringLiteral("Loopback Radio"));
    EXPECT_FALSE(mpris.Property(QStringLiteral("CanPause")).toBool());
    EXPECT_FALSE(mpris.Property(QStringLiteral("CanSeek")).toBool());
    // The played titles file: two lines.
    QString played = ToQString(ReadPlayedTitles(Doc().PlayedTitlesPath(), 1 << 20));
    QStringList lines = played.split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2) << played.toStdString();
    EXPECT_TRUE(lines[0].endsWith(QStringLiteral("\tLoopback Radio\tSong One")));
    EXPECT_TRUE(lines[1].endsWith(QStringLiteral("\tLoopback Radio\tSong Two")));
    EXPECT_TRUE(
        QDateTime::fromString(lines[0].left(19), QStringLiteral("yyyy-MM-dd HH:mm:ss")).isValid());
    // The recording: each song as the server sent it.
    const std::string folder = m_data / "Recordings";
    EXPECT_EQ(TempDir::Read(folder + "/Song One.mp3"), songs[1].bytes);
    EXPECT_EQ(TempDir::Read(folder + "/Song Two.mp3"), songs[2].bytes);

    // The played titles from the menu, copied whole.
    AnswerDialog<CPlayedTitlesDlg>([](CPlayedTitlesDlg* dialog) {
        dialog->findChild<QPushButton*>(QStringLiteral("Copy"))->click();
        dialog->reject();
    });
    Entry(ID_PLAYED_TITLES)->trigger();
    EXPECT_EQ(QApplication::clipboard()->text().split(QLatin1Char('\n'), Qt::SkipEmptyParts),
              lines);

    // Stop while the stream waits to connect again: the window is at rest.
    Frame().StopPlayback(FALSE);
    EXPECT_FALSE(Frame().Desktop().Reconnect().Active());
    EXPECT_EQ(Frame().windowTitle(), QStringLiteral("ORVEX"));
    EXPECT_FALSE(record->isChecked());
    EXPECT_TRUE(m_boxes.Texts().empty()) << m_boxes.Texts()[0].ToUtf8();
}

TEST_F(StationTest, AStreamCutMidwayIsConnectedAgainBeforeItsFailureIsTold) {
    Frame().Desktop().Reconnect().SetTiming({50, 100, 150}, 60000);
    // Long enough that a third of it opens and plays.
    std::string audio = TempDir::Read(TestMedia::Get().Mp3Radio());
    TestHttpResponse cut;
    cut.body = audio;
    cut.contentLength = false;
    cut.cutAfter = audio.size() / 3;
    TestHttpResponse whole = cut;
    whole.cutAfter = TestHttpResponse::kWhole;
    whole.chunkBytes = 4096;
    whole.chunkDelayMs = 200; // long enough to look at it playing
    std::atomic<int> requests{0};
    m_server.Handle("/live.mp3",
                    [&](const TestHttpRequest&) { return ++requests == 1 ? cut : whole; });
    PlayStation(m_server.Url("/live.mp3"), u"Live");
    ASSERT_TRUE(WaitFor([&] { return requests == 2 && Engine().m_state == 2; }, 15000)) << requests;
    EXPECT_EQ(Frame().windowTitle(), QStringLiteral("Live"));
    EXPECT_TRUE(m_boxes.Texts().empty());

    // The server goes: three tries, then the failure.
    const std::string url = m_server.Url("/live.mp3");
    m_server.Stop();
    ASSERT_TRUE(WaitFor([&] { return !m_boxes.Texts().empty(); }, 20000));
    EXPECT_EQ(m_boxes.Texts(),
              std::vector<CString>{CString("File Source Error - could not open " + url + ".")});
    EXPECT_EQ(Frame().Desktop().Reconnect().Tries(), 0);
    EXPECT_EQ(Engine().m_state, 0);
    EXPECT_EQ(Frame().windowTitle(), QStringLiteral("ORVEX"));
}

TEST_F(StationTest, AStationGivenByItsPlaylistPlaysItsFirstStream) {
    // A station's stream: Ogg would be read from its end for a length, too
    // slow for the engine's one-second start on a busy machine.
    const std::string mp3 = TempDir::Read(TestMedia::Get().Mp3Radio());
    m_server.Route("/first.mp3", mp3);
    m_server.Route("/second.mp3", mp3);
    m_server.Route("/listen.pls?sid=1",
                   "[playlist]\r\nNumberOfEntries=2\r\nFile1=" + m_server.Url("/first.mp3") +
                       "\r\nTitle1=First\r\nFile2=" + m_server.Url("/second.mp3") +
                       "\r\nTitle2=Second\r\nVersion=2\r\n",
                   200, "audio/x-scpls");
    PlayStation(m_server.Url("/listen.pls?sid=1"), u"Playlist Radio");
    ASSERT_TRUE(WaitFor([&] { return Engine().m_state == 2; }));
    EXPECT_GE(m_server.RequestCount("/first.mp3"), 1);
    EXPECT_EQ(m_server.RequestCount("/second.mp3"), 0);
    EXPECT_EQ(Frame().windowTitle(), QStringLiteral("Playlist Radio"));

    // A playlist that names nothing says so.
    m_server.Route("/empty.m3u", "#EXTM3U\r\n", 200, "audio/x-mpegurl");
    PlayStation(m_server.Url("/empty.m3u"), u"Nothing");
    ASSERT_TRUE(WaitFor([&] { return !m_boxes.Texts().empty(); }));
    EXPECT_EQ(m_boxes.Texts()[0],
              CString("The playlist " + m_server.Url("/empty.m3u") + " names no stream."));
}
