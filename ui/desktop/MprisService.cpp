#include "ui/desktop/MprisService.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <cstdlib>

#include "ui/desktop/MprisAdaptors.h"

namespace {

constexpr const char* kPlayerInterface = "org.mpris.MediaPlayer2.Player";
// A position further than this from where the clock says it should be has
// been moved.
constexpr qlonglong kJumpUs = 1500000;

} // namespace

CMprisService::CMprisService(IMprisTarget& target, QObject* parent)
    : QObject(parent), m_target(target) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    m_object = new QObject(this);
    new CMprisRootAdaptor(m_object, target);
    m_player = new CMprisPlayerAdaptor(m_object, target);
    if (!bus.registerObject(QString::fromLatin1(kObjectPath), m_object)) {
        delete m_object;
        m_object = nullptr;
        m_player = nullptr;
        return;
    }
    // A second Orvex takes a name of its own, as the interface asks.
    QString name = QString::fromLatin1(kServiceName);
    if (!bus.registerService(name)) {
        name += QStringLiteral(".instance%1").arg(QCoreApplication::applicationPid());
        if (!bus.registerService(name))
            name.clear();
    }
    m_serviceName = name;
    m_told = target.PlaybackState();
    m_player->m_onSeeked = [this](qlonglong reached) {
        m_lastPositionUs = reached;
        m_sinceLastLook.start();
    };
}

CMprisService::~CMprisService() {
    if (!m_object)
        return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.unregisterObject(QString::fromLatin1(kObjectPath));
    if (!m_serviceName.isEmpty())
        bus.unregisterService(m_serviceName);
}

void CMprisService::Refresh() {
    if (!m_player || m_serviceName.isEmpty())
        return;
    const CPlaybackState now = m_target.PlaybackState();
    QVariantMap changed;
    auto tell = [&](const char* name, const QVariant& before, const QVariant& after) {
        if (before != after)
            changed.insert(QString::fromLatin1(name), after);
    };
    using Player = CMprisPlayerAdaptor;
    tell("PlaybackStatus", Player::StatusText(m_told), Player::StatusText(now));
    if (Player::MetadataOf(m_told) != Player::MetadataOf(now))
        changed.insert(QStringLiteral("Metadata"), Player::MetadataOf(now));
    tell("Volume", Player::VolumeOf(m_told), Player::VolumeOf(now));
    tell("CanPlay", m_told.canPlay, now.canPlay);
    tell("CanPause", m_told.canPause, now.canPause);
    tell("CanSeek", m_told.canSeek, now.canSeek);
    tell("CanGoNext", m_told.canGoNext, now.canGoNext);
    tell("CanGoPrevious", m_told.canGoPrevious, now.canGoPrevious);
    const bool sameTrack = now.track == m_told.track;
    m_told = now;
    if (!changed.isEmpty()) {
        QDBusMessage signal = QDBusMessage::createSignal(
            QString::fromLatin1(kObjectPath), QStringLiteral("org.freedesktop.DBus.Properties"),
            QStringLiteral("PropertiesChanged"));
        signal << QString::fromLatin1(kPlayerInterface) << changed << QStringList();
        QDBusConnection::sessionBus().send(signal);
    }

    // Position is not a changing property on the bus; a jump is a seek.
    qlonglong position = m_target.PositionUs();
    if (sameTrack && now.status != CPlaybackState::Stopped && m_sinceLastLook.isValid()) {
        qlonglong expected = m_lastPositionUs;
        if (now.status == CPlaybackState::Playing)
            expected += m_sinceLastLook.elapsed() * 1000;
        if (std::llabs(position - expected) > kJumpUs)
            emit m_player->Seeked(position);
    }
    m_lastPositionUs = position;
    m_sinceLastLook.start();
}
