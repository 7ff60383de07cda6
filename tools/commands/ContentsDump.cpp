// orvexctl contents-dump: prints a contents file as the program reads it, one
// line per topic and one per item, tab-separated, depth first in file order.
#include <cstdio>
#include <cstring>

#include "app/OrvexDoc.h"
#include "platform/base/MessageBox.h"
#include "tools/CtlCommand.h"

namespace {

// Control characters would break the columns; they are shown as \xNN.
std::string Field(const CString& text) {
    std::string out;
    for (const char c : text.ToUtf8()) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F) {
            char escaped[8];
            snprintf(escaped, sizeof escaped, "\\x%02X", byte);
            out += escaped;
        } else {
            out += c;
        }
    }
    return out;
}

// Each node as name[index], joined by "\".
std::string PathField(const CNodeArray& path) {
    std::string out;
    for (int i = 0; i < path.GetSize(); ++i) {
        if (i)
            out += '\\';
        out += Field(path[i].m_name) + "[" + std::to_string(path[i].m_index) + "]";
    }
    return out;
}

std::string TypeCode(MediaType type) {
    if (type > MEDIA_AUDIO_FILE)
        return std::to_string(static_cast<uint32_t>(type));
    CMediaItem item;
    item.m_type = type;
    return item.MediaTypeToCode().ToUtf8();
}

void DumpTopic(const CTopic& topic, int& topics, int& items) {
    ++topics;
    printf("topic\t%s\ttype %u\n", PathField(topic.Path()).c_str(),
           static_cast<uint32_t>(topic.m_mediaType));
    for (const CMediaItem& item : topic.m_media) {
        ++items;
        std::string names;
        for (int i = 0; i < item.m_topics.GetSize(); ++i)
            names += (i ? "\\" : "") + Field(item.m_topics[i]);
        printf("item\t%s\t%s\t%s\t%s\tfavorite %d\n", TypeCode(item.m_type).c_str(),
               Field(item.m_name).c_str(), Field(item.m_location).c_str(), names.c_str(),
               item.m_favorite);
    }
    for (const CTopic& child : topic.m_children)
        DumpTopic(child, topics, items);
}

int RunContentsDump(const CtlArgs& args) {
    std::string file;
    std::string aliasFile;
    for (size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--aliases" && i + 1 < args.size())
            aliasFile = args[++i];
        else if (file.empty() && !args[i].empty() && args[i][0] != '-')
            file = args[i];
        else
            return CtlUsageError("contents-dump");
    }
    if (file.empty())
        return CtlUsageError("contents-dump");

    COrvexDoc doc;
    if (!aliasFile.empty() && !doc.m_aliases.LoadAliasesFrom(CString(aliasFile))) {
        fprintf(stderr, "orvexctl: cannot read %s\n", aliasFile.c_str());
        return 1;
    }
    // Whatever the program would show in a box goes to standard error, and
    // makes the dump a failure; what was read is printed all the same.
    int messages = 0;
    MessageBoxHook previous = SetMessageBoxHook([&messages](const MessageBoxRequest& request) {
        ++messages;
        fprintf(stderr, "%s\n", request.text.ToUtf8().c_str());
        return DefaultMessageBoxAnswer(request.type);
    });
    doc.LoadContents(CString(file));
    SetMessageBoxHook(previous);

    int topics = 0;
    int items = 0;
    for (const CTopic& root : doc.m_contents.m_topics)
        DumpTopic(root, topics, items);
    printf("%d topics, %d items\n", topics, items);
    return messages ? 1 : 0;
}

const CtlCommandRegistrar kRegistrar("contents-dump", "[--aliases TOPICALIAS.TXT] FILE",
                                     "print the topics and items of a contents file",
                                     RunContentsDump);

} // namespace
