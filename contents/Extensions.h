// The file extensions the program treats as media, each with its media type,
// and the rule that turns a path or URL into a media type.
#pragma once
#include "contents/MediaItem.h"

class CExtension {
public:
    CString m_ext; // lower case, without the "."
    MediaType m_type = MEDIA_NONE;
};

class CExtensionArray : public CArray<CExtension> {
public:
    void LoadExtensions();
    void AddExtension(const CString& ext, MediaType type);
    BOOL IsKnownExtension(const CString& ext) const;
    // The type of a known extension; for a URL the stream kind of it.
    MediaType GetExtensionType(const CString& ext, BOOL isUrl) const;
    BOOL ClassifyLocation(const CString& location, CExtension& result) const;
};
