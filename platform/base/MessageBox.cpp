#include "platform/base/MessageBox.h"

#include <cstdio>

#include "platform/base/HookSlot.h"

const char16_t* const kAppTitle = u"Orvex";

namespace {

CHookSlot<MessageBoxHook> g_hook;

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
    return g_hook.Swap(std::move(hook));
}

int MessageBoxW(HWND owner, const CString& text, const CString& caption, UINT type) {
    const MessageBoxHook hook = g_hook.Get();
    MessageBoxRequest request{owner, text, caption, type};
    if (hook)
        return hook(request);
    fprintf(stderr, "%s: %s\n", caption.ToUtf8().c_str(), text.ToUtf8().c_str());
    return DefaultMessageBoxAnswer(type);
}

int AfxMessageBox(const CString& text, UINT type) {
    return MessageBoxW(nullptr, text, CString(kAppTitle), type);
}
