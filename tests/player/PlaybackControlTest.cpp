// Control of a running graph: states, volume and mute, seeking, position,
// the picture rectangle, teardown, and the decoder settings.
#include "tests/player/PlayerTestSupport.h"

namespace {

// Records the calls made on it; fails those it is told to.
class CRecordingAudioSettings : public ILAVAudioSettings {
public:
    std::vector<std::string> m_calls;
    bool m_fail = false;
    HRESULT Result(HRESULT code) { return m_fail ? code : S_OK; }
    HRESULT QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG AddRef() override { return 2; }
    ULONG Release() override { return 1; }
    HRESULT SetRuntimeConfig(BOOL on) override {
        m_calls.push_back("SetRuntimeConfig(" + std::to_string(on) + ")");
        return Result(MakeHresult(0x80000001));
    }
    HRESULT SetFormatConfiguration(LAVAudioCodec codec, BOOL on) override {
        m_calls.push_back("SetFormatConfiguration(" + std::to_string(codec) + "," +
                          std::to_string(on) + ")");
        return Result(MakeHresult(0x80000002 + codec));
    }
    BOOL GetFormatConfiguration(LAVAudioCodec) override { return TRUE; }
    HRESULT SetMixingEnabled(BOOL on) override {
        m_calls.push_back("SetMixingEnabled(" + std::to_string(on) + ")");
        return Result(MakeHresult(0x80000099));
    }
    BOOL GetMixingEnabled() override { return TRUE; }
};

} // namespace

TEST(PercentToVolumeTest, MapsPercentToHundredthsOfADecibel) {
    const std::pair<int, LONG> cases[] = {{0, -10000}, {-7, -10000}, {1, -10000}, {10, -5000},
                                          {50, -1505}, {99, -21},    {100, 0},    {250, 0}};
    for (const auto& [percent, volume] : cases)
        EXPECT_EQ(volume, CMediaPlayer::PercentToVolume(percent)) << percent;
}

TEST(LavSetupTest, AllFiveCallsAreMadeInOrderAndTheLastFailureIsTheResult) {
    CLavSetup setup;
    setup.m_bWmaPro = FALSE;
    setup.m_bStereoSpeakers = FALSE;
    CRecordingAudioSettings settings;
    EXPECT_EQ(S_OK, setup.SetOrvexAudio(&settings));
    EXPECT_EQ((std::vector<std::string>{"SetRuntimeConfig(1)", "SetFormatConfiguration(13,1)",
                                        "SetFormatConfiguration(14,0)",
                                        "SetFormatConfiguration(17,1)", "SetMixingEnabled(0)"}),
              settings.m_calls);
    settings.m_fail = true;
    EXPECT_EQ(MakeHresult(0x80000099), setup.SetOrvexAudio(&settings));
    EXPECT_EQ(10u, settings.m_calls.size());
    CLavSetup fresh;
    EXPECT_TRUE(fresh.m_bWma2 && fresh.m_bWmaPro && fresh.m_bWmaAll && fresh.m_bStereoSpeakers);
}

TEST_F(PlayerTest, CleanPlaybackOnAnEmptyEngineIsQuiet) {
    EXPECT_TRUE(m_player->CleanPlayback());
    EXPECT_TRUE(m_boxes.Texts().empty());
    EXPECT_FALSE(m_player->PauseResume());
    int a = -1, b = -1;
    EXPECT_FALSE(m_player->GetPosition(a, b));
    EXPECT_FALSE(m_player->SeekTo(500, a));
    EXPECT_FALSE(m_player->SeekDrag(TRUE, 500, a));
    EXPECT_FALSE(m_player->SetVideoRect(RECT{0, 0, 100, 100}));
    EXPECT_FALSE(m_player->OnGraphEvent(&m_frame));
}

TEST_F(PlayerTest, PauseAndResumeMoveBetweenStates) {
    ASSERT_TRUE(Play(Media().Audio()));
    EXPECT_TRUE(m_player->PauseResume());
    EXPECT_EQ(1, m_player->m_state);
    OAFilterState state = State_Stopped;
    m_player->m_pControl->GetState(2000, &state);
    EXPECT_EQ(State_Paused, state);
    int a = 0, b = 0;
    EXPECT_FALSE(m_player->GetPosition(a, b)); // no position while paused
    EXPECT_TRUE(m_player->PauseResume());
    EXPECT_EQ(2, m_player->m_state);
    m_player->m_pControl->GetState(2000, &state);
    EXPECT_EQ(State_Running, state);
    EXPECT_TRUE(m_player->CleanPlayback());
    EXPECT_EQ(0, m_player->m_state);
    EXPECT_EQ(nullptr, m_player->m_pControl);
}

TEST_F(PlayerTest, PositionIsPerMilleOfTheDuration) {
    ASSERT_TRUE(Play(Media().Audio()));
    int perMille = -1, seconds = -1;
    ASSERT_TRUE(PollFor(5000, [&] { return m_player->GetPosition(perMille, seconds) && seconds; }));
    EXPECT_EQ(1, seconds);
    // One second of just under three.
    EXPECT_GE(perMille, 1000 / 3);
    EXPECT_LE(perMille, 700);
    LONGLONG now = 0;
    m_player->m_pSeeking->GetCurrentPosition(&now);
    EXPECT_NEAR(static_cast<double>(now) * 1000 / m_player->m_duration, perMille, 40);
    // A length that is not known gives no position; nor does one past it.
    LONGLONG duration = m_player->m_duration;
    m_player->m_duration = 0;
    EXPECT_FALSE(m_player->GetPosition(perMille, seconds));
    m_player->m_duration = 1000;
    EXPECT_FALSE(m_player->GetPosition(perMille, seconds));
    m_player->m_duration = duration;
}

