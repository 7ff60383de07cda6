// orvexctl import: reads a contents file, Media Record Format text or a
// playlist (file or URL) into a library file, exactly as the Import command
// does, prints the program's message and saves the library when it changed.
#include <cstdio>

#include "app/OrvexDoc.h"
#include "platform/base/File.h"
#include "tools/CtlCommand.h"

namespace {

constexpr const char* kName = "import";

bool ParseSource(const std::string& text, ImportSource& source) {
    if (text == "dat")
        source = IMPORT_SOURCE_DAT;
    else if (text == "mrf")
        source = IMPORT_SOURCE_MEDIA_RECORDS;
    else if (text == "pls")
        source = IMPORT_SOURCE_PLS;
    else if (text == "m3u")
        source = IMPORT_SOURCE_M3U;
    else
        return false;
    return true;
}

CString FolderOf(const CString& path) {
    const int slash = path.ReverseFind(u'/');
    if (slash < 0)
        return GetCurrentDirectoryW();
    return slash == 0 ? CString(u"/") : path.Left(slash);
}

int RunImport(const CtlArgs& args) {
    std::vector<std::string> positional;
    ImportSource source = static_cast<ImportSource>(0);
    std::string topic;
    for (size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--format" && i + 1 < args.size()) {
            if (!ParseSource(args[++i], source))
                return CtlUsageError(kName);
        } else if (args[i] == "--topic" && i + 1 < args.size()) {
            topic = args[++i];
        } else {
            positional.push_back(args[i]);
        }
    }
    if (positional.size() != 2 || source == 0)
        return CtlUsageError(kName);

    COrvexDoc doc;
    doc.m_aliases.LoadAliases();
    doc.m_extensions.LoadExtensions();
    const CString library(positional[1]);
    // Downloads land beside the library, as they land in the data folder.
    doc.m_dataFolder = FolderOf(library);
    CFileStatus status;
    if (CFile::GetStatus(library, status) && status.m_size > 0 && !doc.LoadContents(library)) {
        fprintf(stderr, "orvexctl import: %s could not be read; nothing imported\n",
                positional[1].c_str());
        return 1;
    }
    doc.m_bContentsChanged = FALSE;
    const BOOL ok = doc.ImportFromSource(source, CString(positional[0]), CString(topic));
    if (!ok || !doc.m_bContentsChanged)
        return 1;
    return doc.SaveContents(library) ? 0 : 1;
}

CtlCommandRegistrar registrar(kName, "--format mrf|m3u|pls|dat [--topic NAME] SOURCE LIBRARY.dat",
                              "imports SOURCE (a file, or an http URL for playlists) into "
                              "LIBRARY.dat; without --topic a Media Record file replaces "
                              "the contents",
                              RunImport);

} // namespace
