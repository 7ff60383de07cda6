// The program's manual: HTML in the start directory, shown by the desktop's
// web browser. Logic code opens it through one installable hook, as it shows
// message boxes; the user interface hands the page to the desktop.
#pragma once
#include <functional>

#include "platform/base/CString.h"

// The manual's folder in the start directory, and its first page.
inline constexpr const char16_t* kHelpFolder = u"OrvexHelp";
inline constexpr const char16_t* kHelpContentsPage = u"index.html";
// The page and section on searching for radio stations. A page of its own,
// so that the search's help lands there also where the desktop drops the
// section of a file's address.
inline constexpr const char16_t* kRadioHelpPage = u"radio.html";
inline constexpr const char16_t* kRadioSearchHelpSection = u"search";

// Shows `path`, a local file, at the section `anchor` (none when empty);
// gives 1 when the desktop took it.
using HelpViewerHook = std::function<BOOL(const CString& path, const CString& anchor)>;

// Installs a hook and gives the previous one.
HelpViewerHook SetHelpViewerHook(HelpViewerHook hook);

// Opens a page of the manual, at the section `anchor` when that isn't empty.
// A missing page is said in a message box; with no hook nothing opens. 1 when
// it opened.
BOOL HtmlHelpW(const CString& page = kHelpContentsPage, const CString& anchor = CString());
