// What the desktop's controls (the sound menu, media keys, the tray) see of
// playback at one moment, taken from the frame and its engine.
#pragma once
#include <QString>

struct CPlaybackState {
    enum Status { Stopped, Playing, Paused };
    Status status = Stopped;
    // Counts the media started, so that a new one is a new track.
    quint64 track = 0;
    QString name;    // the item's name, or what the window shows for it
    QString song;    // what a stream announced it plays now; may be empty
    QString station; // the name of the stream's station when a song plays
    QString url;     // the medium's address, as a URL
    qlonglong lengthUs = 0;
    int volume = 0; // percent
    bool muted = false;
    bool stream = false;
    bool canPlay = false;
    bool canPause = false;
    bool canSeek = false;
    bool canGoNext = false;
    bool canGoPrevious = false;

    // The song where there is one, else the item's name.
    QString Title() const { return song.isEmpty() ? name : song; }
    bool operator==(const CPlaybackState&) const = default;
};
