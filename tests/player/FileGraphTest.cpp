// Building the file and stream graph: what each kind of medium gets, and the
// exact text of each failure.
#include <filesystem>

#include "tests/player/PlayerTestSupport.h"

namespace {

// The caps text the audio decoder's output pin states.
std::string DecoderOutputCaps(CMediaPlayer& player) {
    IPin* pin = nullptr;
    if (FAILED(CMediaPlayer::GetPin(player.m_pLavAud, PINDIR_OUTPUT, MEDIATYPE_Audio, &pin)))
        return "";
    std::string text = OfferedCaps(pin);
    pin->Release();
    return text;
}

} // namespace

TEST_F(PlayerTest, AudioOnlyFilePlaysWithoutPicture) {
    ASSERT_TRUE(Play(Media().Audio()));
    EXPECT_TRUE(m_boxes.Texts().empty());
    EXPECT_EQ(2, m_player->m_state);
    EXPECT_EQ(std::vector<std::string>{"SetVideoWindow(0,1)"}, m_frame.m_calls);
    EXPECT_NE(nullptr, m_player->m_pBasicAudio);
    EXPECT_EQ(nullptr, m_player->m_pVideoWindow);
    EXPECT_EQ(nullptr, m_player->m_pBasicVideo);
    EXPECT_EQ(nullptr, m_player->m_pLavVid);
    EXPECT_FALSE(m_player->m_bStream);
    // 129 buffers of 1024 samples at 44.1 kHz: just under 3 s.
    EXPECT_NEAR(2.995, m_player->m_duration / 1e7, 0.05);
    EXPECT_EQ(50, m_player->m_volume);
    EXPECT_EQ(-1505, GraphVolume());
    EXPECT_EQ(1, m_frame.m_waitCount);
    EXPECT_EQ(0, m_frame.m_waitDepth);
}

TEST_F(PlayerTest, VideoOnlyFileHasNoSoundControls) {
    ASSERT_TRUE(Play(Media().Video()));
    EXPECT_TRUE(m_boxes.Texts().empty());
    EXPECT_EQ(std::vector<std::string>{"SetVideoWindow(1,0)"}, m_frame.m_calls);
    EXPECT_EQ(nullptr, m_player->m_pBasicAudio);
    EXPECT_EQ(nullptr, m_player->m_pLavAud);
    ASSERT_NE(nullptr, m_player->m_pVideoWindow);
    HWND owner = nullptr;
    EXPECT_EQ(S_OK, m_player->m_pVideoWindow->get_Owner(&owner));
    EXPECT_EQ(m_frame.GetSafeHwnd(), owner);
    LONG style = 0;
    m_player->m_pVideoWindow->get_WindowStyle(&style);
    EXPECT_EQ(0x44000000, style);
    // 320x240 in 640x360: the sides shrink to a 480-wide picture.
    LONG l, t, w, h;
    m_player->m_pVideoWindow->GetWindowPosition(&l, &t, &w, &h);
    EXPECT_EQ((std::vector<LONG>{80, 0, 480, 360}), (std::vector<LONG>{l, t, w, h}));
    EXPECT_FALSE(m_player->SetVolume(80));
    int out = -1;
    EXPECT_FALSE(m_player->StepVolume(TRUE, out));
    m_player->ToggleMute();
    EXPECT_FALSE(m_player->m_bMuted);
}

TEST_F(PlayerTest, FileWithBothStreamsGetsBothDecoders) {
    ASSERT_TRUE(Play(Media().Both()));
    EXPECT_TRUE(m_boxes.Texts().empty());
    EXPECT_EQ(std::vector<std::string>{"SetVideoWindow(1,1)"}, m_frame.m_calls);
    EXPECT_NE(nullptr, m_player->m_pLavVid);
    EXPECT_NE(nullptr, m_player->m_pLavAud);
    EXPECT_NE(nullptr, m_player->m_pBasicAudio);
    EXPECT_NE(nullptr, m_player->m_pBasicVideo);
    LONG vw = 0, vh = 0;
    EXPECT_EQ(S_OK, m_player->m_pBasicVideo->GetVideoSize(&vw, &vh));
    EXPECT_EQ(320, vw);
    EXPECT_EQ(240, vh);
}

