// A blocking transfer run on a worker for a window that watches it: the
// counts it reports, its limit, and a cancel that stops it part way.
#include <chrono>
#include <thread>

#include "net/TransferWorker.h"
#include "tests/net/CurlinetTestFixture.h"

using TransferWorkerTest = CurlinetTest;

namespace {

// Polls until `done` holds or the time is up.
template <typename Condition>
bool WaitFor(Condition done, int timeoutMs) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    while (!done()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

} // namespace

TEST_F(TransferWorkerTest, ReportsTheBytesAndKeepsTheLimit) {
    const std::string body = Pattern(30000);
    m_server.Route("/list.pls", body);
    m_server.Route("/big.pls", Pattern(120000));
    CTransferWorker worker;
    worker.Start(U(m_server.Url("/list.pls")), Target(), 102400);
    EXPECT_TRUE(worker.Wait());
    EXPECT_TRUE(worker.IsDone());
    EXPECT_EQ(worker.Received(), body.size());
    EXPECT_EQ(worker.Total(), body.size());
    EXPECT_EQ(TargetBytes(), body);
    EXPECT_TRUE(m_boxes.Texts().empty());

    CTransferWorker big;
    big.Start(U(m_server.Url("/big.pls")), Target(), 102400);
    EXPECT_FALSE(big.Wait());
    EXPECT_FALSE(big.WasCancelled());
    EXPECT_EQ(m_boxes.Texts(),
              std::vector<CString>{u"Cancelling download - maximum file size exceeded."});
    EXPECT_LE(TargetBytes().size(), 102400u);
}

TEST_F(TransferWorkerTest, ACancelStopsItPartWay) {
    const std::string body = Pattern(60000);
    m_server.Trickle("/slow.m3u", body, 1000, 50);
    CTransferWorker worker;
    worker.Start(U(m_server.Url("/slow.m3u")), Target(), 102400);
    ASSERT_TRUE(WaitFor([&] { return worker.Received() > 0; }, 10000));
    worker.Cancel();
    EXPECT_FALSE(worker.Wait());
    EXPECT_TRUE(worker.WasCancelled());
    EXPECT_EQ(worker.Error(), CString(u"Download canceled by user."));
    EXPECT_LT(TargetBytes().size(), body.size());
    EXPECT_EQ(TargetBytes(), body.substr(0, TargetBytes().size()));
}
