// Writing the tree, or one topic of it, to a text file in one of the export
// forms, with the options the export dialog hands over.
#pragma once
#include "contents/MediaContents.h"
#include "contents/TopicAliases.h"

enum ExportForm {
    EXPORT_FORM_NONE = 0,
    EXPORT_FORM_DAT = 1,           // the contents file
    EXPORT_FORM_MEDIA_RECORDS = 2, // the Media Record Format
    EXPORT_FORM_M3U = 3,
};

struct CExportOptions {
    ExportForm m_form = EXPORT_FORM_NONE;
    BOOL m_excludeDiscFiles = FALSE; // Media Record Format only; M3U always leaves them out
    BOOL m_unicode = FALSE;          // text forms: UTF-16LE behind FF FE
    BOOL m_writeAliases = FALSE;     // Media Record Format: topic names in their stored form
};

// The whole tree in a text form. Gives 0 when the file can't be created or
// the tree has no root topic (the empty file then stays). A write that fails
// on the way throws CFileException and leaves the file as far as it got.
BOOL ExportTreeMediaRecords(const CMediaContents& contents, const CString& path,
                            BOOL excludeDiscFiles, BOOL unicode, BOOL writeAliases,
                            const CTopicStrAliasAr* aliases, int* count);
BOOL ExportTreeM3u(const CMediaContents& contents, const CString& path, BOOL unicode, int* count);

enum TopicExportResult {
    TOPIC_EXPORT_WRITTEN = 0,
    TOPIC_EXPORT_OPEN_FAILED = 1,   // the file couldn't be created
    TOPIC_EXPORT_WRITER_FAILED = 2, // the writer gave 0; the file has been deleted
    TOPIC_EXPORT_NO_FORM = 3,       // neither text form chosen: an empty file stays
};

// One topic with all below it, behind the head of its form. Records carry
// their full topic lists from the root on.
TopicExportResult ExportTopicFile(const CTopic& topic, const CString& path,
                                  const CExportOptions& options, const CTopicStrAliasAr* aliases,
                                  int* count);
