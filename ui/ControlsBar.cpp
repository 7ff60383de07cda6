#include "ui/ControlsBar.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QWheelEvent>

#include "app/OrvexApp.h"
#include "platform/base/UserMessages.h"
#include "platform/qt/QtGlue.h"
#include "ui/MainFrame.h"
#include "ui/SplitterView.h"

namespace {

constexpr int kTop = 6;
// The bar never asks for more width than this, so the dock never moves its
// controls into an overflow menu; it lays them out for whatever it gets.
constexpr int kSmallestWidth = 120;

int ScrollCode(int action) {
    switch (action) {
    case QAbstractSlider::SliderSingleStepSub:
        return SB_LINELEFT;
    case QAbstractSlider::SliderSingleStepAdd:
        return SB_LINERIGHT;
    case QAbstractSlider::SliderPageStepSub:
        return SB_PAGELEFT;
    case QAbstractSlider::SliderPageStepAdd:
        return SB_PAGERIGHT;
    case QAbstractSlider::SliderToMinimum:
        return SB_LEFT;
    case QAbstractSlider::SliderToMaximum:
        return SB_RIGHT;
    case QAbstractSlider::SliderMove:
        return SB_THUMBTRACK;
    default:
        return -1;
    }
}

int Clamp(int v, int low, int high) {
    return v < low ? low : (v > high ? high : v);
}

// The widest of the texts a control shows, with room for its frame.
int TextWidth(const QWidget* w, std::initializer_list<const char*> texts, int padding) {
    int width = 0;
    for (const char* t : texts)
        width = std::max(width, w->fontMetrics().horizontalAdvance(QString::fromUtf8(t)));
    return width + padding;
}

} // namespace

// The bar's face: the eight controls at the places the layout gives them
// for the width the dock hands over.
class CControlsBar::CPanel : public QWidget {
public:
    explicit CPanel(QWidget* parent) : QWidget(parent) {
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }

    void SetModel(const BarRects& model, const std::array<QWidget*, kBarControlCount>& controls) {
        m_model = model;
        m_controls = controls;
        Relayout();
    }

    QSize sizeHint() const override { return {kSmallestWidth, m_height}; }
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void resizeEvent(QResizeEvent* event) override {
        QWidget::resizeEvent(event);
        Relayout();
    }

private:
    void Relayout() {
        int height = 0;
        const BarRects rects = LayoutBar(m_model, width(), &height);
        for (int i = 0; i < kBarControlCount; ++i) {
            if (m_controls[i])
                m_controls[i]->setGeometry(rects[i]);
        }
        if (height != m_height) {
            m_height = height;
            updateGeometry();
        }
    }

    BarRects m_model{};
    std::array<QWidget*, kBarControlCount> m_controls{};
    int m_height = 40;
};

