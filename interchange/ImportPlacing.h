// What the readers do with the items they collected: place them under a
// named topic beside what is there, or replace the whole tree with them.
#pragma once
#include "contents/MediaContents.h"

// Files each item under `topic`: an item without topics goes straight into
// it, and one whose topic list starts elsewhere moves one level down below it.
// Adds 1 to *count for every item, also one the tree refuses. The topic that
// received the last item is left current.
void PlaceItemsUnderTopic(CMediaContents& contents, const CMediaArray& items, const CString& topic,
                          int* count);

// Whether every item can be filed within the deepest level: under `topic`
// (which moves the item's topics one level down unless they start with it),
// or, with an empty topic, under its own topics.
BOOL ItemsFitTopicDepth(const CMediaArray& items, const CString& topic);

// Empties the tree and files each item under its own topics, or under the
// root topic of its group when it names none.
void OverwriteContents(CMediaContents& contents, const CMediaArray& items);

// The four sources of the Import command, tested in this order.
enum ImportSource {
    IMPORT_SOURCE_DAT = 1,           // a contents file: replaces the contents
    IMPORT_SOURCE_MEDIA_RECORDS = 2, // overwrites with an empty topic, else places
    IMPORT_SOURCE_PLS = 3,           // places only
    IMPORT_SOURCE_M3U = 4,           // places only
};
