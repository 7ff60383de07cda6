// What a filter tells the graph besides its streams: events of its own, and
// the title a stream announces.
#include <cstring>

#include "platform/media/GstFilter.h"

namespace {

// Cuts a UTF-8 text to at most `limit` bytes, never inside a character.
std::string CutUtf8(std::string text, size_t limit) {
    if (text.size() <= limit)
        return text;
    size_t end = limit;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        --end;
    text.resize(end);
    return text;
}

std::string TagText(const GstTagList* tags, const char* tag) {
    gchar* value = nullptr;
    if (!gst_tag_list_get_string(tags, tag, &value) || !value)
        return std::string();
    std::string text = value;
    g_free(value);
    // Control characters (line ends in a title) would break a title bar
    // or a line of the played titles.
    for (char& c : text) {
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F)
            c = ' ';
    }
    size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos)
        return std::string();
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

} // namespace

void NotifyGraph(GstElement* filterBin, LONG code, LONG_PTR param1, LONG_PTR param2) {
    GstStructure* s = gst_structure_new(
        kGraphEventMessage, "code", G_TYPE_INT, static_cast<gint>(code), "param1", G_TYPE_INT64,
        static_cast<gint64>(param1), "param2", G_TYPE_INT64, static_cast<gint64>(param2), nullptr);
    gst_element_post_message(filterBin, gst_message_new_element(GST_OBJECT(filterBin), s));
}

bool ParseGraphNotice(GstMessage* message, LONG* code, LONG_PTR* param1, LONG_PTR* param2) {
    if (GST_MESSAGE_TYPE(message) != GST_MESSAGE_ELEMENT ||
        !gst_message_has_name(message, kGraphEventMessage))
        return false;
    const GstStructure* s = gst_message_get_structure(message);
    gint c = 0;
    gint64 p1 = 0, p2 = 0;
    if (!gst_structure_get_int(s, "code", &c))
        return false;
    // A parameter an event has no use for may be left out.
    gst_structure_get_int64(s, "param1", &p1);
    gst_structure_get_int64(s, "param2", &p2);
    *code = c;
    *param1 = static_cast<LONG_PTR>(p1);
    *param2 = static_cast<LONG_PTR>(p2);
    return true;
}

std::string StreamTitleOfTags(const GstTagList* tags) {
    if (!tags)
        return std::string();
    std::string title = TagText(tags, GST_TAG_TITLE);
    if (title.empty())
        return title;
    std::string artist = TagText(tags, GST_TAG_ARTIST);
    if (!artist.empty() && title.find(artist) == std::string::npos)
        title = artist + " - " + title;
    return CutUtf8(title, kMaxStreamTitleBytes);
}
