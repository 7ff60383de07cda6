#include "platform/base/Clipboard.h"

#include <map>
#include <mutex>

UINT RegisterClipboardFormatW(const CString& name) {
    static std::mutex lock;
    static std::map<CString, UINT> formats;
    std::lock_guard<std::mutex> guard(lock);
    auto it = formats.find(name);
    if (it != formats.end())
        return it->second;
    UINT number = 0xC000 + static_cast<UINT>(formats.size());
    formats.emplace(name, number);
    return number;
}

CString ClipboardFormatMimeType(const CString& name) {
    CString lower(name);
    lower.MakeLower();
    return CString(u"application/x-orvex-") + lower;
}
