// What the desktop's sound menu and media keys may ask of the player, as
// the MPRIS service hands it on.
#pragma once
#include <QString>

#include "ui/desktop/PlaybackState.h"

class IMprisTarget {
public:
    virtual ~IMprisTarget() = default;
    virtual CPlaybackState PlaybackState() = 0;
    // Microseconds into the medium; 0 when not known.
    virtual qlonglong PositionUs() = 0;
    virtual void Play() = 0;
    virtual void Pause() = 0;
    virtual void PlayPause() = 0;
    virtual void Stop() = 0;
    virtual void Next() = 0;
    virtual void Previous() = 0;
    // Both give the position reached, or -1 when nothing moved.
    virtual qlonglong SeekBy(qlonglong offsetUs) = 0;
    virtual qlonglong SeekTo(qlonglong positionUs) = 0;
    virtual void SetVolume(int percent) = 0;
    virtual void OpenUri(const QString& uri) = 0;
    virtual void Raise() = 0;
    virtual void Quit() = 0;
};
