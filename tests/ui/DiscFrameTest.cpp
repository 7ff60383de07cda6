// Discs in the window: drives that hold a DVD-Video folder and an audio CD
// image (made at test time) light up "Play DVD" and "Play CD" as the CD-DVD
// menu opens; the CD plays track after track to its end with the list in
// view; the DVD shows its menu in the picture, where the mouse chooses a
// title, and the DVD Navigation dialog tells where it stands and jumps.
#include <QComboBox>
#include <QLabel>
#include <QPushButton>

#include "platform/base/UserMessages.h"
#include "platform/disc/AudioCdFolders.h"
#include "tests/support/TestDrives.h"
#include "tests/ui/FrameMedia.h"
#include "ui/Commands.h"
#include "ui/ListView.h"
#include "ui/SplitterView.h"
#include "ui/VideoView.h"
#include "ui/desktop/FrameDesktop.h"
#include "ui/dialogs/DvdNavDlg.h"

namespace {

// The machine's drives as the test gives them: each a root of a kind, the
// audio CD's tracks read from its image as from a drive.
class DiscDrives : public CTestDriveList {
public:
    BOOL ListFolder(const CString& folder, std::vector<CFolderEntry>& entries) override {
        return m_tracks.ListFolder(folder, entries) || ListFileSystemFolder(folder, entries);
    }
    void Add(const std::string& root, UINT type) { AddDrive(CString(root), type); }

private:
    CAudioCdFolders m_tracks;
};

class DiscFrameTest : public PlaybackTest {
protected:
    DiscFrameTest() {
        // A stick with a DVD folder on it is no disc; the optical drives are.
        std::filesystem::create_directories(m_stick / "VIDEO_TS");
        m_drives.Add(m_stick.Path().string(), DRIVE_REMOVABLE);
        m_drives.Add(TestDiscs::Get().AudioCd(), DRIVE_CDROM);
        m_drives.Add(TestDiscs::Get().Dvd(), DRIVE_CDROM);
    }

    bool Enabled(int id) { return Frame().CommandAction(id)->isEnabled(); }
    void OpenDiscMenu() { UpdateDiscCommands(Frame(), Doc()); }

    COrvexVideoView* Video() { return Frame().GetSplitterView()->GetVideoView(); }
    bool AtMenu() {
        return WaitFor([&] {
            return Engine().m_dvdDomain == DVD_DOMAIN_VideoManagerMenu &&
                   Engine().m_dvdButtonCount == 2 && Engine().m_dvdButton == 1;
        });
    }

    TempDir m_stick;
    DiscDrives m_drives;
};

} // namespace

TEST_F(DiscFrameTest, PlayCdWalksTheDiscTrackAfterTrackToItsEnd) {
    OpenDiscMenu();
    EXPECT_TRUE(Enabled(ID_PLAY_CD));
    EXPECT_TRUE(Enabled(ID_PLAY_DVD));
    EXPECT_FALSE(Enabled(ID_DVD_NAVIGATION));
    EXPECT_EQ(Doc().m_cdPath, CString(TestDiscs::Get().AudioCd() + "/"));
    EXPECT_EQ(Doc().m_dvdPath, CString(TestDiscs::Get().Dvd() + "/VIDEO_TS/"));

    Frame().CommandAction(ID_PLAY_CD)->trigger();
    ASSERT_EQ(Engine().m_state, 2) << (m_boxes.Texts().empty() ? "" : m_boxes.Texts()[0].ToUtf8());
    EXPECT_TRUE(Engine().m_bCd);
    EXPECT_EQ(Frame().m_cdTracks.GetSize(), 2);
    EXPECT_EQ(Frame().m_cdIndex, 0);
    EXPECT_EQ(Frame().windowTitle(), QStringLiteral("Orvex:  Track01.cda"));
    // A CD has no picture: the list stays.
    EXPECT_NE(Frame().GetSplitterView()->GetListView(), nullptr);
    OpenDiscMenu();
    EXPECT_FALSE(Enabled(ID_PLAY_CD));
    EXPECT_TRUE(Enabled(ID_PLAY_DVD));

    // The volume set on one track carries over to the next.
    PostMessageW(Frame().GetSafeHwnd(), UM_SET_VOLUME, 0, 80);
    ASSERT_TRUE(WaitFor([&] { return Frame().m_cdIndex == 1; }, 5000));
    EXPECT_EQ(Frame().windowTitle(), QStringLiteral("Orvex CD:  Track02.cda"));
    EXPECT_EQ(Engine().m_volume, 80);
    EXPECT_TRUE(WaitFor([&] { return Engine().m_state == 0; }, 5000));
    EXPECT_FALSE(Frame().m_cdListActive);
    EXPECT_EQ(Frame().m_cdIndex, -1);
    EXPECT_EQ(Frame().windowTitle(), QStringLiteral("ORVEX"));
    EXPECT_TRUE(m_boxes.Texts().empty());
}

