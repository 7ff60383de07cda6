#include "platform/base/ComponentServices.h"

#include <mutex>
#include <vector>

namespace {

struct Services {
    std::mutex lock;
    std::vector<std::function<bool()>> pending;
};

Services& TheServices() {
    static Services services;
    return services;
}

} // namespace

void RegisterComponentService(std::function<bool()> start) {
    Services& s = TheServices();
    std::lock_guard<std::mutex> lock(s.lock);
    s.pending.push_back(std::move(start));
}

BOOL AfxOleInit() {
    Services& s = TheServices();
    std::lock_guard<std::mutex> lock(s.lock);
    while (!s.pending.empty()) {
        if (!s.pending.front()())
            return FALSE;
        s.pending.erase(s.pending.begin());
    }
    return TRUE;
}
