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

TEST_F(PlayerTest, EndOfStreamIsAnnouncedAndQueued) {
    CCountingWindow window;
    ASSERT_TRUE(Play(Media().audio));
    // Take the events over from the frame.
    ASSERT_EQ(S_OK, m_player->m_pEvent->SetNotifyWindow(window.GetSafeHwnd(), UM_GRAPH_NOTIFY, 42));
    LONG code = 0;
    EXPECT_EQ(S_OK, m_player->m_pEvent->WaitForCompletion(10000, &code));
    EXPECT_EQ(EC_COMPLETE, code);
    PumpMessages(1000);
    EXPECT_EQ(1, window.m_notifies);
    EXPECT_EQ(42, window.m_lastParam);
    LONG_PTR p1 = 0, p2 = 0;
    ASSERT_EQ(S_OK, m_player->m_pEvent->GetEvent(&code, &p1, &p2, 0));
    EXPECT_EQ(EC_COMPLETE, code);
    EXPECT_EQ(E_ABORT, m_player->m_pEvent->GetEvent(&code, &p1, &p2, 0));
}
