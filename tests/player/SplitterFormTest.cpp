// The splitter behind another filter: a byte stream comes in on its input
// pin, and the streams inside appear as output pins once that connection is
// made, ready for the decoders; a stream that holds nothing playable fails
// the connection and leaves the graph as it was.
#include "tests/player/PlayerTestSupport.h"

namespace {

// An upstream filter of the kind the graph is built from: a file's bytes on
// a pin named "Output", held back until that pin is linked, and described by
// the caps given, if any.
class CByteStreamSource : public CGstFilter {
public:
    explicit CByteStreamSource(const std::string& path, const char* caps = nullptr)
        : CGstFilter("bytestreamsource") {
        GstElement* source = gst_element_factory_make("filesrc", nullptr);
        g_object_set(source, "location", path.c_str(), nullptr);
        gst_bin_add(GST_BIN(m_bin), source);
        if (caps) {
            GstElement* filter = gst_element_factory_make("capsfilter", nullptr);
            GstCaps* stated = gst_caps_from_string(caps);
            g_object_set(filter, "caps", stated, nullptr);
            gst_caps_unref(stated);
            gst_bin_add(GST_BIN(m_bin), filter);
            gst_element_link(source, filter);
            source = filter;
        }
        m_pad = gst_element_get_static_pad(source, "src");
        m_hold =
            gst_pad_add_probe(m_pad, GST_PAD_PROBE_TYPE_BLOCK_DOWNSTREAM, Hold, nullptr, nullptr);
        GstPad* ghost = gst_ghost_pad_new("Output", m_pad);
        g_signal_connect(ghost, "linked", G_CALLBACK(OnLinked), this);
        AddPin(u"Output", PINDIR_OUTPUT, ghost, MEDIATYPE_Stream);
    }
    ~CByteStreamSource() override {
        gst_element_set_state(m_bin, GST_STATE_NULL);
        gst_object_unref(m_pad);
    }

private:
    static GstPadProbeReturn Hold(GstPad*, GstPadProbeInfo*, gpointer) { return GST_PAD_PROBE_OK; }
    static void OnLinked(GstPad*, GstPad*, gpointer data) {
        auto* self = static_cast<CByteStreamSource*>(data);
        if (gulong hold = self->m_hold.exchange(0))
            gst_pad_remove_probe(self->m_pad, hold);
    }

    GstPad* m_pad;
    std::atomic<gulong> m_hold;
};

std::vector<std::string> PinNames(IBaseFilter* filter) {
    std::vector<std::string> names;
    IEnumPins* pins = nullptr;
    if (FAILED(filter->EnumPins(&pins)))
        return names;
    IPin* pin = nullptr;
    ULONG got = 0;
    while (pins->Next(1, &pin, &got) == S_OK) {
        char16_t id[64];
        pin->QueryId(id, 64);
        std::u16string wide(id);
        names.emplace_back(wide.begin(), wide.end());
        pin->Release();
    }
    pins->Release();
    return names;
}

class SplitterFormTest : public ::testing::Test {
protected:
    SplitterFormTest() {
        SetGraphAudioSink("fakesink sync=true");
        SetGraphVideoSink("fakesink sync=true");
        EXPECT_EQ(S_OK, CoCreateInstance(CLSID_FilterGraph, nullptr, CLSCTX_INPROC_SERVER,
                                         IID_IGraphBuilder, reinterpret_cast<void**>(&m_graph)));
    }
    ~SplitterFormTest() override {
        for (IBaseFilter* f : {m_upstream, m_splitter, m_decoder}) {
            if (f) {
                m_graph->RemoveFilter(f);
                f->Release();
            }
        }
        EXPECT_EQ(0u, m_graph->Release());
    }

    static CString Module(const char* name) { return CString(StagedStartDir() + "/LAV/" + name); }

    // The upstream filter and the splitter form in the graph, as the CD
    // graph puts them, and the one connection between them.
    HRESULT ConnectSplitter(const std::string& path, const char* caps = nullptr) {
        m_upstream = new CByteStreamSource(path, caps);
        EXPECT_EQ(S_OK, m_graph->AddFilter(m_upstream, u"Byte Stream"));
        EXPECT_EQ(S_OK, m_player.CreateObjectFromPath(Module("LAVSplitter_1.ax"), CLSID_LAVSplitter,
                                                      &m_splitter));
        if (!m_splitter)
            return E_FAIL;
        ILAVFSettings* settings = nullptr;
        EXPECT_EQ(S_OK, m_splitter->QueryInterface(IID_ILAVFSettings,
                                                   reinterpret_cast<void**>(&settings)));
        if (settings) {
            EXPECT_EQ(S_OK, settings->SetRuntimeConfig(TRUE));
            settings->Release();
        }
        EXPECT_EQ(S_OK, m_graph->AddFilter(m_splitter, u"LAV Splitter Source"));
        IPin* out = nullptr;
        IPin* in = nullptr;
        EXPECT_EQ(S_OK, m_upstream->FindPin(u"Output", &out));
        EXPECT_EQ(S_OK, CMediaPlayer::GetPin(m_splitter, PINDIR_INPUT, MEDIATYPE_Stream, &in));
        HRESULT hr = out && in ? out->Connect(in, nullptr) : E_FAIL;
        SafeRelease(out);
        SafeRelease(in);
        return hr;
    }

