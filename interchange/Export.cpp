#include "interchange/Export.h"

#include "interchange/MediaRecordFormat.h"
#include "interchange/Playlists.h"

namespace {

UINT WriteFlags(BOOL unicode) {
    return unicode ? CStdioFileEx::kWriteUtf16 : CStdioFileEx::kWriteCodePage;
}

} // namespace

BOOL ExportTreeMediaRecords(const CMediaContents& contents, const CString& path,
                            BOOL excludeDiscFiles, BOOL unicode, BOOL writeAliases,
                            const CTopicStrAliasAr* aliases, int* count) {
    CStdioFileEx file;
    if (!file.Open(path, WriteFlags(unicode)))
        return FALSE;
    const BOOL written =
        contents.WriteMediaRecords(&file, aliases, &excludeDiscFiles, &writeAliases, count);
    file.Close();
    return written ? TRUE : FALSE;
}

BOOL ExportTreeM3u(const CMediaContents& contents, const CString& path, BOOL unicode, int* count) {
    CStdioFileEx file;
    if (!file.Open(path, WriteFlags(unicode)))
        return FALSE;
    const BOOL written = contents.WriteM3u(&file, count);
    file.Close();
    return written ? TRUE : FALSE;
}

TopicExportResult ExportTopicFile(const CTopic& topic, const CString& path,
                                  const CExportOptions& options, const CTopicStrAliasAr* aliases,
                                  int* count) {
    CStdioFileEx file;
    if (!file.Open(path, WriteFlags(options.m_unicode)))
        return TOPIC_EXPORT_OPEN_FAILED;
    BOOL written = TRUE;
    TopicExportResult result = TOPIC_EXPORT_WRITTEN;
    if (options.m_form == EXPORT_FORM_MEDIA_RECORDS) {
        WriteMediaRecordHead(&file);
        written = topic.WriteMediaRecords(&file, aliases, &options.m_excludeDiscFiles,
                                          &options.m_writeAliases, count);
    } else if (options.m_form == EXPORT_FORM_M3U) {
        WriteM3uHead(&file);
        written = topic.WriteM3u(&file, count);
    } else {
        result = TOPIC_EXPORT_NO_FORM;
    }
    file.Close();
    if (!written) {
        DeleteFileW(path);
        return TOPIC_EXPORT_WRITER_FAILED;
    }
    return result;
}
