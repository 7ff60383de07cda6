// When a stream drops, Orvex connects again: up to three tries, each after
// a short wait that grows, before the failure is told. A stream that then
// plays for a while has settled, and its next drop starts the count anew.
#pragma once
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <functional>
#include <vector>

class CStreamReconnect : public QObject {
public:
    static constexpr int kMaxTries = 3;

    explicit CStreamReconnect(std::function<void()> tryAgain, QObject* parent = nullptr);

    // The waits before the first, second and third try, and how long a
    // stream must play before it has settled; tests make them short.
    void SetTiming(std::vector<int> waitsMs, int settleMs);

    // A stream dropped: the next try is due after its wait. False when the
    // tries are used up.
    bool Schedule();
    // The try worked: the stream plays again.
    void Connected();
    // A new medium, or the user's stop: no try is due, and the count is new.
    void Reset();
    // Between a drop and a try that worked, or giving up.
    bool Active() const { return m_active; }
    int Tries() const { return m_tries; }

private:
    std::function<void()> m_tryAgain;
    std::vector<int> m_waitsMs{1000, 2000, 4000};
    int m_settleMs = 15000;
    QTimer m_timer;
    QElapsedTimer m_sinceConnected;
    int m_tries = 0;
    bool m_active = false;
};
