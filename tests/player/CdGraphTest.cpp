// An audio CD image of generated tones played track by track through the
// CD source, the splitter behind it and the audio decoder: each track has
// its own length, plays to its end and can be sought; a path that names no
// track of the disc, or a missing source module, fails with its text.
#include "platform/base/CdTrackPath.h"
#include "tests/player/PlayerTestSupport.h"
#include "tests/support/TestDiscs.h"

namespace {

class CdGraphTest : public PlayerTest {
protected:
    static CString Track(const std::string& name) {
        return CString(TestDiscs::Get().AudioCd() + "/" + name);
    }
};

} // namespace

TEST_F(CdGraphTest, EachTrackPlaysWithItsOwnLengthToItsEnd) {
    for (int track = 1; track <= 2; ++track) {
        m_frame.m_stops = 0;
        m_frame.m_calls.clear();
        ASSERT_TRUE(m_player->PlayCdLav(Track(CdTrackFileName(track)), &m_frame, 80)) << FirstBox();
        EXPECT_EQ(m_frame.m_calls, std::vector<std::string>{"SetVideoWindow(0,1)"});
        EXPECT_TRUE(m_player->m_bCd);
        EXPECT_EQ(m_player->m_state, 2);
        EXPECT_EQ(m_player->m_volume, 80);
        EXPECT_EQ(m_player->m_pVideoWindow, nullptr);
        EXPECT_NEAR(m_player->m_duration / 1e7, CDiscMaker::kTrackSeconds[track - 1], 0.02);
        EXPECT_EQ(m_frame.m_waitDepth, 0);
        EXPECT_TRUE(PumpUntilStopped(5));
    }
    EXPECT_TRUE(m_boxes.Texts().empty()) << FirstBox();
}

TEST_F(CdGraphTest, ATrackCanBeSoughtAndItsNameIsReadWithoutCase) {
    ASSERT_TRUE(m_player->PlayCdLav(Track("track01.CDA"), &m_frame, 50)) << FirstBox();
    int seconds = 0;
    ASSERT_TRUE(m_player->SeekTo(800, seconds));
    EXPECT_EQ(seconds, 1);
    EXPECT_TRUE(PollFor(2000, [&] { return PositionSeconds() >= 1.0; })) << PositionSeconds();
    EXPECT_TRUE(PumpUntilStopped(3));
    EXPECT_TRUE(m_boxes.Texts().empty()) << FirstBox();
}

TEST_F(CdGraphTest, APathThatNamesNoTrackOrAMissingSourceFailsWithItsText) {
    for (const std::string name : {"Track03.cda", "Track00.cda", "disc.bin"}) {
        m_boxes.Clear();
        const CString path = Track(name);
        EXPECT_FALSE(m_player->PlayCdLav(path, &m_frame, 50));
        CString expected;
        expected.Format(u"File Source Error - could not open %s.", path);
        EXPECT_EQ(m_boxes.Texts(), std::vector<CString>{expected}) << name;
        EXPECT_EQ(m_player->m_pGraph, nullptr);
    }
    m_boxes.Clear();
    m_player->m_asyncCdPath = CString(StageDir() + "/AsyncCd/Missing.ax");
    EXPECT_FALSE(m_player->PlayCdLav(Track("Track01.cda"), &m_frame, 50));
    EXPECT_EQ(m_boxes.Texts(),
              std::vector<CString>{CString(u"ERROR - CreateObjectFromPath failed - clsidAsyncCd")});
    EXPECT_TRUE(m_frame.m_calls.empty());
}
