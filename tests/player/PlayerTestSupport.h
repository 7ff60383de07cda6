// Shared ground of the engine tests: media encoded at test time, a frame
// that records what the engine asks of it, and a fixture that plays from the
// staged start directory with sinks that need no device.
#pragma once
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "platform/base/UserMessages.h"
#include "platform/media/GraphSettings.h"
#include "platform/media/GstFilter.h"
#include "player/LavSetup.h"
#include "player/MediaPlayer.h"
#include "tests/support/MessageBoxRecorder.h"
#include "tests/support/TempDir.h"

// The staged start directory, with the filter modules in LAV/.
inline std::string StagedStartDir() {
    return getenv("ORVEX_STAGE_DIR");
}

// Runs an encoding pipeline to its end; true when it got there.
inline bool EncodeMedia(const std::string& description) {
    if (!EnsureGstInit())
        return false;
    GError* error = nullptr;
    GstElement* pipeline = gst_parse_launch(description.c_str(), &error);
    if (error) {
        ADD_FAILURE() << error->message;
        g_error_free(error);
    }
    if (!pipeline)
        return false;
    gst_element_set_state(pipeline, GST_STATE_PLAYING);
    GstBus* bus = gst_element_get_bus(pipeline);
    GstMessage* message = gst_bus_timed_pop_filtered(
        bus, 60 * GST_SECOND, static_cast<GstMessageType>(GST_MESSAGE_EOS | GST_MESSAGE_ERROR));
    bool ok = message && GST_MESSAGE_TYPE(message) == GST_MESSAGE_EOS;
    if (message)
        gst_message_unref(message);
    gst_object_unref(bus);
    gst_element_set_state(pipeline, GST_STATE_NULL);
    gst_object_unref(pipeline);
    return ok;
}

// Joins the pipeline library's idle worker threads before the process ends,
// so that nothing is still exiting while the leak checker stops the world.
class PipelineThreadsEnvironment : public ::testing::Environment {
public:
    void TearDown() override {
        gst_task_cleanup_all();
        g_thread_pool_stop_unused_threads();
    }
};
inline ::testing::Environment* const g_pipelineThreads =
    ::testing::AddGlobalTestEnvironment(new PipelineThreadsEnvironment);

// The caps text of the first media type a pin offers; empty when it offers
// none with caps.
inline std::string OfferedCaps(IPin* pin) {
    IEnumMediaTypes* types = nullptr;
    std::string text;
    if (SUCCEEDED(pin->EnumMediaTypes(&types))) {
        AM_MEDIA_TYPE* mt = nullptr;
        ULONG got = 0;
        if (types->Next(1, &mt, &got) == S_OK && mt->cbFormat)
            text = reinterpret_cast<const char*>(mt->pbFormat);
        DeleteMediaType(mt);
        types->Release();
    }
    return text;
}

// The media the tests play, each encoded the first time a test asks for it,
// in a folder that lives as long as the test program.
class TestMedia {
public:
    static TestMedia& Get() {
        static TestMedia media;
        return media;
    }

