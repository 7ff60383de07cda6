#include "ui/WindowHandles.h"

#include <mutex>
#include <unordered_map>

#include <QWidget>

namespace {

struct HandleEntry {
    QWidget* widget = nullptr;
    uintptr_t native = 0;
};

struct HandleTable {
    std::mutex lock;
    std::unordered_map<HWND, HandleEntry> entries;
};

HandleTable& Table() {
    static HandleTable table;
    return table;
}

} // namespace

CWndTarget::CWndTarget(QWidget* widget) {
    std::lock_guard<std::mutex> lock(Table().lock);
    Table().entries[GetSafeHwnd()].widget = widget;
}

CWndTarget::~CWndTarget() {
    std::lock_guard<std::mutex> lock(Table().lock);
    Table().entries.erase(GetSafeHwnd());
}

void CWndTarget::PublishNativeWindow(uintptr_t window) {
    std::lock_guard<std::mutex> lock(Table().lock);
    Table().entries[GetSafeHwnd()].native = window;
}

QWidget* WidgetFromHwnd(HWND hwnd) {
    std::lock_guard<std::mutex> lock(Table().lock);
    auto it = Table().entries.find(hwnd);
    return it == Table().entries.end() ? nullptr : it->second.widget;
}

uintptr_t NativeWindowFromHwnd(HWND hwnd) {
    std::lock_guard<std::mutex> lock(Table().lock);
    auto it = Table().entries.find(hwnd);
    return it == Table().entries.end() ? 0 : it->second.native;
}

void SetFocus(HWND hwnd) {
    if (QWidget* widget = WidgetFromHwnd(hwnd))
        widget->setFocus(Qt::OtherFocusReason);
}