TEST_F(DiscFrameTest, ATrackChosenInTheListPlaysOnToTheDiscsEnd) {
    Doc().ShowDiscFolder(CString(TestDiscs::Get().AudioCd()));
    ASSERT_EQ(Doc().m_displayTopic.m_media.GetSize(), 2);
    EXPECT_EQ(Doc().m_displayTopic.m_media[1].m_type, MEDIA_AUDIO_FILE);
    Frame().SetMediaPath(Doc().m_displayTopic.m_media[1].m_location);
    Frame().SetMediaTitle(CString(u"Orvex CD: Track02.cda"));
    PostMessageW(Frame().GetSafeHwnd(), UM_PLAY_CD, 0, 0);
    ASSERT_TRUE(WaitFor([&] { return Engine().m_bCd; }));
    EXPECT_EQ(Frame().m_cdIndex, 1);
    EXPECT_TRUE(Frame().m_cdListActive);
    EXPECT_EQ(Frame().windowTitle(), QStringLiteral("Orvex CD: Track02.cda"));
    // The media keys' Previous and Next walk the list, no further than its ends.
    CFrameDesktop& desktop = Frame().Desktop();
    EXPECT_FALSE(desktop.PlaybackState().canGoNext);
    ASSERT_TRUE(desktop.PlaybackState().canGoPrevious);
    desktop.Previous();
    EXPECT_EQ(Frame().m_cdIndex, 0);
    EXPECT_EQ(Frame().windowTitle(), QStringLiteral("Orvex CD:  Track01.cda"));
    EXPECT_EQ(desktop.PlaybackState().Title(), QStringLiteral("Track01.cda"));
    desktop.Previous();
    EXPECT_EQ(Frame().m_cdIndex, 0);
    desktop.Next();
    EXPECT_EQ(Frame().m_cdIndex, 1);
    EXPECT_TRUE(Frame().m_cdListActive);
    // The last track ends everything.
    EXPECT_TRUE(WaitFor([&] { return Engine().m_state == 0; }, 5000));
    EXPECT_EQ(Frame().windowTitle(), QStringLiteral("ORVEX"));
}

TEST_F(DiscFrameTest, PlayDvdShowsTheMenuWhereTheMouseChoosesATitle) {
    OpenDiscMenu();
    Frame().CommandAction(ID_PLAY_DVD)->trigger();
    ASSERT_TRUE(Engine().m_bDvd) << (m_boxes.Texts().empty() ? "" : m_boxes.Texts()[0].ToUtf8());
    EXPECT_EQ(Frame().windowTitle(), QStringLiteral("ORVEX DVD"));
    ASSERT_NE(Video(), nullptr);
    ASSERT_TRUE(AtMenu());
    OpenDiscMenu();
    EXPECT_FALSE(Enabled(ID_PLAY_DVD));
    EXPECT_TRUE(Enabled(ID_DVD_NAVIGATION));

    QTest::mouseMove(Video(), OnDvdButton(Engine(), 2));
    EXPECT_TRUE(WaitFor([&] { return Engine().m_dvdButton == 2; }, 3000));
    QTest::mouseClick(Video(), Qt::LeftButton, Qt::NoModifier, OnDvdButton(Engine(), 2));
    EXPECT_TRUE(WaitFor(
        [&] { return Engine().m_dvdDomain == DVD_DOMAIN_Title && Engine().m_dvdTitle == 2; }));
    // The bar shows the title's time.
    EXPECT_TRUE(WaitFor([&] { return Engine().m_dvdTitleSeconds == 2; }));
    Frame().StopPlayback(FALSE);
    EXPECT_NE(Frame().GetSplitterView()->GetListView(), nullptr);
    EXPECT_TRUE(m_boxes.Texts().empty());
}

