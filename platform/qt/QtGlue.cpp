#include "platform/qt/QtGlue.h"

#include <algorithm>
#include <cstring>

#include <QApplication>
#include <QDesktopServices>
#include <QEvent>
#include <QFontInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QThread>
#include <QUrl>

#include "platform/base/HelpViewer.h"
#include "platform/base/MessageBox.h"
#include "platform/base/WaitCursor.h"
#include "platform/base/Window.h"

namespace {

const QEvent::Type kWindowMessageEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

class WindowMessageEvent : public QEvent {
public:
    WindowMessageEvent(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
        : QEvent(kWindowMessageEvent), m_hwnd(hwnd), m_message(message), m_wParam(wParam),
          m_lParam(lParam) {}
    HWND m_hwnd;
    UINT m_message;
    WPARAM m_wParam;
    LPARAM m_lParam;
};

// Lives on the user interface thread; every posted message is delivered from
// its event handler, so targets are always called on that thread.
class MessagePump : public QObject, public IMessageDispatcher {
public:
    void Post(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) override {
        QCoreApplication::postEvent(this, new WindowMessageEvent(hwnd, message, wParam, lParam));
    }

    bool event(QEvent* e) override {
        if (e->type() != kWindowMessageEvent)
            return QObject::event(e);
        auto* m = static_cast<WindowMessageEvent*>(e);
        DeliverWindowMessage(m->m_hwnd, m->m_message, m->m_wParam, m->m_lParam);
        return true;
    }
};

int ShowQtMessageBox(const MessageBoxRequest& request) {
    QMessageBox box;
    box.setWindowTitle(ToQString(request.caption));
    box.setText(ToQString(request.text));
    switch (request.type & MB_ICONMASK) {
    case MB_ICONERROR:
        box.setIcon(QMessageBox::Critical);
        break;
    case MB_ICONQUESTION:
        box.setIcon(QMessageBox::Question);
        break;
    case MB_ICONEXCLAMATION:
        box.setIcon(QMessageBox::Warning);
        break;
    case MB_ICONINFORMATION:
        box.setIcon(QMessageBox::Information);
        break;
    default:
        box.setIcon(QMessageBox::NoIcon);
        break;
    }
    switch (request.type & MB_TYPEMASK) {
    case MB_YESNO:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        break;
    case MB_YESNOCANCEL:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        break;
    case MB_OKCANCEL:
        box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
        break;
    default:
        box.setStandardButtons(QMessageBox::Ok);
        break;
    }
    switch (box.exec()) {
    case QMessageBox::Yes:
        return IDYES;
    case QMessageBox::No:
        return IDNO;
    case QMessageBox::Cancel:
        return IDCANCEL;
    case QMessageBox::Ok:
        return IDOK;
    default:
        // Closed without a button: the box's escape answer.
        return (request.type & MB_TYPEMASK) == MB_YESNO ? IDNO : IDCANCEL;
    }
}

} // namespace

QString ToQString(const CString& text) {
    return QString::fromUtf16(text.GetString(), text.GetLength());
}

CString FromQString(const QString& text) {
    return CString(reinterpret_cast<const char16_t*>(text.utf16()), static_cast<int>(text.size()));
}

QFont FontFromLogFont(const LOGFONTW& font) {
    QFont q;
    const CString face = GetFaceName(font);
    if (!face.IsEmpty())
        q.setFamily(ToQString(face));
    if (font.lfHeight != 0)
        q.setPixelSize(font.lfHeight < 0 ? -font.lfHeight : font.lfHeight);
    if (font.lfWeight > 0)
        q.setWeight(static_cast<QFont::Weight>(std::clamp<int>(font.lfWeight, 100, 900)));
    q.setItalic(font.lfItalic != 0);
    q.setUnderline(font.lfUnderline != 0);
    q.setStrikeOut(font.lfStrikeOut != 0);
    return q;
}

LOGFONTW LogFontFromFont(const QFont& q) {
    LOGFONTW font;
    memset(&font, 0, sizeof font);
    int pixels = q.pixelSize();
    if (pixels <= 0)
        pixels = QFontInfo(q).pixelSize();
    font.lfHeight = -pixels;
    font.lfWeight = static_cast<int32_t>(q.weight());
    font.lfItalic = q.italic() ? 1 : 0;
    font.lfUnderline = q.underline() ? 1 : 0;
    font.lfStrikeOut = q.strikeOut() ? 1 : 0;
    SetFaceName(font, FromQString(q.family()));
    return font;
}

void InstallQtPlatformGlue() {
    static MessagePump* pump = nullptr;
    if (!pump) {
        pump = new MessagePump;
        pump->moveToThread(QCoreApplication::instance()->thread());
        SetMessageDispatcher(pump);
    }
    SetMessageBoxHook([](const MessageBoxRequest& request) -> int {
        if (QThread::currentThread() == QCoreApplication::instance()->thread())
            return ShowQtMessageBox(request);
        int answer = DefaultMessageBoxAnswer(request.type);
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [&] { answer = ShowQtMessageBox(request); },
            Qt::BlockingQueuedConnection);
        return answer;
    });
    // The pointer belongs to the user interface thread; waits elsewhere don't show.
    SetWaitCursorHook([](bool busy) {
        if (QThread::currentThread() != QCoreApplication::instance()->thread())
            return;
        if (busy)
            QApplication::setOverrideCursor(Qt::WaitCursor);
        else
            QApplication::restoreOverrideCursor();
    });
    SetSystemMenuFont(LogFontFromFont(QApplication::font("QMenu")));
    // The manual goes to the desktop's web browser.
    SetHelpViewerHook([](const CString& path, const CString& anchor) -> BOOL {
        QUrl url = QUrl::fromLocalFile(ToQString(path));
        if (!anchor.IsEmpty())
            url.setFragment(ToQString(anchor));
        return QDesktopServices::openUrl(url);
    });
}
