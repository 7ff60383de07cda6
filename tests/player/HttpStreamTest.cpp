// Streams given by URL take the same road as files, through the splitter
// source, from a server on this machine.
#include <filesystem>

#include "tests/player/PlayerTestSupport.h"
#include "tests/player/RangeHttpServer.h"

TEST_F(PlayerTest, HttpStreamPlaysToItsEnd) {
    RangeHttpServer server(Media().dir.Path().string());
    std::string url = server.Url("audio.ogg");
    // The scheme is recognised without regard to case; the URL is loaded as given.
    std::string upper = "HTTP" + url.substr(4);
    ASSERT_TRUE(Play(upper)) << (m_boxes.Texts().empty() ? "" : m_boxes.Texts()[0].ToUtf8());
    EXPECT_TRUE(m_player->m_bStream);
    EXPECT_EQ(2, m_player->m_state);
    EXPECT_NE(nullptr, m_player->m_pBasicAudio);
    EXPECT_TRUE(PumpUntilStopped(20));
    EXPECT_EQ(0, m_player->m_state);
    EXPECT_GE(server.Requests(), 1);
}

TEST_F(PlayerTest, HttpVideoStreamSeeks) {
    RangeHttpServer server(Media().dir.Path().string());
    ASSERT_TRUE(Play(server.Url("both.mkv")));
    EXPECT_TRUE(m_player->m_bStream);
    EXPECT_NE(nullptr, m_player->m_pLavVid);
    int out = -1;
    EXPECT_TRUE(m_player->SeekTo(600, out));
    EXPECT_EQ(1, out);
}

TEST_F(PlayerTest, HttpUrlThatIsNotThereCannotBeOpened) {
    RangeHttpServer server(Media().dir.Path().string());
    std::string url = server.Url("missing.ogg");
    EXPECT_FALSE(Play(url));
    EXPECT_EQ(std::vector<CString>{CString("File Source Error - could not open " + url + ".")},
              m_boxes.Texts());
}
