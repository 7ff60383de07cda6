// The graph service on its own: creation, events announced by a posted
// message, and the answers of an empty or stopped graph.
#include "tests/player/PlayerTestSupport.h"

namespace {

class CCountingWindow : public CMessageTarget {
public:
    int m_notifies = 0;
    LPARAM m_lastParam = 0;
    LRESULT OnWindowMessage(UINT message, WPARAM, LPARAM lParam) override {
        if (message == UM_GRAPH_NOTIFY) {
            ++m_notifies;
            m_lastParam = lParam;
        }
        return 0;
    }
};

} // namespace

TEST(GraphTest, OnlyTheFilterGraphIsMadeBySystemClass) {
    IGraphBuilder* graph = nullptr;
    EXPECT_EQ(REGDB_E_CLASSNOTREG,
              CoCreateInstance(CLSID_LAVVideo, nullptr, CLSCTX_INPROC_SERVER, IID_IGraphBuilder,
                               reinterpret_cast<void**>(&graph)));
    EXPECT_EQ(nullptr, graph);
    ASSERT_EQ(S_OK, CoCreateInstance(CLSID_FilterGraph, nullptr, CLSCTX_INPROC_SERVER,
                                     IID_IGraphBuilder, reinterpret_cast<void**>(&graph)));
    IMediaControl* control = nullptr;
    IMediaEventEx* events = nullptr;
    IBasicAudio* audio = nullptr;
    ASSERT_EQ(S_OK, graph->QueryInterface(IID_IMediaControl, reinterpret_cast<void**>(&control)));
    ASSERT_EQ(S_OK, graph->QueryInterface(IID_IMediaEventEx, reinterpret_cast<void**>(&events)));
    ASSERT_EQ(S_OK, graph->QueryInterface(IID_IBasicAudio, reinterpret_cast<void**>(&audio)));
    // No sound branch yet: no volume to set.
    EXPECT_EQ(E_NOTIMPL, audio->put_Volume(-100));
    LONG code = 7;
    LONG_PTR p1 = 0, p2 = 0;
    EXPECT_EQ(E_ABORT, events->GetEvent(&code, &p1, &p2, 0));
    // A stopped graph never makes its caller wait.
    EXPECT_EQ(VFW_E_WRONG_STATE, events->WaitForCompletion(-1, &code));
    OAFilterState state = State_Running;
    EXPECT_EQ(S_OK, control->GetState(0, &state));
    EXPECT_EQ(State_Stopped, state);
    audio->Release();
    events->Release();
    control->Release();
    EXPECT_EQ(0u, graph->Release());
}

TEST_F(PlayerTest, EndingsAreNeverDroppedAndRepeatsAreCoalesced) {
    ASSERT_TRUE(Play(Media().Audio()));
    // The events are announced to this window, and taken here.
    CCountingWindow window;
    ASSERT_EQ(S_OK, m_player->m_pEvent->SetNotifyWindow(window.GetSafeHwnd(), UM_GRAPH_NOTIFY, 42));
    GstElement* pipeline = Pipeline();
    for (int i = 0; i < 300; ++i) {
        GError* error = g_error_new_literal(GST_STREAM_ERROR, GST_STREAM_ERROR_FAILED,
                                            i == 0 ? "First words." : "Later words.");
        gst_element_post_message(pipeline,
                                 gst_message_new_error(GST_OBJECT(pipeline), error, nullptr));
        g_error_free(error);
    }
    gst_element_post_message(pipeline, gst_message_new_eos(GST_OBJECT(pipeline)));
    std::vector<std::pair<LONG, LONG_PTR>> events;
    LONG code = 0;
    LONG_PTR p1 = 0, p2 = 0;
    while (SUCCEEDED(m_player->m_pEvent->GetEvent(&code, &p1, &p2, 0)))
        events.emplace_back(code, p1);
    EXPECT_EQ(
        (std::vector<std::pair<LONG, LONG_PTR>>{{EC_ERRORABORT, E_FAIL}, {EC_COMPLETE, E_FAIL}}),
        events);
    PumpMessages();
    EXPECT_EQ(2, window.m_notifies);
    EXPECT_EQ(42, window.m_lastParam);
    IGraphErrorText* errors = nullptr;
    ASSERT_EQ(S_OK, m_player->m_pEvent->QueryInterface(IID_IGraphErrorText,
                                                       reinterpret_cast<void**>(&errors)));
    CString text;
    EXPECT_EQ(S_OK, errors->GetErrorText(&text));
    EXPECT_EQ(u"First words.", text);
    errors->Release();
}

TEST_F(PlayerTest, BufferingHoldsTheGraphButNeverAgainstTheUser) {
    ASSERT_TRUE(Play(Media().Audio()));
    GstElement* pipeline = Pipeline();
    auto buffering = [pipeline](int percent) {
        gst_element_post_message(pipeline,
                                 gst_message_new_buffering(GST_OBJECT(pipeline), percent));
    };
    buffering(20);
    EXPECT_TRUE(PollFor(2000, [&] { return PipelineState() == GST_STATE_PAUSED; }));
    OAFilterState state = State_Stopped;
    EXPECT_EQ(S_OK, m_player->m_pControl->GetState(0, &state));
    EXPECT_EQ(State_Running, state);
    buffering(100);
    EXPECT_TRUE(PollFor(2000, [&] { return PipelineState() == GST_STATE_PLAYING; }));

    // The user pauses while the buffer fills: full again, it stays paused.
    buffering(20);
    EXPECT_TRUE(PollFor(2000, [&] { return PipelineState() == GST_STATE_PAUSED; }));
    ASSERT_TRUE(m_player->PauseResume());
    buffering(100);
    EXPECT_FALSE(PollFor(300, [&] { return PipelineState() == GST_STATE_PLAYING; }));
    m_player->m_pControl->GetState(0, &state);
    EXPECT_EQ(State_Paused, state);
    ASSERT_TRUE(m_player->PauseResume());
    EXPECT_TRUE(PollFor(2000, [&] { return PipelineState() == GST_STATE_PLAYING; }));
}
