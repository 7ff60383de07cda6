#include "platform/base/AppContext.h"

#include <atomic>
#include <mutex>

#include "platform/base/StartDirectory.h"

namespace {

class FallbackContext : public IAppContext {
public:
    CString GetStartDirectory() const override { return FindStartDirectory(); }
    void SetUpdateStatus(const CString& text) override {
        std::lock_guard<std::mutex> lock(m_lock);
        m_text = text;
    }
    BOOL GetUpdateStatus(CString& out) override {
        std::lock_guard<std::mutex> lock(m_lock);
        out = m_text;
        return TRUE;
    }

private:
    std::mutex m_lock;
    CString m_text;
};

std::atomic<IAppContext*> g_context{nullptr};

} // namespace

IAppContext& AfxGetAppContext() {
    static FallbackContext fallback;
    IAppContext* context = g_context.load();
    return context ? *context : fallback;
}

void AfxSetAppContext(IAppContext* context) {
    g_context.store(context);
}
