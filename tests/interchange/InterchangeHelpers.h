// Trees and files shared by the import and export tests.
#pragma once
#include <string>

#include "contents/MediaContents.h"

inline CMediaItem Item(MediaType type, const char16_t* name, const char16_t* location,
                       std::initializer_list<const char16_t*> topics, BOOL favorite = FALSE) {
    CMediaItem item;
    item.m_type = type;
    item.m_name = name;
    item.m_location = location;
    for (const char16_t* t : topics)
        item.m_topics.Add(CString(t));
    item.m_favorite = favorite;
    return item;
}

// Every item of the tree with the path it sits in, depth first.
inline void Flatten(const CTopicArray& topics, std::vector<std::pair<CString, CMediaItem>>& out) {
    for (const CTopic& topic : topics) {
        for (const CMediaItem& item : topic.m_media)
            out.emplace_back(topic.GetPathString(), item);
        Flatten(topic.m_children, out);
    }
}

inline std::vector<std::pair<CString, CMediaItem>> Flatten(const CMediaContents& tree) {
    std::vector<std::pair<CString, CMediaItem>> out;
    Flatten(tree.m_topics, out);
    return out;
}

// A tree with every type, nested topics, favourites and text beyond ASCII.
inline CMediaContents SampleTree() {
    CMediaContents tree;
    tree.AddItemByTopics(Item(MEDIA_VIDEO_FILE, u"Harbour at dusk", u"D:\\Films\\harbour.mp4",
                              {u"Video Files", u"Holidays"}, TRUE),
                         FALSE);
    tree.AddItemByTopics(
        Item(MEDIA_AUDIO_URL, u"Morning Talk", u"http://radio.example/talk", {u"Radio"}), FALSE);
    tree.AddItemByTopics(Item(MEDIA_AUDIO_FILE, u"\u65E5\u672C\u306E\u6B4C",
                              u"/home/u/Music/\u6B4C.mp3", {u"Audio Files", u"\u00C9t\u00E9"},
                              TRUE),
                         FALSE);
    tree.AddItemByTopics(
        Item(MEDIA_VIDEO_URL, u"10", u"https://tv.example/live.m3u8", {u"Radio", u"TV", u"News"}),
        FALSE);
    tree.AddItemByTopics(
        Item(MEDIA_VIDEO_FILE, u"Share film", u"\\\\server\\films\\a.mkv", {u"Video Files"}),
        FALSE);
    tree.AddItemByTopics(
        Item(MEDIA_AUDIO_FILE, u"Relative song", u"Music/song.mp3", {u"Audio Files"}), FALSE);
    return tree;
}