CControlsBar::CControlsBar(QWidget* parent)
    : QToolBar(parent), CWndTarget(this), m_panel(new CPanel(this)) {
    setObjectName(QStringLiteral("131"));
    setWindowTitle(QStringLiteral("Controls"));
    setAllowedAreas(Qt::TopToolBarArea | Qt::BottomToolBarArea);
    setMovable(true);
    setFloatable(true);

    auto button = [this](int id, const char* text) {
        auto* b = new QPushButton(QString::fromUtf8(text), m_panel);
        b->setObjectName(QString::number(id));
        b->installEventFilter(this);
        return b;
    };
    auto label = [this](int id) {
        auto* l = new QLabel(m_panel);
        l->setObjectName(QString::number(id));
        l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        return l;
    };
    auto slider = [this](int id, int maximum) {
        auto* s = new QSlider(Qt::Horizontal, m_panel);
        s->setObjectName(QString::number(id));
        s->setRange(0, maximum);
        s->setFocusPolicy(Qt::StrongFocus);
        s->installEventFilter(this);
        return s;
    };
    m_hideLeft = button(1001, "Hide Left");
    m_stop = button(1002, "Stop");
    m_pause = button(1003, "Pause");
    m_mute = button(1004, "Mute");
    m_progressText = label(1005);
    m_progress = slider(1006, 1000);
    m_volumeText = label(1007);
    m_volume = slider(1008, 100);
    m_hideLeft->setDefault(true);
    setFocusProxy(m_hideLeft);
    addWidget(m_panel);

    // The model row: every control at the top, sized for the longest text
    // it will show.
    const int h = std::max(26, m_hideLeft->sizeHint().height());
    BarRects model;
    model[kHideLeft] = QRect(0, kTop, TextWidth(m_hideLeft, {"Hide Left", "Show Left"}, 24), h);
    model[kStop] = QRect(0, kTop, TextWidth(m_stop, {"Stop"}, 24), h);
    model[kPause] = QRect(0, kTop, TextWidth(m_pause, {"Pause", "Play"}, 24), h);
    model[kMute] = QRect(0, kTop, TextWidth(m_mute, {"Mute", "Unmute"}, 24), h);
    model[kProgressLabel] =
        QRect(0, kTop, TextWidth(m_progressText, {"Progress", "100:00:00"}, 8), h);
    model[kProgressSlider] = QRect(0, kTop, 260, h);
    model[kVolumeLabel] = QRect(0, kTop, TextWidth(m_volumeText, {"Volume", "100 %"}, 8), h);
    model[kVolumeSlider] = QRect(0, kTop, 110, h);
    m_panel->SetModel(model, {m_hideLeft, m_stop, m_pause, m_mute, m_progressText, m_progress,
                              m_volumeText, m_volume});

    connect(m_stop, &QPushButton::clicked, this, [this] {
        m_bEnterKey = FALSE;
        PostToFrame(UM_STOP, 0, 0);
    });
    connect(m_pause, &QPushButton::clicked, this, [this] { OnButton(UM_PAUSE); });
    connect(m_mute, &QPushButton::clicked, this, [this] { OnButton(UM_MUTE); });
    connect(m_hideLeft, &QPushButton::clicked, this, &CControlsBar::OnHideLeft);
    connect(m_progress, &QSlider::actionTriggered, this, [this](int action) {
        if (int code = ScrollCode(action); code >= 0)
            OnProgressScroll(code, m_progress->sliderPosition());
    });
    connect(m_volume, &QSlider::actionTriggered, this, [this](int action) {
        if (int code = ScrollCode(action); code >= 0)
            OnVolumeScroll(code, m_volume->sliderPosition());
    });
    connect(m_volume, &QSlider::sliderReleased, this,
            [this] { OnVolumeScroll(SB_ENDSCROLL, m_volume->sliderPosition()); });

    if (COrvexApp* app = AfxGetOrvexApp())
        app->m_hwndControls = GetSafeHwnd();
    InitDialog();
}

CControlsBar::~CControlsBar() {
    COrvexApp* app = AfxGetOrvexApp();
    if (app && app->m_hwndControls == GetSafeHwnd())
        app->m_hwndControls = nullptr;
}

void CControlsBar::InitDialog() {
    m_hideLeft->setText(QStringLiteral("Hide Left"));
    m_stop->setText(QStringLiteral("Stop"));
    m_pause->setText(QStringLiteral("Pause"));
    m_mute->setText(QStringLiteral("Mute"));
    m_progressText->setText(QStringLiteral("Progress"));
    m_volumeText->setText(QStringLiteral("Volume"));
    SetControlsEnabled(false);
    m_hideLeft->setEnabled(true);
    m_bWheel = FALSE;
    m_bEnterKey = FALSE;
}

void CControlsBar::SetControlsEnabled(bool enabled) {
    for (QWidget* w : {static_cast<QWidget*>(m_progress), static_cast<QWidget*>(m_volume),
                       static_cast<QWidget*>(m_progressText), static_cast<QWidget*>(m_volumeText),
                       static_cast<QWidget*>(m_stop), static_cast<QWidget*>(m_pause),
                       static_cast<QWidget*>(m_mute)})
        w->setEnabled(enabled);
}

CMediaPlayer* CControlsBar::Engine() const {
    CMainFrame* frame = GetOrvexFrame();
    return frame ? &frame->m_player : nullptr;
}

void CControlsBar::PostToFrame(UINT message, WPARAM wParam, LPARAM lParam) {
    if (IMainFrame* frame = GetMainFrame())
        PostMessageW(frame->GetFrameHwnd(), message, wParam, lParam);
}

void CControlsBar::OnUpdateCmdUI() {
    m_hideLeft->setEnabled(true);
    CMediaPlayer* engine = Engine();
    m_stop->setEnabled(engine && engine->m_state != 0);
}