    // The audio output through the audio decoder into the renderer, run to
    // its end.
    void PlayAudioToEnd() {
        ASSERT_EQ(S_OK, m_player.CreateObjectFromPath(Module("LAVAudio_1.ax"), CLSID_LAVAudio,
                                                      &m_decoder));
        ASSERT_EQ(S_OK, m_graph->AddFilter(m_decoder, u"LAV Audio Decoder"));
        IPin* out = nullptr;
        IPin* in = nullptr;
        ASSERT_EQ(S_OK, CMediaPlayer::GetPin(m_splitter, PINDIR_OUTPUT, MEDIATYPE_Audio, &out));
        ASSERT_EQ(S_OK, CMediaPlayer::GetPin(m_decoder, PINDIR_INPUT, MEDIATYPE_Audio, &in));
        EXPECT_EQ(S_OK, out->Connect(in, nullptr));
        out->Release();
        in->Release();
        ASSERT_EQ(S_OK, CMediaPlayer::GetPin(m_decoder, PINDIR_OUTPUT, MEDIATYPE_Audio, &out));
        EXPECT_EQ(S_OK, m_graph->Render(out));
        out->Release();

        IMediaControl* control = nullptr;
        IMediaEventEx* events = nullptr;
        ASSERT_EQ(S_OK,
                  m_graph->QueryInterface(IID_IMediaControl, reinterpret_cast<void**>(&control)));
        ASSERT_EQ(S_OK,
                  m_graph->QueryInterface(IID_IMediaEventEx, reinterpret_cast<void**>(&events)));
        EXPECT_TRUE(SUCCEEDED(control->Run()));
        LONG code = 0;
        EXPECT_EQ(S_OK, events->WaitForCompletion(10000, &code));
        EXPECT_EQ(EC_COMPLETE, code);
        control->Stop();
        events->Release();
        control->Release();
    }

    // Whether the graph has queued any event.
    bool HasEvents() {
        IMediaEventEx* events = nullptr;
        if (FAILED(m_graph->QueryInterface(IID_IMediaEventEx, reinterpret_cast<void**>(&events))))
            return false;
        LONG code = 0;
        LONG_PTR p1 = 0, p2 = 0;
        bool any = events->GetEvent(&code, &p1, &p2, 0) == S_OK;
        events->Release();
        return any;
    }

    CMediaPlayer m_player;
    IGraphBuilder* m_graph = nullptr;
    IBaseFilter* m_upstream = nullptr;
    IBaseFilter* m_splitter = nullptr;
    IBaseFilter* m_decoder = nullptr;
};

} // namespace

TEST_F(SplitterFormTest, BeforeItsInputIsConnectedOnlyTheInputPinIsThere) {
    ASSERT_EQ(S_OK, m_player.CreateObjectFromPath(Module("LAVSplitter_1.ax"), CLSID_LAVSplitter,
                                                  &m_splitter));
    EXPECT_EQ(std::vector<std::string>{"Input"}, PinNames(m_splitter));
    IPin* pin = nullptr;
    EXPECT_EQ(E_FAIL, CMediaPlayer::GetPin(m_splitter, PINDIR_OUTPUT, MEDIATYPE_Audio, &pin));
    IFileSourceFilter* source = nullptr;
    EXPECT_EQ(E_NOINTERFACE,
              m_splitter->QueryInterface(IID_IFileSourceFilter, reinterpret_cast<void**>(&source)));
    // Out of a graph there is nothing to take the bytes from.
    CByteStreamSource* upstream = new CByteStreamSource(TestMedia::Get().Audio());
    IPin* out = nullptr;
    ASSERT_EQ(S_OK, upstream->FindPin(u"Output", &out));
    ASSERT_EQ(S_OK, CMediaPlayer::GetPin(m_splitter, PINDIR_INPUT, MEDIATYPE_Stream, &pin));
    AM_MEDIA_TYPE* mt = NewMediaType(nullptr, MEDIATYPE_Stream);
    EXPECT_EQ(VFW_E_NOT_IN_GRAPH, pin->ReceiveConnection(out, mt));
    DeleteMediaType(mt);
    EXPECT_EQ(std::vector<std::string>{"Input"}, PinNames(m_splitter));
    pin->Release();
    out->Release();
    upstream->Release();
}

