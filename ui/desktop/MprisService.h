// Orvex on the session bus as an MPRIS 2 media player
// ("org.mpris.MediaPlayer2.orvex"), so that the desktop's sound menu and
// media keys show and steer it. Without a session bus it stays silent.
#pragma once
#include <QElapsedTimer>
#include <QObject>
#include <QString>

#include "ui/desktop/MprisTarget.h"

class CMprisPlayerAdaptor;

class CMprisService : public QObject {
public:
    static constexpr const char* kServiceName = "org.mpris.MediaPlayer2.orvex";
    static constexpr const char* kObjectPath = "/org/mpris/MediaPlayer2";

    explicit CMprisService(IMprisTarget& target, QObject* parent = nullptr);
    ~CMprisService() override;

    // The name taken on the bus; empty when there is no bus.
    const QString& ServiceName() const { return m_serviceName; }
    // Compares playback with what the bus was last told, and tells what
    // changed; a jump of the position is told as a seek.
    void Refresh();

private:
    IMprisTarget& m_target;
    QObject* m_object = nullptr;
    CMprisPlayerAdaptor* m_player = nullptr;
    QString m_serviceName;
    CPlaybackState m_told;
    // Where the position was at the last look, and when.
    qlonglong m_lastPositionUs = 0;
    QElapsedTimer m_sinceLastLook;
};