LRESULT CControlsBar::OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case UM_BAR_STARTED:
        OnStarted();
        break;
    case UM_BAR_STOPPED:
        OnStopped();
        break;
    case UM_BAR_PAUSED:
        m_pause->setText(lParam == 0 ? QStringLiteral("Pause") : QStringLiteral("Play"));
        break;
    case UM_BAR_MUTED:
        m_mute->setText(lParam == 0 ? QStringLiteral("Mute") : QStringLiteral("Unmute"));
        break;
    case UM_BAR_POSITION:
        if (!m_bDragging)
            m_progress->setValue(Clamp(static_cast<int>(lParam), 0, 1000));
        m_position = static_cast<int>(lParam);
        m_progressText->setText(ToQString(TimeText(static_cast<int>(wParam))));
        break;
    case UM_BAR_VOLUME:
        if (m_bDragging)
            break;
        m_barVolume = static_cast<int>(lParam);
        m_volume->setValue(m_barVolume);
        SetVolumeText(m_barVolume);
        break;
    default:
        break;
    }
    OnUpdateCmdUI();
    emit MessageHandled(message);
    return 0;
}

void CControlsBar::OnStarted() {
    SetControlsEnabled(true);
    m_progress->setRange(0, 1000);
    m_progress->setValue(0);
    m_progressText->setText(ToQString(TimeText(0)));
    m_barVolume = 50;
    m_volume->setRange(0, 100);
    m_volume->setValue(50);
    SetVolumeText(m_barVolume);
    m_pause->setText(QStringLiteral("Pause"));
    m_mute->setText(QStringLiteral("Mute"));
    m_stop->setText(QStringLiteral("Stop"));
}

void CControlsBar::OnStopped() {
    m_progress->setValue(0);
    m_progressText->setText(QStringLiteral("Progress"));
    m_position = 0;
    m_volume->setValue(0);
    m_volumeText->setText(QStringLiteral("Volume"));
    m_barVolume = 0;
    SetControlsEnabled(false);
    m_stop->setDefault(false);
    m_hideLeft->setDefault(true);
    update();
}

void CControlsBar::SetVolumeText(int percent) {
    CString text;
    text.Format(u"%d %%", percent);
    m_volumeText->setText(ToQString(text));
}

CString CControlsBar::TimeText(int seconds) {
    CString hours(u"00:"), minutes(u"00:"), rest(u"00");
    int left = seconds;
    if (left >= 3600) {
        int h = left / 3600;
        left -= h * 3600;
        hours.Format(h < 10 ? u"0%d:" : u"%d:", h);
    }
    if (left >= 60) {
        int m = left / 60;
        left -= m * 60;
        minutes.Format(m < 10 ? u"0%d:" : u"%d:", m);
    }
    if (left > 0)
        rest.Format(left < 10 ? u"0%d" : u"%d", left);
    CString text;
    text.Format(u"%s%s%s", hours, minutes, rest);
    return text;
}

void CControlsBar::OnButton(UINT message) {
    PostToFrame(message, m_bEnterKey, 0);
    m_bEnterKey = FALSE;
}

void CControlsBar::OnHideLeft() {
    // The button's text is the only record of the left pane's state.
    const BOOL hide = m_hideLeft->text() == QStringLiteral("Hide Left");
    m_hideLeft->setText(hide ? QStringLiteral("Show Left") : QStringLiteral("Hide Left"));
    PostToFrame(UM_SHOW_LEFT, m_bEnterKey, hide);
    m_bEnterKey = FALSE;
}

void CControlsBar::OnProgressScroll(int code, int nPos) {
    CMediaPlayer* engine = Engine();
    if (!engine) {
        m_progress->setSliderPosition(m_position);
        return;
    }
    if (!engine->m_bDvd && !engine->m_bCd && engine->m_duration == 0) {
        // A live stream has nowhere to seek to.
        m_position = 0;
        m_progress->setSliderPosition(0);
        return;
    }
    const bool paused = engine->m_state == 1;
    switch (code) {
    case SB_LINELEFT:
    case SB_LINERIGHT:
    case SB_PAGELEFT:
    case SB_PAGERIGHT:
    case SB_LEFT:
    case SB_RIGHT: {
        if (paused) {
            m_progress->setSliderPosition(m_position);
            return;
        }
        m_bDragging = FALSE;
        int target = 5;
        if (code == SB_RIGHT)
            target = 997;
        else if (code != SB_LEFT) {
            const int step[] = {-50, 50, -200, 200};
            target = Clamp(m_position + step[code], 3, 997);
        }
        PostToFrame(UM_SEEK_TO, 0, target);
        return;
    }
    case SB_THUMBPOSITION:
    case SB_THUMBTRACK:
        if (m_bWheel) {
            if (paused) {
                m_progress->setSliderPosition(m_position);
                return;
            }
            m_bWheel = FALSE;
            const int target = Clamp(m_position + (m_wheelUp ? 50 : -50), 5, 995);
            PostToFrame(UM_SEEK_TO, 0, target);
            return;
        }
        if (!m_bDragging && paused) {
            // A drag cannot begin while paused.
            m_progress->setSliderPosition(m_position);
            return;
        }
        m_bDragging = TRUE;
        {
            const int value = nPos < 2 ? 1 : nPos;
            m_progress->setSliderPosition(value);
            m_position = value;
            PostToFrame(UM_SEEK_DRAG, 1, value);
        }
        return;
    default:
        return;
    }
}

