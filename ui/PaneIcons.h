// The small pictures of the tree and list rows, drawn by the program.
#pragma once
#include <QIcon>

#include "contents/MediaItem.h"

enum PaneIconId {
    ICON_MEDIA_ITEM = 141,   // a media item; the tree's placeholder
    ICON_STREAM_TOPIC = 142, // a topic of streams
    ICON_FILE_TOPIC = 143,   // a topic of files, or a folder
    ICON_OPTICAL = 145,      // an optical drive
    ICON_REMOVABLE = 150,    // a removable drive
};

// The same icon object for the same id, for as long as the program runs.
const QIcon& PaneIcon(PaneIconId id);

// Topics of files (and folders) are drawn as folders, topics of streams
// with waves.
inline bool IsFileMediaType(MediaType type) {
    return type == MEDIA_VIDEO_FILE || type == MEDIA_AUDIO_FILE;
}
inline PaneIconId TopicIcon(MediaType type) {
    return IsFileMediaType(type) ? ICON_FILE_TOPIC : ICON_STREAM_TOPIC;
}
