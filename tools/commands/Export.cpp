// orvexctl export: writes a library file out in one of the export forms, the
// whole tree or one topic, and prints the message the program shows.
#include <cstdio>

#include "app/OrvexDoc.h"
#include "tools/CtlCommand.h"

namespace {

constexpr const char* kName = "export";

bool ParseForm(const std::string& text, ExportForm& form) {
    if (text == "mrf")
        form = EXPORT_FORM_MEDIA_RECORDS;
    else if (text == "m3u")
        form = EXPORT_FORM_M3U;
    else if (text == "dat")
        form = EXPORT_FORM_DAT;
    else
        return false;
    return true;
}

// The path of the topic named by "\"-separated names, found level by level.
BOOL FindTopicPath(const CMediaContents& contents, const CString& names, CNodeArray& path) {
    CStringArray parts;
    SplitBackslashPath(names, parts);
    const CTopicArray* level = &contents.m_topics;
    const CTopic* found = nullptr;
    for (const CString& name : parts) {
        found = nullptr;
        for (const CTopic& topic : *level) {
            if (topic.GetName() == name) {
                found = &topic;
                break;
            }
        }
        if (!found)
            return FALSE;
        level = &found->m_children;
    }
    if (!found)
        return FALSE;
    path = found->Path();
    return TRUE;
}

int RunExport(const CtlArgs& args) {
    std::vector<std::string> positional;
    CExportOptions options;
    std::string topicPath;
    bool haveTopic = false;
    for (size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--format" && i + 1 < args.size()) {
            if (!ParseForm(args[++i], options.m_form))
                return CtlUsageError(kName);
        } else if (args[i] == "--topic" && i + 1 < args.size()) {
            topicPath = args[++i];
            haveTopic = true;
        } else if (args[i] == "--unicode") {
            options.m_unicode = TRUE;
        } else if (args[i] == "--exclude-disc-files") {
            options.m_excludeDiscFiles = TRUE;
        } else if (args[i] == "--aliases") {
            options.m_writeAliases = TRUE;
        } else {
            positional.push_back(args[i]);
        }
    }
    if (positional.size() != 2 || options.m_form == EXPORT_FORM_NONE)
        return CtlUsageError(kName);

    COrvexDoc doc;
    // Topic names are stored through the alias table of the start directory.
    doc.m_aliases.LoadAliases();
    doc.m_extensions.LoadExtensions();
    if (!doc.LoadContents(CString(positional[0]))) {
        fprintf(stderr, "orvexctl export: %s holds no contents\n", positional[0].c_str());
        return 1;
    }
    const CString out(positional[1]);
    if (!haveTopic)
        return doc.ExportContents(options, out) ? 0 : 1;
    CNodeArray path;
    if (!FindTopicPath(doc.m_contents, CString(topicPath), path))
        path.SetFromPath(CString(topicPath)); // not there: the export says so itself
    CTopic topic;
    if (!doc.PrepareTopicExport(path, topic))
        return 1;
    return doc.ExportTopicTo(topic, options, out) ? 0 : 1;
}

CtlCommandRegistrar registrar(kName,
                              "--format mrf|m3u|dat [--topic PATH] [--unicode] "
                              "[--exclude-disc-files] [--aliases] IN.dat OUT",
                              "exports a library file (or the topic at the \\-separated PATH) "
                              "as Media Record Format text, M3U or a contents file",
                              RunExport);

} // namespace