void CControlsBar::OnProgressReleased() {
    CMediaPlayer* engine = Engine();
    if (!engine || engine->m_state != 1)
        return;
    // The drag paused the graph; letting go seeks and plays on.
    m_bDragging = FALSE;
    PostToFrame(UM_SEEK_DRAG, 0, m_progress->sliderPosition());
}

void CControlsBar::OnVolumeScroll(int code, int nPos) {
    CMediaPlayer* engine = Engine();
    if (!engine || engine->m_bMuted) {
        m_volume->setSliderPosition(m_barVolume);
        return;
    }
    if (code == SB_THUMBPOSITION || code == SB_THUMBTRACK) {
        if (m_bWheel) {
            m_bWheel = FALSE;
            int value = m_barVolume + (m_wheelUp ? 2 : -2);
            if (value < 0)
                value = 1;
            if (value > 100)
                value = 99;
            m_volume->setSliderPosition(value);
            m_barVolume = value;
            PostToFrame(UM_SET_VOLUME, 0, value);
        } else {
            m_barVolume = nPos;
            PostToFrame(UM_SET_VOLUME, 1, m_barVolume);
        }
        SetVolumeText(m_barVolume);
        return;
    }
    m_barVolume = nPos;
    SetVolumeText(m_barVolume);
    PostToFrame(UM_SET_VOLUME, 0, m_barVolume);
}

bool CControlsBar::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress:
        return OnKeyDown(qobject_cast<QWidget*>(watched), static_cast<QKeyEvent*>(event));
    case QEvent::Wheel:
        if (watched == m_progress || watched == m_volume) {
            // The slider's own handling runs here, with the flag set, so the
            // scroll it causes is known to come from the wheel.
            const QPoint delta = static_cast<QWheelEvent*>(event)->angleDelta();
            m_wheelUp = (delta.y() != 0 ? delta.y() : delta.x()) > 0;
            m_bWheel = TRUE;
            static_cast<QObject*>(watched)->event(event);
            m_bWheel = FALSE;
            return true;
        }
        break;
    case QEvent::MouseButtonRelease:
        if (watched == m_progress && static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
            // The slider lets go first; then the bar acts on where it stands.
            static_cast<QObject*>(watched)->event(event);
            OnProgressReleased();
            return true;
        }
        break;
    default:
        break;
    }
    return QToolBar::eventFilter(watched, event);
}

bool CControlsBar::OnKeyDown(QWidget* target, QKeyEvent* key) {
    switch (key->key()) {
    case Qt::Key_Space:
        // Space pauses wherever the focus is in the bar, and never clicks
        // a button; holding it down does nothing more.
        if (!key->isAutoRepeat())
            PostToFrame(UM_PAUSE, 1, 0);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (auto* b = qobject_cast<QPushButton*>(target);
            b && (b == m_hideLeft || b == m_stop || b == m_pause || b == m_mute)) {
            m_bEnterKey = TRUE;
            b->click();
            return true;
        }
        return false;
    case Qt::Key_Tab: {
        if (key->modifiers() & Qt::ShiftModifier)
            return false;
        COrvexApp* app = AfxGetOrvexApp();
        COrvexSplitterView* view = app ? app->m_pSplitterView : nullptr;
        if (!app || !view)
            return false;
        const bool leftHidden = view->IsLeftHidden();
        HWND next = nullptr;
        if (target == m_volume) {
            if (app->m_hwndTree && !leftHidden)
                next = app->m_hwndTree;
            else if (app->m_hwndList && !app->m_hwndVideo)
                next = app->m_hwndList;
            else if (leftHidden && app->m_hwndVideo && !app->m_hwndList) {
                m_hideLeft->setFocus(Qt::TabFocusReason);
                return true;
            }
        } else if (target == m_hideLeft) {
            CMediaPlayer* engine = Engine();
            if (engine && engine->m_state == 0) {
                if (app->m_hwndTree && !leftHidden)
                    next = app->m_hwndTree;
                else if (app->m_hwndList && !app->m_hwndVideo)
                    next = app->m_hwndList;
            }
        }
        if (!next || !WidgetFromHwnd(next))
            return false;
        WidgetFromHwnd(next)->setFocus(Qt::TabFocusReason);
        return true;
    }
    default:
        return false;
    }
}
