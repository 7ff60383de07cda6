// The sleep timer: playback stops after a number of minutes, or at the end
// of the item now playing (for a stream that announces songs, the end of
// the song now playing), with a short fade of the sound before.
#pragma once
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <functional>

class CSleepTimer : public QObject {
    Q_OBJECT
public:
    enum Mode { Off, AfterMinutes, EndOfItem };

    // fade(share) sets the sound to a share (percent) of its volume; stop
    // ends playback; remainingMs gives what is left of the item (-1 when not
    // known).
    CSleepTimer(std::function<void(int)> fade, std::function<void()> stop,
                std::function<qint64()> remainingMs, QObject* parent = nullptr);

    void StartMinutes(int minutes);
    void StartEndOfItem();
    void Cancel();
    Mode GetMode() const { return m_mode; }
    bool Fading() const { return m_fadeStep >= 0; }
    // What is left until the stop, for the menu; -1 when not timed.
    qint64 RemainingMs() const;
    // The same in whole minutes, rounded up; -1 when not timed.
    int MinutesLeft() const;

    // The item ended, or a stream's song changed: with EndOfItem it is time.
    void OnItemEnded();
    // Playback stopped: a fade under way has nothing left to do.
    void OnPlaybackStopped();

    // Tests shorten the minute and the fade.
    void SetTiming(int minuteMs, int fadeMs);

signals:
    void Changed();

private:
    void BeginFade();
    void FadeStep();
    void Finish();

    std::function<void(int)> m_fade;
    std::function<void()> m_stop;
    std::function<qint64()> m_remaining;
    Mode m_mode = Off;
    int m_minuteMs = 60000;
    int m_fadeMs = 5000;
    static constexpr int kFadeSteps = 20;
    int m_fadeStep = -1;
    QTimer m_deadline;
    QTimer m_fadeTimer;
    QTimer m_endWatch; // near the end of an item of known length, the fade begins
    QElapsedTimer m_started;
    qint64 m_durationMs = 0;
};