TEST_F(SplitterFormTest, WaveBytesGiveAnAudioPinThatPlaysToTheEnd) {
    TempDir dir;
    std::string wave = dir / "track.wav";
    ASSERT_TRUE(EncodeMedia("audiotestsrc num-buffers=43 samplesperbuffer=1024 ! "
                            "audio/x-raw,format=S16LE,rate=44100,channels=2 ! wavenc ! "
                            "filesink location=" +
                            wave));
    // The upstream pin says what it carries, as a disc's source does: a
    // container type, which the input takes as a byte stream.
    ASSERT_EQ(S_OK, ConnectSplitter(wave, "audio/x-wav"));
    EXPECT_EQ((std::vector<std::string>{"Input", "Audio"}), PinNames(m_splitter));
    IPin* audio = nullptr;
    ASSERT_EQ(S_OK, CMediaPlayer::GetPin(m_splitter, PINDIR_OUTPUT, MEDIATYPE_Audio, &audio));
    GstCaps* caps = gst_caps_from_string(OfferedCaps(audio).c_str());
    audio->Release();
    ASSERT_NE(nullptr, caps);
    GstCaps* expected =
        gst_caps_from_string("audio/x-raw,format=S16LE,rate=44100,channels=2,layout=interleaved");
    EXPECT_TRUE(gst_caps_is_subset(caps, expected)) << gst_caps_to_string(caps);
    gst_caps_unref(expected);
    gst_caps_unref(caps);
    // The connection is the upstream filter's as well.
    IPin* in = nullptr;
    ASSERT_EQ(S_OK, CMediaPlayer::GetPin(m_splitter, PINDIR_INPUT, MEDIATYPE_Stream, &in));
    IGstPin* gstIn = nullptr;
    ASSERT_EQ(S_OK, in->QueryInterface(IID_IGstPin, reinterpret_cast<void**>(&gstIn)));
    EXPECT_TRUE(gst_pad_is_linked(gstIn->GetPad()));
    gstIn->Release();
    // The streams are looked for once.
    IPin* out = nullptr;
    ASSERT_EQ(S_OK, m_upstream->FindPin(u"Output", &out));
    EXPECT_EQ(VFW_E_ALREADY_CONNECTED, out->Connect(in, nullptr));
    out->Release();
    in->Release();
    PlayAudioToEnd();
}

TEST_F(SplitterFormTest, OggBytesGiveACompressedAudioPinForTheDecoder) {
    ASSERT_EQ(S_OK, ConnectSplitter(TestMedia::Get().Audio()));
    EXPECT_EQ((std::vector<std::string>{"Input", "Audio"}), PinNames(m_splitter));
    IPin* audio = nullptr;
    ASSERT_EQ(S_OK, CMediaPlayer::GetPin(m_splitter, PINDIR_OUTPUT, MEDIATYPE_Audio, &audio));
    EXPECT_EQ(0u, OfferedCaps(audio).rfind("audio/x-vorbis", 0)) << OfferedCaps(audio);
    audio->Release();
    PlayAudioToEnd();
}

TEST_F(SplitterFormTest, BytesWithNothingPlayableFailTheConnectionQuietly) {
    TempDir dir;
    std::string empty = dir / "empty.cda";
    TempDir::Write(empty, "");
    // More noise than the type search ever looks at.
    std::string noise = dir / "noise.cda";
    std::string bytes(1 << 20, '\0');
    uint32_t state = 12345;
    for (char& c : bytes) {
        state = state * 1664525u + 1013904223u;
        c = static_cast<char>(state >> 24);
    }
    TempDir::Write(noise, bytes);
    for (const std::string& path : {TestMedia::Get().Corrupt(), empty, noise}) {
        SCOPED_TRACE(path);
        auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(VFW_E_UNKNOWN_FILE_TYPE, ConnectSplitter(path));
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
        // No output pin, no connection left behind, no aborted playback
        // announced by the graph.
        EXPECT_EQ(std::vector<std::string>{"Input"}, PinNames(m_splitter));
        IPin* out = nullptr;
        ASSERT_EQ(S_OK, m_upstream->FindPin(u"Output", &out));
        IGstPin* gstOut = nullptr;
        ASSERT_EQ(S_OK, out->QueryInterface(IID_IGstPin, reinterpret_cast<void**>(&gstOut)));
        EXPECT_FALSE(gst_pad_is_linked(gstOut->GetPad()));
        gstOut->Release();
        out->Release();
        EXPECT_FALSE(HasEvents());
        for (IBaseFilter** f : {&m_upstream, &m_splitter}) {
            EXPECT_EQ(S_OK, m_graph->RemoveFilter(*f));
            SafeRelease(*f);
        }
    }
}
