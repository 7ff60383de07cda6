// A DVD-Video disc authored at test time, played through the navigator and
// the two decoders: its menu answers the mouse, titles and chapters are
// jumped to, the time and the title's length are told by the events, and a
// disc the navigator refuses says why and leaves the engine empty.
#include "tests/player/PlayerTestSupport.h"
#include "tests/support/TestDiscs.h"

namespace {

class DvdGraphTest : public PlayerTest {
protected:
    static const std::string& Disc() { return TestDiscs::Get().Dvd(); }

    // The frame's 640x360 rectangle holds the 4:3 picture as 480x360, 80
    // pixels in from the left: a point of the 720x480 frame, there.
    static POINT InView(int x, int y) { return POINT{80 + x * 480 / 720, y * 360 / 480}; }
    static POINT Button(int which) {
        const int left = which == 1 ? CDiscMaker::kButton1Left : CDiscMaker::kButton2Left;
        return InView(left + 100, (CDiscMaker::kButtonTop + CDiscMaker::kButtonBottom) / 2);
    }

    void PlayToMenu() {
        ASSERT_TRUE(m_player->PlayDvdLav(CString(Disc()), &m_frame)) << FirstBox();
        ASSERT_TRUE(PollFor(5000,
                            [&] {
                                return m_player->m_dvdDomain == DVD_DOMAIN_VideoManagerMenu &&
                                       m_player->m_dvdButtonCount == 2 &&
                                       m_player->m_dvdButton == 1;
                            }))
            << "domain " << m_player->m_dvdDomain << " buttons " << m_player->m_dvdButtonCount;
    }

    // The failure texts of a disc the navigator refuses.
    std::vector<std::string> Refusal(const std::string& path) {
        EXPECT_FALSE(m_player->PlayDvdLav(CString(path), &m_frame));
        std::vector<std::string> texts;
        for (const CString& text : m_boxes.Texts())
            texts.push_back(text.ToUtf8());
        m_boxes.Clear();
        EXPECT_EQ(m_player->m_state, 0);
        EXPECT_EQ(m_player->m_pGraph, nullptr);
        EXPECT_FALSE(m_player->m_bDvd);
        return texts;
    }
};

} // namespace

TEST_F(DvdGraphTest, TheMenuAnswersTheMouseAndItsButtonPlaysATitle) {
    PlayToMenu();
    if (HasFatalFailure())
        return;
    EXPECT_EQ(m_frame.m_calls, std::vector<std::string>{"SetVideoWindow(1,1)"});
    EXPECT_TRUE(m_player->m_bDvd);
    EXPECT_EQ(m_player->m_state, 2);
    EXPECT_EQ(m_player->m_duration, 0);
    EXPECT_EQ(m_player->m_volume, 50);
    LONG width = 0, height = 0;
    ASSERT_EQ(S_OK, m_player->m_pBasicVideo->GetVideoSize(&width, &height));
    EXPECT_EQ(width * 3, height * 4) << width << "x" << height;

    // Off the buttons the mouse changes nothing; over the second it selects
    // it, and a click there plays title 2.
    m_player->SelectMenuButton(InView(360, 100).x, InView(360, 100).y);
    PumpMessages(200);
    EXPECT_EQ(m_player->m_dvdButton, 1u);
    m_player->SelectMenuButton(Button(2).x, Button(2).y);
    EXPECT_TRUE(PollFor(3000, [&] { return m_player->m_dvdButton == 2; }));
    m_player->ActivateMenuButton(Button(2).x, Button(2).y);
    ASSERT_TRUE(PollFor(5000, [&] {
        return m_player->m_dvdDomain == DVD_DOMAIN_Title && m_player->m_dvdTitle == 2;
    }));
    EXPECT_TRUE(PollFor(3000, [&] { return m_player->m_dvdTitleSeconds == 2; }));
    EXPECT_EQ(m_player->m_dvdChapter, 1u);
    EXPECT_EQ(m_player->m_dvdTitleCount, 2u);
    EXPECT_EQ(m_player->m_dvdChapterCount, 1u);
    EXPECT_EQ(m_player->GetDomainName(), CString(u"Title"));
    EXPECT_EQ(m_player->GetTitleDurationText(), CString(u"Hr: 0 Min: 0 Sec: 2"));
    // In a title the mouse selects nothing.
    m_player->SelectMenuButton(Button(1).x, Button(1).y);
    // At its end the title goes back to the menu, which waits there.
    EXPECT_TRUE(
        PollFor(6000, [&] { return m_player->m_dvdDomain == DVD_DOMAIN_VideoManagerMenu; }));
    EXPECT_EQ(m_frame.m_stops, 0);
    EXPECT_TRUE(m_boxes.Texts().empty()) << FirstBox();
}

