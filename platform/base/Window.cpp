#include "platform/base/Window.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <unordered_map>

namespace {

struct QueuedMessage {
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

class CQueueDispatcher : public IMessageDispatcher {
public:
    void Post(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) override {
        {
            std::lock_guard<std::mutex> lock(m_lock);
            m_queue.push_back({hwnd, message, wParam, lParam});
        }
        m_ready.notify_all();
    }

    int Pump(DWORD waitMilliseconds) {
        std::deque<QueuedMessage> batch;
        {
            std::unique_lock<std::mutex> lock(m_lock);
            if (m_queue.empty() && waitMilliseconds > 0) {
                m_ready.wait_for(lock, std::chrono::milliseconds(waitMilliseconds),
                                 [this] { return !m_queue.empty(); });
            }
            batch.swap(m_queue);
        }
        for (const QueuedMessage& m : batch)
            DeliverWindowMessage(m.hwnd, m.message, m.wParam, m.lParam);
        return static_cast<int>(batch.size());
    }

private:
    std::mutex m_lock;
    std::condition_variable m_ready;
    std::deque<QueuedMessage> m_queue;
};

struct Registry {
    std::mutex lock;
    std::unordered_map<HWND, CMessageTarget*> targets;
    uintptr_t nextHandle = 0x100;
    CQueueDispatcher queue;
    IMessageDispatcher* dispatcher = nullptr;
};

Registry& TheRegistry() {
    static Registry* registry = new Registry; // lives until exit: workers may post late
    return *registry;
}

CMessageTarget* Lookup(HWND hwnd) {
    Registry& r = TheRegistry();
    std::lock_guard<std::mutex> lock(r.lock);
    auto it = r.targets.find(hwnd);
    return it == r.targets.end() ? nullptr : it->second;
}

} // namespace

CMessageTarget::CMessageTarget() {
    Registry& r = TheRegistry();
    std::lock_guard<std::mutex> lock(r.lock);
    r.nextHandle += 4;
    m_hwnd = reinterpret_cast<HWND>(r.nextHandle);
    r.targets[m_hwnd] = this;
}

CMessageTarget::~CMessageTarget() {
    Registry& r = TheRegistry();
    std::lock_guard<std::mutex> lock(r.lock);
    r.targets.erase(m_hwnd);
}

IMessageDispatcher* SetMessageDispatcher(IMessageDispatcher* dispatcher) {
    Registry& r = TheRegistry();
    std::lock_guard<std::mutex> lock(r.lock);
    IMessageDispatcher* previous = r.dispatcher;
    r.dispatcher = dispatcher;
    return previous;
}

BOOL IsWindow(HWND hwnd) {
    return hwnd && Lookup(hwnd) ? TRUE : FALSE;
}

BOOL PostMessageW(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    Registry& r = TheRegistry();
    IMessageDispatcher* dispatcher;
    {
        std::lock_guard<std::mutex> lock(r.lock);
        if (!hwnd || r.targets.find(hwnd) == r.targets.end())
            return FALSE;
        dispatcher = r.dispatcher ? r.dispatcher : &r.queue;
    }
    dispatcher->Post(hwnd, message, wParam, lParam);
    return TRUE;
}

LRESULT SendMessageW(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    CMessageTarget* target = hwnd ? Lookup(hwnd) : nullptr;
    return target ? target->OnWindowMessage(message, wParam, lParam) : 0;
}

void DeliverWindowMessage(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    if (CMessageTarget* target = Lookup(hwnd))
        target->OnWindowMessage(message, wParam, lParam);
}

int PumpMessages(DWORD waitMilliseconds) {
    return TheRegistry().queue.Pump(waitMilliseconds);
}
