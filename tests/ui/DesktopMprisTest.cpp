// The desktop's sound menu and media keys, as an MPRIS client on the
// session bus sees and steers the window's playback; the tray, closing to
// it, and the sleep timer.
#include <QAction>
#include <QMenu>
#include <QPushButton>
#include <QRegularExpression>
#include <QSlider>

#include "tests/ui/FrameMedia.h"
#include "tests/ui/MprisClient.h"
#include "ui/Commands.h"
#include "ui/ControlsBar.h"
#include "ui/desktop/DesktopCommands.h"
#include "ui/desktop/FrameDesktop.h"
#include "ui/desktop/MprisService.h"
#include "ui/desktop/SleepTimer.h"
#include "ui/desktop/TrayIcon.h"

namespace {

QAction* Entry(CMainFrame& frame, int id) {
    auto* action = frame.findChild<QAction*>(QString::number(id));
    EXPECT_NE(action, nullptr) << id;
    return action;
}

class DesktopTest : public PlaybackTest {
protected:
    DesktopTest() : m_mpris(QString::fromLatin1(CMprisService::kServiceName)) {}

    void PlayMovie() {
        ChooseFile(Media().movie);
        Frame().CommandAction(ID_FILE_OPEN)->trigger();
        ASSERT_EQ(Engine().m_state, 2);
    }
    QString Status() { return m_mpris.Property(QStringLiteral("PlaybackStatus")).toString(); }
    double PositionSeconds() {
        return m_mpris.Property(QStringLiteral("Position")).toLongLong() / 1e6;
    }
    // Whether the player told the bus this status since the last look.
    bool Told(const QString& status) {
        return WaitFor([&] {
            for (size_t i = m_seen; i < m_mpris.m_changes.size(); ++i) {
                if (m_mpris.m_changes[i].value(QStringLiteral("PlaybackStatus")) == status) {
                    m_seen = i + 1;
                    return true;
                }
            }
            return false;
        });
    }

    MprisClient m_mpris;
    size_t m_seen = 0;
};

} // namespace

TEST_F(DesktopTest, AnMprisClientSeesPlaybackAndItsCommandsSteerIt) {
    ASSERT_EQ(Frame().Desktop().Mpris().ServiceName(),
              QString::fromLatin1(CMprisService::kServiceName));
    EXPECT_EQ(Status(), QStringLiteral("Stopped"));
    EXPECT_FALSE(m_mpris.Property(QStringLiteral("CanPlay")).toBool());

    PlayMovie();
    EXPECT_TRUE(Told(QStringLiteral("Playing")));
    QVariantMap metadata = m_mpris.Metadata();
    EXPECT_EQ(metadata.value(QStringLiteral("xesam:title")), QStringLiteral("movie.mkv"));
    EXPECT_EQ(metadata.value(QStringLiteral("xesam:url")).toString(),
              QUrl::fromLocalFile(QString::fromStdString(Media().movie)).toString());
    EXPECT_NEAR(metadata.value(QStringLiteral("mpris:length")).toLongLong() / 1e6, 6.0, 0.2);
    EXPECT_TRUE(m_mpris.Property(QStringLiteral("CanPause")).toBool());
    EXPECT_TRUE(m_mpris.Property(QStringLiteral("CanSeek")).toBool());
    EXPECT_NEAR(m_mpris.Property(QStringLiteral("Volume")).toDouble(), 0.5, 1e-9);
    double first = PositionSeconds();
    ASSERT_TRUE(WaitFor([&] { return PositionSeconds() > first + 0.3; }, 5000));

    // Pause and play again, as the media keys do.
    ASSERT_TRUE(m_mpris.Call(QStringLiteral("PlayPause")));
    EXPECT_EQ(Engine().m_state, 1);
    EXPECT_TRUE(Told(QStringLiteral("Paused")));
    auto* pause = Frame().GetControlsBar()->findChild<QPushButton*>(QStringLiteral("1003"));
    EXPECT_TRUE(WaitFor([&] { return pause->text() == QStringLiteral("Play"); }));
    ASSERT_TRUE(m_mpris.Call(QStringLiteral("Play")));
    EXPECT_EQ(Engine().m_state, 2);
    EXPECT_TRUE(Told(QStringLiteral("Playing")));

    // Seeking: to a place of this track, then back by two seconds; a place
    // for another track is stale and does nothing.
    const QVariant track = metadata.value(QStringLiteral("mpris:trackid"));
    ASSERT_TRUE(m_mpris.Call(QStringLiteral("SetPosition"), {track, qlonglong(4000000)}));
    EXPECT_TRUE(WaitFor([&] { return !m_mpris.m_seeks.empty(); }));
    EXPECT_NEAR(PositionSeconds(), 4.0, 0.5);
    ASSERT_TRUE(m_mpris.Call(QStringLiteral("Seek"), {qlonglong(-2000000)}));
    EXPECT_TRUE(WaitFor([&] { return m_mpris.m_seeks.size() == 2; }));
    EXPECT_NEAR(m_mpris.m_seeks[1] / 1e6, 2.0, 0.6);
    ASSERT_TRUE(m_mpris.Call(
        QStringLiteral("SetPosition"),
        {QVariant::fromValue(QDBusObjectPath("/org/orvex/track/999")), qlonglong(1000000)}));
    EXPECT_GT(PositionSeconds(), 1.5);

    // The volume, with the bar's slider following.
    ASSERT_TRUE(m_mpris.SetProperty(QStringLiteral("Volume"), 0.3));
    EXPECT_EQ(Engine().m_volume, 30);
    auto* volume = Frame().GetControlsBar()->findChild<QSlider*>(QStringLiteral("1008"));
    EXPECT_TRUE(WaitFor([&] { return volume->value() == 30; }));

    // Stop, and Play brings the last medium back.
    ASSERT_TRUE(m_mpris.Call(QStringLiteral("Stop")));
    EXPECT_EQ(Engine().m_state, 0);
    EXPECT_EQ(Frame().windowTitle(), QStringLiteral("ORVEX"));
    EXPECT_TRUE(Told(QStringLiteral("Stopped")));
    EXPECT_TRUE(m_mpris.Property(QStringLiteral("CanPlay")).toBool());
    ASSERT_TRUE(m_mpris.Call(QStringLiteral("Play")));
    EXPECT_TRUE(WaitFor([&] { return Engine().m_state == 2; }));
    EXPECT_TRUE(Told(QStringLiteral("Playing")));
    EXPECT_NE(m_mpris.Metadata().value(QStringLiteral("mpris:trackid")), track);

    // Raise brings a hidden window back.
    Frame().hide();
    ASSERT_TRUE(m_mpris.CallRoot(QStringLiteral("Raise")));
    EXPECT_TRUE(Frame().isVisible());
    EXPECT_TRUE(m_boxes.Texts().empty());
}

