#include "ui/desktop/MprisAdaptors.h"

#include <cmath>

CMprisRootAdaptor::CMprisRootAdaptor(QObject* object, IMprisTarget& target)
    : QDBusAbstractAdaptor(object), m_target(target) {}

QString CMprisRootAdaptor::Identity() const {
    return QStringLiteral("Orvex");
}

QString CMprisRootAdaptor::DesktopEntry() const {
    return QStringLiteral("io.sourceforge.orvex");
}

QStringList CMprisRootAdaptor::SupportedUriSchemes() const {
    return {QStringLiteral("file"), QStringLiteral("http"), QStringLiteral("https"),
            QStringLiteral("rtsp"), QStringLiteral("rtspt")};
}

QStringList CMprisRootAdaptor::SupportedMimeTypes() const {
    return {QStringLiteral("audio/mpeg"),
            QStringLiteral("audio/aac"),
            QStringLiteral("audio/ogg"),
            QStringLiteral("audio/x-vorbis+ogg"),
            QStringLiteral("audio/x-opus+ogg"),
            QStringLiteral("audio/flac"),
            QStringLiteral("audio/x-wav"),
            QStringLiteral("audio/x-ms-wma"),
            QStringLiteral("video/mp4"),
            QStringLiteral("video/x-matroska"),
            QStringLiteral("video/webm"),
            QStringLiteral("video/x-msvideo"),
            QStringLiteral("video/x-flv"),
            QStringLiteral("video/x-ms-wmv"),
            QStringLiteral("application/vnd.apple.mpegurl")};
}

void CMprisRootAdaptor::Raise() {
    m_target.Raise();
}

void CMprisRootAdaptor::Quit() {
    m_target.Quit();
}

CMprisPlayerAdaptor::CMprisPlayerAdaptor(QObject* object, IMprisTarget& target)
    : QDBusAbstractAdaptor(object), m_target(target) {}

QString CMprisPlayerAdaptor::StatusText(const CPlaybackState& state) {
    switch (state.status) {
    case CPlaybackState::Playing:
        return QStringLiteral("Playing");
    case CPlaybackState::Paused:
        return QStringLiteral("Paused");
    default:
        return QStringLiteral("Stopped");
    }
}

QDBusObjectPath CMprisPlayerAdaptor::TrackPath(const CPlaybackState& state) {
    if (state.status == CPlaybackState::Stopped)
        return QDBusObjectPath(QStringLiteral("/org/mpris/MediaPlayer2/TrackList/NoTrack"));
    return QDBusObjectPath(QStringLiteral("/org/orvex/track/%1").arg(state.track));
}

QVariantMap CMprisPlayerAdaptor::MetadataOf(const CPlaybackState& state) {
    QVariantMap metadata;
    metadata.insert(QStringLiteral("mpris:trackid"), QVariant::fromValue(TrackPath(state)));
    if (state.status == CPlaybackState::Stopped)
        return metadata;
    metadata.insert(QStringLiteral("xesam:title"), state.Title());
    // A station's song shows with the station as its album.
    if (!state.song.isEmpty())
        metadata.insert(QStringLiteral("xesam:album"), state.station);
    if (state.lengthUs > 0)
        metadata.insert(QStringLiteral("mpris:length"), state.lengthUs);
    if (!state.url.isEmpty())
        metadata.insert(QStringLiteral("xesam:url"), state.url);
    return metadata;
}

double CMprisPlayerAdaptor::VolumeOf(const CPlaybackState& state) {
    return state.muted ? 0.0 : state.volume / 100.0;
}

void CMprisPlayerAdaptor::SetVolume(double volume) {
    if (std::isnan(volume))
        return;
    volume = volume < 0 ? 0 : (volume > 1 ? 1 : volume);
    m_target.SetVolume(static_cast<int>(std::lround(volume * 100)));
}

void CMprisPlayerAdaptor::Seek(qlonglong Offset) {
    TellSeek(m_target.SeekBy(Offset));
}

void CMprisPlayerAdaptor::SetPosition(const QDBusObjectPath& TrackId, qlonglong Position) {
    // A position for another track than the one playing is stale.
    if (TrackId != TrackPath(m_target.PlaybackState()))
        return;
    TellSeek(m_target.SeekTo(Position));
}

void CMprisPlayerAdaptor::TellSeek(qlonglong reached) {
    if (reached < 0)
        return;
    emit Seeked(reached);
    if (m_onSeeked)
        m_onSeeked(reached);
}
