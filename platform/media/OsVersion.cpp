#include "platform/media/OsVersion.h"

#include <mutex>

namespace {

std::mutex g_lock;
OsVersionQuery g_query;

} // namespace

BOOL GetVersionExW(OSVERSIONINFOW* info) {
    if (!info)
        return FALSE;
    OsVersionQuery query;
    {
        std::lock_guard<std::mutex> lock(g_lock);
        query = g_query;
    }
    if (query)
        return query(info);
    if (info->dwOSVersionInfoSize != sizeof(OSVERSIONINFOW) &&
        info->dwOSVersionInfoSize != sizeof(OSVERSIONINFOEXW))
        return FALSE;
    info->dwMajorVersion = 10;
    info->dwMinorVersion = 0;
    info->dwBuildNumber = 0;
    info->dwPlatformId = 2;
    return TRUE;
}

void SetOsVersionQuery(OsVersionQuery query) {
    std::lock_guard<std::mutex> lock(g_lock);
    g_query = std::move(query);
}