TEST_F(DesktopTest, TheTrayAndClosingToItKeepOrvexPlaying) {
    CFrameDesktop& desktop = Frame().Desktop();
    desktop.Tray().Show(true); // a desktop with a tray
    PlayMovie();
    QMenu* menu = desktop.Tray().Menu();
    auto entry = [menu](const QString& text) -> QAction* {
        for (QAction* a : menu->actions()) {
            if (a->text() == text)
                return a;
        }
        return nullptr;
    };
    ASSERT_TRUE(WaitFor([&] { return entry(QStringLiteral("movie.mkv")) != nullptr; }));
    entry(QStringLiteral("Pause"))->trigger();
    EXPECT_EQ(Engine().m_state, 1);

    // The setting is off at first: closing ends playback as ever. Turned on,
    // it is kept, and the window goes to the tray with the medium playing.
    QAction* closeToTray = Entry(Frame(), ID_CLOSE_TO_TRAY);
    EXPECT_FALSE(closeToTray->isChecked());
    closeToTray->trigger();
    EXPECT_TRUE(Doc().m_desktopSettings.m_bCloseToTray);
    EXPECT_NE(TempDir::Read((m_data / "home/Orvex/OrvexSettings.txt")).find("CloseToTray=1"),
              std::string::npos);
    EXPECT_FALSE(Frame().close());
    EXPECT_FALSE(Frame().isVisible());
    EXPECT_EQ(Engine().m_state, 1);
    desktop.Tray().ToggleWindow();
    EXPECT_TRUE(Frame().isVisible());
    entry(QStringLiteral("Stop"))->trigger();
    EXPECT_EQ(Engine().m_state, 0);
}

TEST_F(DesktopTest, TheSleepTimerFadesAndStops) {
    CSleepTimer& sleep = Frame().Desktop().SleepTimer();
    // A minute of 100 ms: "15 Minutes" stops after 1.5 s, the last 0.5 s
    // fading.
    sleep.SetTiming(100, 500);
    PlayMovie();
    Entry(Frame(), ID_SLEEP_OFF + 15)->trigger();
    EXPECT_EQ(sleep.GetMode(), CSleepTimer::AfterMinutes);
    QAction* off = Entry(Frame(), ID_SLEEP_OFF);
    emit qobject_cast<QMenu*>(off->parent())->aboutToShow();
    EXPECT_TRUE(
        off->text().contains(QRegularExpression(QStringLiteral("^Off \\((1[0-5]) min left\\)$"))))
        << off->text().toStdString();
    EXPECT_TRUE(WaitFor([&] { return sleep.Fading(); }, 3000));
    LONG level = 0;
    EXPECT_TRUE(WaitFor(
        [&] {
            return Engine().m_pBasicAudio &&
                   SUCCEEDED(Engine().m_pBasicAudio->get_Volume(&level)) &&
                   level < CMediaPlayer::PercentToVolume(40);
        },
        3000));
    EXPECT_TRUE(WaitFor([&] { return Engine().m_state == 0; }, 3000));
    EXPECT_EQ(sleep.GetMode(), CSleepTimer::Off);
    EXPECT_TRUE(Entry(Frame(), ID_SLEEP_OFF)->isChecked());
    EXPECT_EQ(Frame().windowTitle(), QStringLiteral("ORVEX"));
}