    const TempDir& Dir() const { return m_dir; }
    // Vorbis in Ogg, 3 s, stereo.
    const std::string& Audio() {
        return Make("audio.ogg", "audiotestsrc num-buffers=129 samplesperbuffer=1024 ! "
                                 "audio/x-raw,rate=44100,channels=2 ! audioconvert ! vorbisenc ! "
                                 "oggmux");
    }
    // H.264 in Matroska, 2 s, 320x240.
    const std::string& Video() { return Make("video.mkv", H264() + "matroskamux"); }
    // H.264 and Vorbis in Matroska, 2 s.
    const std::string& Both() {
        return Make("both.mkv", H264() + "matroskamux name=m",
                    "audiotestsrc num-buffers=86 samplesperbuffer=1024 ! "
                    "audio/x-raw,rate=44100 ! audioconvert ! vorbisenc ! m.");
    }
    // WMA 2 in ASF, 2 s.
    const std::string& Wma() {
        return Make("audio.wma", "audiotestsrc num-buffers=86 samplesperbuffer=1024 ! "
                                 "audio/x-raw,rate=44100,channels=2 ! audioconvert ! "
                                 "avenc_wmav2 ! asfmux");
    }
    // Vorbis in Ogg, 2 s, six channels.
    const std::string& Surround() {
        return Make("surround.ogg", "audiotestsrc num-buffers=86 samplesperbuffer=1024 ! "
                                    "audio/x-raw,rate=44100,channels=6,"
                                    "channel-mask=(bitmask)0x3f ! audioconvert ! vorbisenc ! "
                                    "oggmux");
    }
    // Two Vorbis streams in Matroska, 1 s.
    const std::string& TwoAudio() {
        return Make("two-audio.mkv",
                    "audiotestsrc num-buffers=43 samplesperbuffer=1024 ! audioconvert ! "
                    "vorbisenc ! matroskamux name=m",
                    "audiotestsrc num-buffers=43 samplesperbuffer=1024 wave=square ! "
                    "audioconvert ! vorbisenc ! m.");
    }
    // Plain constant-bitrate MP3, 90 s at 32 kbit/s, with no header that
    // states its length.
    const std::string& Mp3() {
        return Make("cbr.mp3", "audiotestsrc num-buffers=450 samplesperbuffer=4410 ! "
                               "audio/x-raw,rate=22050,channels=1 ! audioconvert ! "
                               "lamemp3enc target=bitrate bitrate=32 cbr=true");
    }
    // Constant-bitrate MP3 as stations send it: 128 kbit/s, 44.1 kHz
    // stereo, 3.5 s.
    const std::string& Mp3Radio() {
        return Make("radio.mp3", "audiotestsrc num-buffers=150 samplesperbuffer=1024 ! "
                                 "audio/x-raw,rate=44100,channels=2 ! audioconvert ! "
                                 "lamemp3enc target=bitrate bitrate=128 cbr=true");
    }
    // AAC in ADTS frames, 2 s, as stations send AAC.
    const std::string& Aac() {
        return Make("radio.aac", "audiotestsrc num-buffers=86 samplesperbuffer=1024 ! "
                                 "audio/x-raw,rate=44100,channels=2 ! audioconvert ! avenc_aac ! "
                                 "aacparse ! audio/mpeg,stream-format=adts");
    }
    // Opus in Ogg, 2 s.
    const std::string& Opus() {
        return Make("radio.opus", "audiotestsrc num-buffers=86 samplesperbuffer=1024 ! "
                                  "audio/x-raw,rate=48000,channels=2 ! audioconvert ! opusenc ! "
                                  "oggmux");
    }
    // An HLS stream: a playlist and three one-second MPEG-TS fragments of
    // H.264 and AAC, in the folder "hls".
    const std::string& HlsFolder() {
        auto [it, fresh] = m_made.emplace("hls", m_dir / "hls");
        if (fresh) {
            std::filesystem::create_directories(it->second);
            EXPECT_TRUE(EncodeMedia(
                "videotestsrc num-buffers=75 ! video/x-raw,width=160,height=120,framerate=25/1 ! "
                "x264enc speed-preset=ultrafast key-int-max=25 ! h264parse ! mpegtsmux name=m ! "
                "hlssink target-duration=1 max-files=0 playlist-length=0 location=" +
                it->second + "/segment%05d.ts playlist-location=" + it->second +
                "/playlist.m3u8 audiotestsrc num-buffers=129 samplesperbuffer=1024 ! "
                "audio/x-raw,rate=44100,channels=2 ! audioconvert ! avenc_aac ! aacparse ! m."));
        }
        return it->second;
    }
    // Bytes that are no medium.
    const std::string& Corrupt() {
        auto [it, fresh] = m_made.emplace("corrupt.mkv", m_dir / "corrupt.mkv");
        if (fresh) {
            std::string junk;
            for (int i = 0; i < 4096; ++i)
                junk += static_cast<char>((i * 7919 + 13) & 0xFF);
            TempDir::Write(it->second, junk);
        }
        return it->second;
    }

private:
    TestMedia() = default;

    static std::string H264() {
        return "videotestsrc num-buffers=50 ! video/x-raw,width=320,height=240,framerate=25/1 ! "
               "x264enc speed-preset=ultrafast key-int-max=10 ! h264parse ! ";
    }
    // Encodes into the named file, once: the pipeline up to the element
    // that writes the file, and the branches that feed a named muxer.
    const std::string& Make(const std::string& name, const std::string& pipeline,
                            const std::string& branches = "") {
        auto [it, fresh] = m_made.emplace(name, m_dir / name);
        if (fresh) {
            EXPECT_TRUE(
                EncodeMedia(pipeline + " ! filesink location=" + it->second + " " + branches))
                << name;
        }
        return it->second;
    }

    TempDir m_dir;
    std::map<std::string, std::string> m_made;
};

