// The two interfaces of the MPRIS 2 object on the session bus: the player
// as an application, and its playback. Properties are read from the
// target at the moment they are asked for.
#pragma once
#include <QDBusAbstractAdaptor>
#include <QDBusObjectPath>
#include <QStringList>
#include <QVariantMap>
#include <functional>

#include "ui/desktop/MprisTarget.h"

class CMprisRootAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2")
    Q_PROPERTY(bool CanQuit READ CanQuit)
    Q_PROPERTY(bool CanRaise READ CanRaise)
    Q_PROPERTY(bool CanSetFullscreen READ CanSetFullscreen)
    Q_PROPERTY(bool Fullscreen READ Fullscreen)
    Q_PROPERTY(bool HasTrackList READ HasTrackList)
    Q_PROPERTY(QString Identity READ Identity)
    Q_PROPERTY(QString DesktopEntry READ DesktopEntry)
    Q_PROPERTY(QStringList SupportedUriSchemes READ SupportedUriSchemes)
    Q_PROPERTY(QStringList SupportedMimeTypes READ SupportedMimeTypes)
public:
    CMprisRootAdaptor(QObject* object, IMprisTarget& target);

    bool CanQuit() const { return true; }
    bool CanRaise() const { return true; }
    // The picture always stays inside the window's right pane.
    bool CanSetFullscreen() const { return false; }
    bool Fullscreen() const { return false; }
    bool HasTrackList() const { return false; }
    QString Identity() const;
    QString DesktopEntry() const;
    QStringList SupportedUriSchemes() const;
    QStringList SupportedMimeTypes() const;

public slots:
    void Raise();
    void Quit();

private:
    IMprisTarget& m_target;
};

class CMprisPlayerAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2.Player")
    Q_PROPERTY(QString PlaybackStatus READ PlaybackStatus)
    Q_PROPERTY(double Rate READ Rate WRITE SetRate)
    Q_PROPERTY(QVariantMap Metadata READ Metadata)
    Q_PROPERTY(double Volume READ Volume WRITE SetVolume)
    Q_PROPERTY(qlonglong Position READ Position)
    Q_PROPERTY(double MinimumRate READ Rate)
    Q_PROPERTY(double MaximumRate READ Rate)
    Q_PROPERTY(bool CanGoNext READ CanGoNext)
    Q_PROPERTY(bool CanGoPrevious READ CanGoPrevious)
    Q_PROPERTY(bool CanPlay READ CanPlay)
    Q_PROPERTY(bool CanPause READ CanPause)
    Q_PROPERTY(bool CanSeek READ CanSeek)
    Q_PROPERTY(bool CanControl READ CanControl)
public:
    CMprisPlayerAdaptor(QObject* object, IMprisTarget& target);

    // The values of a state as the interface gives them.
    static QString StatusText(const CPlaybackState& state);
    static QVariantMap MetadataOf(const CPlaybackState& state);
    static QDBusObjectPath TrackPath(const CPlaybackState& state);
    static double VolumeOf(const CPlaybackState& state);

    QString PlaybackStatus() const { return StatusText(m_target.PlaybackState()); }
    double Rate() const { return 1.0; }
    void SetRate(double) {}
    QVariantMap Metadata() const { return MetadataOf(m_target.PlaybackState()); }
    double Volume() const { return VolumeOf(m_target.PlaybackState()); }
    void SetVolume(double volume);
    qlonglong Position() const { return m_target.PositionUs(); }
    bool CanGoNext() const { return m_target.PlaybackState().canGoNext; }
    bool CanGoPrevious() const { return m_target.PlaybackState().canGoPrevious; }
    bool CanPlay() const { return m_target.PlaybackState().canPlay; }
    bool CanPause() const { return m_target.PlaybackState().canPause; }
    bool CanSeek() const { return m_target.PlaybackState().canSeek; }
    bool CanControl() const { return true; }

public slots:
    void Next() { m_target.Next(); }
    void Previous() { m_target.Previous(); }
    void Pause() { m_target.Pause(); }
    void PlayPause() { m_target.PlayPause(); }
    void Stop() { m_target.Stop(); }
    void Play() { m_target.Play(); }
    void Seek(qlonglong Offset);
    void SetPosition(const QDBusObjectPath& TrackId, qlonglong Position);
    void OpenUri(const QString& Uri) { m_target.OpenUri(Uri); }

public:
    // Told of every seek made through the bus, once the bus has heard it.
    std::function<void(qlonglong)> m_onSeeked;

signals:
    void Seeked(qlonglong Position);

private:
    void TellSeek(qlonglong reached);

    IMprisTarget& m_target;
};
