#include "ui/desktop/StreamReconnect.h"

CStreamReconnect::CStreamReconnect(std::function<void()> tryAgain, QObject* parent)
    : QObject(parent), m_tryAgain(std::move(tryAgain)) {
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, [this] { m_tryAgain(); });
}

void CStreamReconnect::SetTiming(std::vector<int> waitsMs, int settleMs) {
    if (waitsMs.size() >= kMaxTries)
        m_waitsMs = std::move(waitsMs);
    m_settleMs = settleMs;
}

bool CStreamReconnect::Schedule() {
    if (!m_active && m_sinceConnected.isValid() && m_sinceConnected.elapsed() >= m_settleMs)
        m_tries = 0;
    if (m_tries >= kMaxTries)
        return false;
    m_active = true;
    m_timer.start(m_waitsMs[static_cast<size_t>(m_tries)]);
    ++m_tries;
    return true;
}

void CStreamReconnect::Connected() {
    m_active = false;
    m_sinceConnected.start();
}

void CStreamReconnect::Reset() {
    m_timer.stop();
    m_active = false;
    m_tries = 0;
    m_sinceConnected.invalidate();
}