// The main window as the engine sees it: records each request and answers
// as told.
class CTestFrame : public CMessageTarget, public IPlayerFrame {
public:
    CMediaPlayer* m_player = nullptr;
    CLavSetup m_lavSetup;
    BOOL m_windowResult = TRUE;
    RECT m_rect{0, 0, 640, 360};
    std::vector<std::string> m_calls;
    int m_stops = 0;
    int m_waitDepth = 0;
    int m_waitCount = 0;

    LRESULT OnWindowMessage(UINT message, WPARAM, LPARAM) override {
        if (message == UM_GRAPH_NOTIFY && m_player)
            m_player->OnGraphEvent(this);
        return 0;
    }
    BOOL SetVideoWindow(BOOL hasVideo, BOOL hasAudio, HWND* hOwner, HWND* hNotify,
                        RECT* rect) override {
        m_calls.push_back("SetVideoWindow(" + std::to_string(hasVideo) + "," +
                          std::to_string(hasAudio) + ")");
        if (!m_windowResult)
            return FALSE;
        *hOwner = GetSafeHwnd();
        *hNotify = GetSafeHwnd();
        *rect = m_rect;
        return TRUE;
    }
    void StopPlayback(BOOL) override {
        ++m_stops;
        if (m_player)
            m_player->CleanPlayback();
    }
    void BeginWaitCursor() override {
        ++m_waitDepth;
        ++m_waitCount;
    }
    void EndWaitCursor() override { --m_waitDepth; }
    const CLavSetup& GetLavSetup() const override { return m_lavSetup; }
};

// Plays from the staged start directory into sinks that need no device.
class PlayerTest : public ::testing::Test {
protected:
    PlayerTest() : m_cwd(StageDir()) {
        SetGraphAudioSink("fakesink sync=true");
        SetGraphVideoSink("fakesink sync=true");
        m_player = std::make_unique<CMediaPlayer>();
        m_frame.m_player = m_player.get();
    }
    ~PlayerTest() override {
        m_player->CleanPlayback();
        PumpMessages();
    }

    static std::string StageDir() { return StagedStartDir(); }
    static TestMedia& Media() { return TestMedia::Get(); }

    // Plays; a failure's messages go to the test's output as well.
    BOOL Play(const std::string& path) {
        size_t before = m_boxes.Texts().size();
        BOOL played = m_player->PlayFileLav(CString(path), &m_frame);
        for (size_t i = before; !played && i < m_boxes.Texts().size(); ++i)
            fprintf(stderr, "message: %s\n", m_boxes.Texts()[i].ToUtf8().c_str());
        return played;
    }
    // The first message shown, for a failure's report.
    std::string FirstBox() const {
        return m_boxes.Texts().empty() ? std::string() : m_boxes.Texts()[0].ToUtf8();
    }

    // Polls until the condition holds or the time is up, delivering posted
    // messages meanwhile; whether it holds.
    template <typename Condition>
    static bool PollFor(int milliseconds, Condition condition) {
        auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
        while (!condition()) {
            if (std::chrono::steady_clock::now() >= end)
                return false;
            PumpMessages(10);
        }
        return true;
    }
    // Whether the frame stopped playback within the time.
    bool PumpUntilStopped(int seconds) {
        return PollFor(seconds * 1000, [&] { return m_frame.m_stops > 0; });
    }
    // The volume the graph's audio branch is set to.
    LONG GraphVolume() const {
        LONG v = 1;
        EXPECT_EQ(S_OK, m_player->m_pBasicAudio->get_Volume(&v));
        return v;
    }

    // The pipeline behind the engine's graph, found through its source.
    GstElement* Pipeline() const {
        IGstFilter* filter = nullptr;
        if (!m_player->m_pLavSrc || FAILED(m_player->m_pLavSrc->QueryInterface(
                                        IID_IGstFilter, reinterpret_cast<void**>(&filter))))
            return nullptr;
        GstElement* pipeline = GST_ELEMENT(GST_OBJECT_PARENT(filter->GetElement()));
        filter->Release();
        return pipeline;
    }
    GstState PipelineState() const {
        GstState state = GST_STATE_VOID_PENDING;
        if (GstElement* pipeline = Pipeline())
            gst_element_get_state(pipeline, &state, nullptr, 0);
        return state;
    }
    // The position the pipeline reports, in seconds; -1 when it has none.
    double PositionSeconds() const {
        LONGLONG now = 0;
        if (!m_player->m_pSeeking || FAILED(m_player->m_pSeeking->GetCurrentPosition(&now)))
            return -1;
        return now / 1e7;
    }

    ScopedCurrentDir m_cwd;
    MessageBoxRecorder m_boxes;
    CTestFrame m_frame;
    std::unique_ptr<CMediaPlayer> m_player;
};
