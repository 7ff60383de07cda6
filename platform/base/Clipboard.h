// Process-wide numbers for named clipboard formats.
#pragma once
#include "platform/base/CString.h"

// The same name always gives the same number, from 0xC000 upwards.
UINT RegisterClipboardFormatW(const CString& name);
// The MIME type under which a registered format travels on the desktop clipboard.
CString ClipboardFormatMimeType(const CString& name);