TEST_F(PlayerTest, MissingAndCorruptFilesCannotBeOpened) {
    std::string missing = (Media().Dir() / "no-such-file.mkv");
    EXPECT_FALSE(Play(missing));
    EXPECT_FALSE(Play(Media().Corrupt()));
    EXPECT_EQ((std::vector<CString>{
                  CString("File Source Error - could not open " + missing + "."),
                  CString("File Source Error - could not open " + Media().Corrupt() + "."),
              }),
              m_boxes.Texts());
    EXPECT_EQ(u"Orvex", m_boxes.Boxes()[0].caption);
    EXPECT_EQ(0, m_player->m_state);
    EXPECT_EQ(nullptr, m_player->m_pGraph);
    EXPECT_EQ(nullptr, m_player->m_pLavSrc);
    EXPECT_TRUE(m_frame.m_calls.empty());
    EXPECT_EQ(0, m_frame.m_waitDepth);
}

TEST_F(PlayerTest, RefusedWindowEndsTheBuild) {
    m_frame.m_windowResult = FALSE;
    EXPECT_FALSE(Play(Media().Audio()));
    EXPECT_EQ(std::vector<CString>{u"ERROR - SetVideoWindow function failed."}, m_boxes.Texts());
    EXPECT_EQ(0, m_player->m_state);
    EXPECT_EQ(nullptr, m_player->m_pGraph);
}

TEST_F(PlayerTest, PathMerelyContainingAStreamSchemeCountsAsStream) {
    // "http:" is a plain folder name here; the path still holds "http://".
    std::string folder = Media().Dir() / "HTTP:";
    std::filesystem::create_directories(folder);
    std::string path = folder + "//audio.ogg";
    std::filesystem::copy_file(Media().Audio(), folder + "/audio.ogg",
                               std::filesystem::copy_options::overwrite_existing);
    ASSERT_TRUE(Play(path)) << FirstBox();
    EXPECT_TRUE(m_player->m_bStream);
}

TEST_F(PlayerTest, WmaDecoderFollowsTheUsersSwitch) {
    m_frame.m_lavSetup.m_bWma2 = FALSE;
    EXPECT_FALSE(Play(Media().Wma()));
    EXPECT_EQ(std::vector<CString>{u"ERROR - Connect failed - Lav Source to Audio."},
              m_boxes.Texts());
    m_boxes.Clear();
    m_frame.m_lavSetup.m_bWma2 = TRUE;
    m_frame.m_lavSetup.m_bWmaPro = FALSE;
    m_frame.m_lavSetup.m_bWmaAll = FALSE;
    EXPECT_TRUE(Play(Media().Wma()));
    EXPECT_TRUE(m_boxes.Texts().empty());
}

TEST_F(PlayerTest, StereoSpeakersMixSurroundDownToTwoChannels) {
    m_frame.m_lavSetup.m_bStereoSpeakers = TRUE;
    ASSERT_TRUE(Play(Media().Surround()));
    EXPECT_NE(std::string::npos, DecoderOutputCaps(*m_player).find("channels=(int)2"));
    m_frame.m_lavSetup.m_bStereoSpeakers = FALSE;
    ASSERT_TRUE(Play(Media().Surround()));
    EXPECT_NE(std::string::npos, DecoderOutputCaps(*m_player).find("channels=(int)6"));
}

TEST_F(PlayerTest, SecondAudioStreamIsLeftAside) {
    ASSERT_TRUE(Play(Media().TwoAudio()));
    IPin* pin = nullptr;
    EXPECT_EQ(S_OK, m_player->m_pLavSrc->FindPin(u"Audio", &pin));
    SafeRelease(pin);
    EXPECT_EQ(S_OK, m_player->m_pLavSrc->FindPin(u"Audio 2", &pin));
    SafeRelease(pin);
    EXPECT_EQ(S_OK, CMediaPlayer::GetPin2(m_player->m_pLavSrc, PINDIR_OUTPUT, 1, &pin));
    SafeRelease(pin);
    // The stream nobody takes neither stalls nor fails the one that plays.
    EXPECT_TRUE(PumpUntilStopped(10));
    EXPECT_TRUE(m_boxes.Texts().empty());
}

TEST_F(PlayerTest, PlainMp3KnowsItsLengthOnceItRuns) {
    ASSERT_TRUE(Play(Media().Mp3())) << FirstBox();
    // 90 s, told by no header: the seek lands in the middle, not at 1 s.
    EXPECT_NEAR(90.0, m_player->m_duration / 1e7, 0.5);
    int out = -1;
    ASSERT_TRUE(m_player->SeekTo(500, out));
    EXPECT_EQ(45, out);
    EXPECT_TRUE(PollFor(2000, [&] { return PositionSeconds() >= 45.0; }));
}
