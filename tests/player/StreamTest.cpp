// Streams given by URL take the same road as files, through the splitter
// source, from servers on this machine.
#include <algorithm>
#include <filesystem>

#include "tests/player/PlayerTestSupport.h"
#include "tests/support/TestHttpServer.h"
#include "tests/support/TestRtspServer.h"

TEST_F(PlayerTest, HttpStreamPlaysSeeksAndEnds) {
    TestHttpServer server;
    server.Route("/both.mkv", TempDir::Read(Media().Both()));
    std::string missing = server.Url("/missing.ogg");
    EXPECT_FALSE(Play(missing));
    EXPECT_EQ(std::vector<CString>{CString("File Source Error - could not open " + missing + ".")},
              m_boxes.Texts());
    m_boxes.Clear();

    // The scheme is recognised without regard to case; the URL is loaded as given.
    std::string url = server.Url("/both.mkv");
    ASSERT_TRUE(Play("HTTP" + url.substr(4))) << FirstBox();
    EXPECT_TRUE(m_player->m_bStream);
    EXPECT_EQ(2, m_player->m_state);
    EXPECT_NE(nullptr, m_player->m_pLavVid);
    EXPECT_NE(nullptr, m_player->m_pBasicAudio);
    int out = -1;
    EXPECT_TRUE(m_player->SeekTo(600, out));
    EXPECT_EQ(1, out);
    EXPECT_TRUE(PumpUntilStopped(20));
    EXPECT_EQ(0, m_player->m_state);
    EXPECT_TRUE(m_boxes.Texts().empty());
}

TEST_F(PlayerTest, StreamThatRunsDryPausesUntilItHasRefilled) {
    TestHttpServer server;
    // Too slow to fill the buffer before the end.
    server.Trickle("/two-audio.mkv", TempDir::Read(Media().TwoAudio()), 1024, 100);
    ASSERT_TRUE(Play(server.Url("/two-audio.mkv"))) << FirstBox();
    // The graph holds the pipeline while the buffer fills; to the engine it
    // is running all the while.
    EXPECT_TRUE(PollFor(10000, [&] { return PipelineState() == GST_STATE_PAUSED; }));
    EXPECT_EQ(2, m_player->m_state);
    OAFilterState state = State_Stopped;
    EXPECT_EQ(S_OK, m_player->m_pControl->GetState(0, &state));
    EXPECT_EQ(State_Running, state);
    EXPECT_TRUE(PumpUntilStopped(30));
    EXPECT_TRUE(m_boxes.Texts().empty());
}

TEST_F(PlayerTest, ErrorMidStreamEndsPlaybackWithItsWords) {
    auto server = std::make_unique<TestHttpServer>();
    server->Trickle("/audio.ogg", TempDir::Read(Media().Audio()), 2048, 100);
    ASSERT_TRUE(Play(server->Url("/audio.ogg"))) << FirstBox();
    server.reset(); // gone in the middle of the stream
    EXPECT_TRUE(PumpUntilStopped(20));
    EXPECT_EQ(1, m_frame.m_stops);
    EXPECT_EQ(nullptr, m_player->m_pGraph);
    ASSERT_EQ(1u, m_boxes.Texts().size());
    EXPECT_EQ(0, m_boxes.Texts()[0].Find(u"Playback Error - ")) << FirstBox();
    EXPECT_GT(m_boxes.Texts()[0].GetLength(), 20);
}

TEST_F(PlayerTest, RtspStreamsRunWithinTheStateWait) {
    TestRtspServer server;
    for (const char* scheme : {"rtsp", "rtspt"}) {
        ASSERT_TRUE(Play(server.Url(scheme))) << scheme << ": " << FirstBox();
        EXPECT_TRUE(m_player->m_bStream);
        EXPECT_NE(nullptr, m_player->m_pLavVid);
        EXPECT_NE(nullptr, m_player->m_pLavAud);
        // A live stream has no length, and so no position on the bar; but it plays.
        EXPECT_EQ(0, m_player->m_duration);
        int perMille = 0, seconds = 0;
        EXPECT_FALSE(m_player->GetPosition(perMille, seconds));
        EXPECT_TRUE(PollFor(5000, [&] { return PositionSeconds() > 0.5; })) << scheme;
    }
}

TEST_F(PlayerTest, EveryKindOfStationPlays) {
    TestHttpServer server;
    server.Route("/radio.aac", TempDir::Read(Media().Aac()));
    server.Route("/radio.opus", TempDir::Read(Media().Opus()));
    server.Route("/radio.mp3", TempDir::Read(Media().Mp3Radio()));
    for (const auto& entry : std::filesystem::directory_iterator(Media().HlsFolder()))
        server.Route("/hls/" + entry.path().filename().string(), TempDir::Read(entry.path()));
    // An address that moved to HTTPS: the start directory's certificates,
    // which trust this server's, are the pipeline's too.
    TempDir start;
    server.StageCertificates(start.Path());
    ScopedCurrentDir inStart(start.Path());
    server.Redirect("/moved.mp3", server.HttpsUrl("/radio.mp3"));

    for (const char* path : {"/radio.aac", "/radio.opus", "/moved.mp3", "/hls/playlist.m3u8"}) {
        ASSERT_TRUE(Play(server.Url(path))) << path << ": " << FirstBox();
        EXPECT_NE(nullptr, m_player->m_pBasicAudio) << path;
        EXPECT_TRUE(PollFor(5000, [&] { return PositionSeconds() > 0.5; })) << path;
        m_player->CleanPlayback();
    }
    EXPECT_EQ(1, server.RequestCount("/moved.mp3"));
    const std::vector<TestHttpRequest> requests = server.Requests();
    EXPECT_TRUE(std::any_of(requests.begin(), requests.end(), [](const TestHttpRequest& r) {
        return r.path == "/radio.mp3" && r.tls;
    }));
    EXPECT_GE(server.RequestCount("/hls/segment00001.ts"), 1);
    EXPECT_TRUE(m_boxes.Texts().empty()) << FirstBox();
}