TEST_F(DiscFrameTest, TheNavigationDialogTellsWhereTheDiscStandsAndJumps) {
    ASSERT_TRUE(Frame().StartDvd(CString(TestDiscs::Get().Dvd())));
    ASSERT_TRUE(AtMenu());
    Engine().PlayChapterInTitle(1, 2);
    ASSERT_TRUE(WaitFor([&] {
        return Engine().m_dvdDomain == DVD_DOMAIN_Title && Engine().m_dvdChapterCount == 2;
    }));
    std::map<int, QString> shown;
    AnswerDialog<QDialog>([&](QDialog* modal) {
        auto* dialog = dynamic_cast<CDvdNavDlg*>(modal);
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(App().m_hwndDvdNav, dialog->GetSafeHwnd());
        for (int id : {1045, 1046, 1047, 1005})
            shown[id] = dialog->findChild<QLabel*>(QString::number(id))->text();
        auto* titles = dialog->findChild<QComboBox*>(QStringLiteral("1049"));
        auto* chapters = dialog->findChild<QComboBox*>(QStringLiteral("1050"));
        EXPECT_EQ(titles->count(), 2);
        EXPECT_EQ(titles->currentText(), QStringLiteral("1"));
        EXPECT_EQ(chapters->count(), 2);
        EXPECT_EQ(chapters->currentText(), QStringLiteral("2"));
        // Title 2 has one chapter; Go To plays it.
        titles->setCurrentIndex(1);
        emit titles->activated(1);
        EXPECT_EQ(chapters->count(), 1);
        dialog->findChild<QPushButton*>(QStringLiteral("1048"))->click();
        dialog->findChild<QPushButton*>(QStringLiteral("1"))->click();
    });
    Frame().RunDvdNavigation();
    EXPECT_EQ(shown[1045], QStringLiteral("Current Title: 1"));
    EXPECT_EQ(shown[1046], QStringLiteral("Current Chapter: 2"));
    EXPECT_EQ(shown[1047], QStringLiteral("Current Domain: Title"));
    EXPECT_EQ(shown[1005], QStringLiteral("Title Duration: Hr: 0 Min: 0 Sec: 4"));
    EXPECT_EQ(App().m_hwndDvdNav, nullptr);
    EXPECT_TRUE(WaitFor([&] { return Engine().m_dvdTitle == 2 && Engine().m_dvdChapter == 1; }));
}

TEST_F(DiscFrameTest, ADvdFolderOrImageFromDiskPlaysAndARefusedOneLeavesTheList) {
    ChooseFile(TestDiscs::Get().Dvd() + "/VIDEO_TS/VIDEO_TS.IFO");
    Frame().CommandAction(ID_PLAY_DVD_FOLDER)->trigger();
    ASSERT_TRUE(Engine().m_bDvd);
    EXPECT_TRUE(AtMenu());

    TempDir notADisc;
    TempDir::Write(notADisc / "VIDEO_TS/readme.txt", "x");
    Frame().SetMediaPath(notADisc.Str());
    PostMessageW(Frame().GetSafeHwnd(), UM_PLAY_DVD, 0, 0);
    ASSERT_TRUE(WaitFor([&] { return !m_boxes.Texts().empty(); }));
    EXPECT_EQ(m_boxes.Texts()[0], CString(u"ERROR - SetDVDDirectory failed - IID_IDvdControl2"));
    EXPECT_EQ(Engine().m_state, 0);
    EXPECT_NE(Frame().GetSplitterView()->GetListView(), nullptr);
}
