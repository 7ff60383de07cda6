#include "platform/base/MessageBox.h"

#include <cstdio>
#include <mutex>

const char16_t* const kAppTitle = u"Orvex";

namespace {

std::mutex g_hookLock;
MessageBoxHook g_hook;

} // namespace

int DefaultMessageBoxAnswer(UINT type) {
    switch (type & MB_TYPEMASK) {
    case MB_YESNO:
    case MB_YESNOCANCEL:
        return IDYES;
    default:
        return IDOK;
    }
}

MessageBoxHook SetMessageBoxHook(MessageBoxHook hook) {
    std::lock_guard<std::mutex> lock(g_hookLock);
    MessageBoxHook previous = std::move(g_hook);
    g_hook = std::move(hook);
    return previous;
}

int MessageBoxW(HWND owner, const CString& text, const CString& caption, UINT type) {
    MessageBoxHook hook;
    {
        std::lock_guard<std::mutex> lock(g_hookLock);
        hook = g_hook;
    }
    MessageBoxRequest request{owner, text, caption, type};
    if (hook)
        return hook(request);
    fprintf(stderr, "%s: %s\n", caption.ToUtf8().c_str(), text.ToUtf8().c_str());
    return DefaultMessageBoxAnswer(type);
}

int AfxMessageBox(const CString& text, UINT type) {
    return MessageBoxW(nullptr, text, CString(kAppTitle), type);
}
