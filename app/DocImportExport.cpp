// The document's import and export: the readers that place what they read,
// the writers of the whole tree, and the cores of the Import, Export, Export
// Topic and playlist-item commands. The dialogs only gather the arguments.
#include <new>

#include "app/OrvexDoc.h"
#include "interchange/Export.h"
#include "interchange/ImportPlacing.h"
#include "interchange/MediaRecordFormat.h"
#include "interchange/Playlists.h"
#include "platform/base/MessageBox.h"
#include "platform/base/WaitCursor.h"

namespace {

void ShowPlain(const CString& text) {
    AfxMessageBox(text, MB_OK);
}

BOOL IsUrlSource(const CString& source) {
    return source.Left(4) == u"http";
}

} // namespace

void COrvexDoc::PlaceImported(const CMediaArray& items, const CString& topic, int* count) {
    PlaceItemsUnderTopic(m_contents, items, topic, count);
    RefreshDisplay(TRUE, FALSE, &m_contents.m_currentTopic, TRUE, TRUE);
    m_bContentsChanged = TRUE;
}

BOOL COrvexDoc::ReadMediaRecords(const CString& path, const CString& topic, int* count) {
    CMediaArray items;
    try {
        if (!ReadMediaRecordFile(path, &m_aliases, items, count))
            return FALSE;
    } catch (const CFileException& e) {
        e.ReportError();
        return FALSE;
    } catch (const std::bad_alloc&) {
        return FALSE; // the last resort: what was read goes, nothing changes
    }
    // Nothing reaches the tree unless the file held a valid record, and
    // nothing at all when one record would nest its topics too deep.
    if (items.IsEmpty())
        return FALSE;
    if (!ItemsFitTopicDepth(items, topic)) {
        CString message;
        message.Format(u"Topics in %s nest deeper than %d levels. Nothing was imported.", path,
                       MAX_TOPIC_DEPTH);
        AfxMessageBox(message, MB_OK | MB_ICONEXCLAMATION);
        return FALSE;
    }
    if (topic.IsEmpty()) {
        OverwriteContents(m_contents, items);
        RefreshDisplay(TRUE, TRUE, nullptr, TRUE, TRUE);
        m_bContentsChanged = TRUE;
        return TRUE;
    }
    PlaceImported(items, topic, nullptr);
    return TRUE;
}

BOOL COrvexDoc::ReadPlaylist(BOOL pls, const CString& source, const CString& topic, int* count) {
    m_bPlaylistCancelled = FALSE;
    if (topic.IsEmpty())
        return FALSE;
    *count = 0;
    CString file = source;
    // Relative entries of a file on this machine belong beside it.
    CString folder = source.Left(source.ReverseFind(u'/'));
    if (source.ReverseFind(u'/') < 0)
        folder = GetCurrentDirectoryW();
    if (IsUrlSource(source)) {
        file = m_dataFolder + u"/results.txt";
        folder.Empty();
        if (!DownloadPlaylist(source, file, pls ? u"ReadPls" : u"ReadM3u"))
            return FALSE;
    }
    CWaitCursor wait;
    CStringArray titles;
    CStringArray locations;
    try {
        const BOOL opened = pls ? ReadPlsEntries(file, folder, titles, locations)
                                : ReadM3uEntries(file, folder, titles, locations);
        if (!opened)
            return FALSE;
    } catch (const CFileException& e) {
        e.ReportError();
        return FALSE;
    } catch (const std::bad_alloc&) {
        return FALSE;
    }
    if (locations.IsEmpty())
        return FALSE;
    CMediaArray items;
    BuildPlaylistItems(titles, locations, m_extensions, items);
    PlaceImported(items, topic, count);
    return TRUE;
}

BOOL COrvexDoc::ReadM3u(const CString& source, const CString& topic, int* count) {
    return ReadPlaylist(FALSE, source, topic, count);
}

BOOL COrvexDoc::ReadPls(const CString& source, const CString& topic, int* count) {
    return ReadPlaylist(TRUE, source, topic, count);
}

BOOL COrvexDoc::ExportMediaRecords(const CString& path, BOOL excludeDiscFiles, BOOL unicode,
                                   BOOL writeAliases, int* count) {
    return ExportTreeMediaRecords(m_contents, path, excludeDiscFiles, unicode, writeAliases,
                                  &m_aliases, count);
}

BOOL COrvexDoc::ExportM3u(const CString& path, BOOL unicode, int* count) {
    return ExportTreeM3u(m_contents, path, unicode, count);
}

