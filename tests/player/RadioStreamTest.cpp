// Radio streams as stations send them: titles announced in the stream reach
// the frame as the renderers hear them, and a recording takes the received
// bytes unchanged, one file a song, until a write fails.
#include <filesystem>

#include "tests/player/PlayerTestSupport.h"
#include "tests/support/TestHttpServer.h"

namespace {

// A frame that keeps what the engine tells it of the stream.
class CRadioFrame : public CTestFrame {
public:
    std::vector<CString> m_titles;
    std::vector<CString> m_recordingStops;
    void OnStreamTitle(const CString& title) override { m_titles.push_back(title); }
    void OnRecordingStopped(const CString& reason) override { m_recordingStops.push_back(reason); }
};

class RadioTest : public PlayerTest {
protected:
    RadioTest() {
        m_radio.m_player = m_player.get();
        // The songs wait until the test is ready to hear them.
        m_songs = ServeIcyStation(m_server, "/radio", TempDir::Read(Media().Mp3Radio()),
                                  [this] { return m_release.load(); });
    }
    BOOL PlayRadio() { return m_player->PlayFileLav(CString(m_server.Url("/radio")), &m_radio); }
    bool PumpUntilRadioStopped(int seconds) {
        return PollFor(seconds * 1000, [&] { return m_radio.m_stops > 0; });
    }

    CRadioFrame m_radio;
    TestHttpServer m_server;
    std::vector<TestIcySong> m_songs;
    std::atomic<bool> m_release{false};
    TempDir m_recordings;
};

} // namespace

TEST_F(RadioTest, TitlesReachTheFrameAndTheRecordingKeepsEachSongAsSent) {
    ASSERT_TRUE(PlayRadio()) << FirstBox();
    EXPECT_TRUE(m_player->m_bStream);
    EXPECT_EQ(0, m_player->m_duration);
    CString error;
    ASSERT_TRUE(
        m_player->StartRecording(CString(m_recordings / "Radio"), u"Loopback Radio", &error))
        << error.ToUtf8();
    EXPECT_TRUE(m_player->IsRecording());
    m_release = true;
    EXPECT_TRUE(PumpUntilRadioStopped(20));
    EXPECT_EQ((std::vector<CString>{u"Song One", u"Song Two"}), m_radio.m_titles);
    EXPECT_EQ(m_songs[1].bytes, TempDir::Read(m_recordings / "Radio/Song One.mp3"));
    EXPECT_EQ(m_songs[2].bytes, TempDir::Read(m_recordings / "Radio/Song Two.mp3"));
    // What of the lead-in was still to come at the start went into a file
    // named after the station.
    for (const auto& entry : std::filesystem::directory_iterator(m_recordings / "Radio")) {
        std::string name = entry.path().filename().string();
        if (name.rfind("Song ", 0) == 0)
            continue;
        EXPECT_EQ(0u, name.rfind("Loopback Radio 20", 0)) << name;
        std::string part = TempDir::Read(entry.path().string());
        const std::string& leadIn = m_songs[0].bytes;
        EXPECT_TRUE(!part.empty() && part.size() <= leadIn.size() &&
                    leadIn.compare(leadIn.size() - part.size(), part.size(), part) == 0);
    }
    EXPECT_TRUE(m_radio.m_recordingStops.empty());
    EXPECT_TRUE(m_boxes.Texts().empty()) << FirstBox();
}

TEST_F(RadioTest, AWriteErrorStopsTheRecordingAndPlaybackGoesOn) {
    // Files of this process may grow to 10,000 bytes: the first song's file
    // meets the limit as a full disc would.
    {
        ScopedFileSizeLimit limit(10000);
        ASSERT_TRUE(PlayRadio()) << FirstBox();
        CString error;
        ASSERT_TRUE(m_player->StartRecording(m_recordings.Str(), u"Loopback Radio", &error));
        m_release = true;
        EXPECT_TRUE(PollFor(10000, [&] { return !m_radio.m_recordingStops.empty(); }));
    }
    ASSERT_EQ(1u, m_radio.m_recordingStops.size());
    EXPECT_EQ(0, m_radio.m_recordingStops[0].Find(u"Recording stopped: "))
        << m_radio.m_recordingStops[0].ToUtf8();
    EXPECT_GE(m_radio.m_recordingStops[0].Find(u"Song One.mp3"), 0);
    EXPECT_FALSE(m_player->IsRecording());
    EXPECT_EQ(2, m_player->m_state);
    EXPECT_EQ(0, m_radio.m_stops);
}