TEST_F(DvdGraphTest, TitleChapterAndMenuJumpsLandWhereAskedAndTheTimeReadsRight) {
    PlayToMenu();
    if (HasFatalFailure())
        return;
    m_player->PlayChapterInTitle(1, 2);
    EXPECT_EQ(m_player->m_dvdTitle, 1u);
    EXPECT_EQ(m_player->m_dvdChapter, 2u);
    ASSERT_TRUE(PollFor(5000, [&] {
        return m_player->m_dvdDomain == DVD_DOMAIN_Title && m_player->m_dvdTitleSeconds == 4;
    }));
    EXPECT_EQ(m_player->m_dvdChapterCount, 2u);
    EXPECT_EQ(m_player->GetChapterCount(1), 2u);
    EXPECT_EQ(m_player->GetChapterCount(2), 1u);
    // The second chapter starts near 2 s, at the disc's unit boundary.
    ASSERT_TRUE(PollFor(3000, [&] { return m_player->m_dvdSeconds >= 1; }));
    EXPECT_LE(m_player->m_dvdSeconds, 2u);
    int perMille = 0, seconds = 0;
    ASSERT_TRUE(m_player->GetPosition(perMille, seconds));
    EXPECT_EQ(perMille, static_cast<int>(seconds * 1000 / 4));

    // Seeking within the title from the bar: three quarters in.
    int out = 0;
    ASSERT_TRUE(m_player->SeekTo(750, out));
    EXPECT_EQ(out, 3);
    EXPECT_TRUE(PollFor(3000, [&] { return m_player->m_dvdSeconds == 3; }))
        << m_player->m_dvdSeconds;

    // The title's time counts on second by second from its start.
    m_player->PlayChapterInTitle(1, 1);
    ASSERT_TRUE(PollFor(3000, [&] { return m_player->m_dvdSeconds == 0; }));
    std::vector<uint32_t> seen;
    PollFor(3500, [&] {
        if (seen.empty() || seen.back() != m_player->m_dvdSeconds)
            seen.push_back(m_player->m_dvdSeconds);
        return m_player->m_dvdSeconds >= 3;
    });
    EXPECT_GE(seen.size(), 3u);
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));

    m_player->ShowDvdMenu(DVD_MENU_Root);
    EXPECT_TRUE(PollFor(5000, [&] {
        return m_player->m_dvdDomain == DVD_DOMAIN_VideoTitleSetMenu &&
               m_player->m_dvdButtonCount == 2;
    }));
    m_player->ShowDvdMenu(DVD_MENU_Title);
    EXPECT_TRUE(
        PollFor(5000, [&] { return m_player->m_dvdDomain == DVD_DOMAIN_VideoManagerMenu; }));
    EXPECT_TRUE(m_boxes.Texts().empty()) << FirstBox();
}

TEST_F(DvdGraphTest, ARefusedDiscSaysWhyAndLeavesTheEngineEmpty) {
    const std::string failed = "ERROR - SetDVDDirectory failed - IID_IDvdControl2";
    // A folder with no disc in it, a drive with no disc, a damaged disc.
    TempDir empty;
    std::vector<std::string> texts = Refusal(empty.Path().string());
    ASSERT_FALSE(texts.empty());
    EXPECT_EQ(texts[0], failed);
    texts = Refusal("/dev/orvex-no-such-drive");
    ASSERT_FALSE(texts.empty());
    EXPECT_EQ(texts[0], failed);

    TempDir damaged;
    std::filesystem::copy(Disc(), damaged.Path() / "dvd", std::filesystem::copy_options::recursive);
    for (const char* name : {"VIDEO_TS.IFO", "VIDEO_TS.BUP"})
        TempDir::Write(damaged / ("dvd/VIDEO_TS/" + std::string(name)), std::string(12288, '\0'));
    texts = Refusal(damaged / "dvd");
    ASSERT_EQ(texts.size(), 2u);
    EXPECT_EQ(texts[0], failed);
    EXPECT_NE(texts[1].find("VIDEO_TS.IFO"), std::string::npos) << texts[1];

    // An encrypted disc is refused before anything plays, and the reason
    // names what is missing.
    texts = Refusal(TestDiscs::Get().EncryptedDvd());
    ASSERT_EQ(texts.size(), 2u);
    EXPECT_EQ(texts[0], failed);
    EXPECT_NE(texts[1].find("libdvdcss"), std::string::npos) << texts[1];
    EXPECT_TRUE(m_frame.m_calls.empty());
}