BOOL COrvexDoc::ImportFromSource(ImportSource source, const CString& path, const CString& topic) {
    if (source == IMPORT_SOURCE_DAT) {
        // The contents file speaks for itself: its own boxes, no summary.
        // The result goes back to the caller all the same, so a tool can
        // refuse to save a tree that didn't load.
        const BOOL loaded = LoadContents(path);
        m_bContentsChanged = TRUE;
        return loaded;
    }
    int count = 0;
    BOOL ok = FALSE;
    if (source == IMPORT_SOURCE_MEDIA_RECORDS)
        ok = ReadMediaRecords(path, topic, &count);
    else if (source == IMPORT_SOURCE_PLS)
        ok = ReadPls(path, topic, &count);
    else if (source == IMPORT_SOURCE_M3U)
        ok = ReadM3u(path, topic, &count);
    // A download the user stopped needs no word about it.
    if (!ok && m_bPlaylistCancelled)
        return FALSE;
    CString message;
    if (!ok)
        message.Format(u"Import from %s failed.", path);
    else if (source == IMPORT_SOURCE_MEDIA_RECORDS && topic.IsEmpty())
        message.Format(u"Contents overwritten with %d Media Items.", count);
    else
        message.Format(u"%d Media Items placed under %s Topic.", count, topic);
    if (ok)
        m_bContentsChanged = TRUE;
    ShowPlain(message);
    return ok;
}

BOOL COrvexDoc::ExportContents(const CExportOptions& options, const CString& path) {
    CString message;
    BOOL ok = FALSE;
    try {
        if (options.m_form == EXPORT_FORM_DAT) {
            ok = SaveContents(path);
            if (ok) {
                int topics = 0;
                int items = 0;
                m_contents.CountEntries(&topics, &items);
                message.Format(u"%d Topics and %d Media items saved to %s.", topics, items, path);
            }
        } else if (options.m_form == EXPORT_FORM_MEDIA_RECORDS ||
                   options.m_form == EXPORT_FORM_M3U) {
            int count = 0;
            ok = options.m_form == EXPORT_FORM_MEDIA_RECORDS
                     ? ExportMediaRecords(path, options.m_excludeDiscFiles, options.m_unicode,
                                          options.m_writeAliases, &count)
                     : ExportM3u(path, options.m_unicode, &count);
            if (ok)
                message.Format(u"%d Media records saved to %s.", count, path);
        }
    } catch (const CFileException& e) {
        // A write that failed half way: the file stays as far as it got.
        e.ReportError();
        ok = FALSE;
    }
    if (!ok)
        message.Format(u"Export to %s failed.", path);
    ShowPlain(message);
    return ok;
}

BOOL COrvexDoc::PrepareTopicExport(const CNodeArray& path, CTopic& topic) {
    if (!m_contents.GetTopicCopy(path, topic)) {
        ShowPlain(u"Topic error - export failed");
        return FALSE;
    }
    int topics = 0;
    int items = 0;
    topic.CountEntries(&topics, &items);
    if (items == 0) {
        ShowPlain(u"No media items in Topic - export failed");
        return FALSE;
    }
    return TRUE;
}

BOOL COrvexDoc::ExportTopicTo(const CTopic& topic, const CExportOptions& options,
                              const CString& filePath) {
    if (options.m_form == EXPORT_FORM_DAT) {
        ShowPlain(u"Cannot export topic to .dat file.");
        return FALSE;
    }
    int count = 0;
    TopicExportResult result;
    try {
        result = ExportTopicFile(topic, filePath, options, &m_aliases, &count);
    } catch (const CFileException& e) {
        e.ReportError();
        CString message;
        message.Format(u"Topic export to %s failed.", filePath);
        ShowPlain(message);
        return FALSE;
    }
    CString message;
    switch (result) {
    case TOPIC_EXPORT_OPEN_FAILED:
        ShowPlain(u"File open error - export failed");
        return FALSE;
    case TOPIC_EXPORT_NO_FORM:
        return FALSE;
    case TOPIC_EXPORT_WRITER_FAILED:
        message.Format(u"Topic export to %s failed.", filePath);
        ShowPlain(message);
        return FALSE;
    case TOPIC_EXPORT_WRITTEN:
        break;
    }
    message.Format(u"%d Media records saved to %s.", count, filePath);
    ShowPlain(message);
    return TRUE;
}

BOOL COrvexDoc::ImportPlaylistItemTo(const CNodeArray& path, const CMediaItem& item,
                                     const CString& topic, BOOL deleteItem) {
    // The item may be a row of the display, which the import refreshes.
    const CMediaItem playlist = item;
    int count = 0;
    const BOOL ok = IsPlsPlaylistItem(playlist) ? ReadPls(playlist.m_location, topic, &count)
                                                : ReadM3u(playlist.m_location, topic, &count);
    if (!ok) {
        if (m_bPlaylistCancelled)
            return FALSE;
        if (count == 0)
            AfxMessageBox(CString(u"No radio stations in Playlist."), MB_OK | MB_ICONINFORMATION);
        else
            ShowPlain(u"Playlist import failed.");
        return FALSE;
    }
    if (deleteItem && !RemoveMediaItem(path, playlist))
        ShowPlain(u"Playlist delete failed.");
    return TRUE;
}
