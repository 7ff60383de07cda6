#include "ui/desktop/SleepTimer.h"

CSleepTimer::CSleepTimer(std::function<void(int)> fade, std::function<void()> stop,
                         std::function<qint64()> remainingMs, QObject* parent)
    : QObject(parent), m_fade(std::move(fade)), m_stop(std::move(stop)),
      m_remaining(std::move(remainingMs)) {
    m_deadline.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this, &CSleepTimer::BeginFade);
    connect(&m_fadeTimer, &QTimer::timeout, this, &CSleepTimer::FadeStep);
    m_endWatch.setInterval(250);
    connect(&m_endWatch, &QTimer::timeout, this, [this] {
        qint64 left = m_remaining();
        if (left >= 0 && left <= m_fadeMs && !Fading())
            BeginFade();
    });
}

void CSleepTimer::SetTiming(int minuteMs, int fadeMs) {
    m_minuteMs = minuteMs;
    m_fadeMs = fadeMs;
}

void CSleepTimer::StartMinutes(int minutes) {
    Cancel();
    m_mode = AfterMinutes;
    m_durationMs = static_cast<qint64>(minutes) * m_minuteMs;
    // The fade ends at the time chosen.
    m_deadline.start(static_cast<int>(std::max<qint64>(0, m_durationMs - m_fadeMs)));
    m_started.start();
    emit Changed();
}

void CSleepTimer::StartEndOfItem() {
    Cancel();
    m_mode = EndOfItem;
    m_endWatch.start();
    emit Changed();
}

void CSleepTimer::Cancel() {
    bool wasFading = Fading();
    m_deadline.stop();
    m_fadeTimer.stop();
    m_endWatch.stop();
    m_fadeStep = -1;
    m_mode = Off;
    if (wasFading)
        m_fade(100);
    emit Changed();
}

qint64 CSleepTimer::RemainingMs() const {
    if (m_mode != AfterMinutes)
        return -1;
    return std::max<qint64>(0, m_durationMs - m_started.elapsed());
}

int CSleepTimer::MinutesLeft() const {
    const qint64 left = RemainingMs();
    return left < 0 ? -1 : static_cast<int>((left + m_minuteMs - 1) / m_minuteMs);
}

void CSleepTimer::OnItemEnded() {
    if (m_mode == EndOfItem && !Fading())
        BeginFade();
}

void CSleepTimer::OnPlaybackStopped() {
    // The end of the item has come, one way or another.
    if (Fading()) {
        m_fadeTimer.stop();
        m_fadeStep = -1;
        Finish();
    } else if (m_mode == EndOfItem) {
        Finish();
    }
}

void CSleepTimer::BeginFade() {
    m_endWatch.stop();
    m_fadeStep = 0;
    m_fadeTimer.start(std::max(1, m_fadeMs / kFadeSteps));
    FadeStep();
}

void CSleepTimer::FadeStep() {
    ++m_fadeStep;
    if (m_fadeStep < kFadeSteps) {
        m_fade(100 - m_fadeStep * 100 / kFadeSteps);
        return;
    }
    m_fadeTimer.stop();
    m_fadeStep = -1;
    m_fade(0);
    Finish();
    m_stop();
}

void CSleepTimer::Finish() {
    m_mode = Off;
    m_deadline.stop();
    m_endWatch.stop();
    emit Changed();
}