TEST_F(PlayerTest, SeeksNeverGoBeforeOneSecond) {
    ASSERT_TRUE(Play(Media().Both()));
    int out = -1;
    ASSERT_TRUE(m_player->SeekTo(0, out));
    EXPECT_EQ(1, out);
    EXPECT_EQ(2, m_player->m_state);
    // Sooner than playing from the start could get there.
    EXPECT_TRUE(PollFor(500, [&] { return PositionSeconds() >= 1.0; }));
    // Dragging pauses, seeks, and runs again when let go.
    ASSERT_TRUE(m_player->SeekDrag(TRUE, 500, out));
    EXPECT_EQ(1, m_player->m_state);
    EXPECT_EQ(static_cast<int>(m_player->m_duration / 2 / 10000000), out);
    ASSERT_TRUE(m_player->SeekDrag(FALSE, 0, out));
    EXPECT_EQ(1, out);
    EXPECT_EQ(2, m_player->m_state);
    // Letting go while running does nothing more.
    EXPECT_TRUE(m_player->SeekDrag(FALSE, 900, out));
    EXPECT_EQ(2, m_player->m_state);
}

TEST_F(PlayerTest, MuteKeepsTheVolumeAside) {
    ASSERT_TRUE(Play(Media().Audio()));
    EXPECT_TRUE(m_player->SetVolume(30));
    EXPECT_EQ(30, m_player->m_volume);
    EXPECT_EQ(CMediaPlayer::PercentToVolume(30), GraphVolume());
    m_player->ToggleMute();
    EXPECT_TRUE(m_player->m_bMuted);
    EXPECT_EQ(-10000, GraphVolume());
    EXPECT_FALSE(m_player->SetVolume(80));
    int out = -1;
    EXPECT_FALSE(m_player->StepVolume(TRUE, out));
    EXPECT_EQ(30, m_player->m_volume);
    m_player->ToggleMute();
    EXPECT_FALSE(m_player->m_bMuted);
    EXPECT_EQ(CMediaPlayer::PercentToVolume(30), GraphVolume());
    EXPECT_TRUE(m_player->StepVolume(TRUE, out));
    EXPECT_EQ(34, out);
    EXPECT_TRUE(m_player->StepVolume(FALSE, out));
    EXPECT_TRUE(m_player->StepVolume(FALSE, out));
    EXPECT_EQ(26, out);
    EXPECT_TRUE(m_player->SetVolume(130));
    EXPECT_EQ(100, m_player->m_volume);
    EXPECT_TRUE(m_player->StepVolume(TRUE, out));
    EXPECT_EQ(100, out);
    // At zero the graph already says -10000, so mute takes the restoring way.
    EXPECT_TRUE(m_player->SetVolume(0));
    m_player->ToggleMute();
    EXPECT_FALSE(m_player->m_bMuted);
    // Neither the volume nor mute outlives the medium.
    m_player->SetVolume(20);
    m_player->ToggleMute();
    ASSERT_TRUE(Play(Media().Audio())) << FirstBox();
    EXPECT_FALSE(m_player->m_bMuted);
    EXPECT_EQ(50, m_player->m_volume);
    EXPECT_EQ(-1505, GraphVolume());
}

TEST_F(PlayerTest, PictureKeepsItsProportions) {
    ASSERT_TRUE(Play(Media().Video()));
    LONG l, t, w, h;
    // Exactly the fit: unchanged.
    EXPECT_TRUE(m_player->SetVideoRect(RECT{10, 20, 10 + 400, 20 + 300}));
    m_player->m_pVideoWindow->GetWindowPosition(&l, &t, &w, &h);
    EXPECT_EQ((std::vector<LONG>{10, 20, 400, 300}), (std::vector<LONG>{l, t, w, h}));
    // Too tall: top and bottom shrink.
    EXPECT_TRUE(m_player->SetVideoRect(RECT{0, 0, 400, 500}));
    m_player->m_pVideoWindow->GetWindowPosition(&l, &t, &w, &h);
    EXPECT_EQ((std::vector<LONG>{0, 100, 400, 300}), (std::vector<LONG>{l, t, w, h}));
    // Empty: refused without a word.
    EXPECT_FALSE(m_player->SetVideoRect(RECT{0, 0, 0, 100}));
    EXPECT_TRUE(m_boxes.Texts().empty());
    m_player->ShowVideo(TRUE);
    LONG visible = 1;
    m_player->m_pVideoWindow->get_Visible(&visible);
    EXPECT_EQ(OAFALSE, visible);
    m_player->ShowVideo(FALSE);
    m_player->m_pVideoWindow->get_Visible(&visible);
    EXPECT_EQ(OATRUE, visible);
    // A medium without a picture leaves none of the old one behind.
    ASSERT_TRUE(Play(Media().Audio()));
    EXPECT_EQ(nullptr, m_player->m_pVideoWindow);
    EXPECT_EQ(2, m_player->m_state);
}
