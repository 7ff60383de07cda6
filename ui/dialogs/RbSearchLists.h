// Names of the radio search's drop-down lists turned back into the codes the
// stations carry: the first record whose name is the text, with case.
#pragma once
#include "radio/RadioBrowseDb.h"

BOOL CountryNameToCode(const CRadioBrowseDb& db, const CString& name, CString& code);
BOOL LanguageNameToCode(const CRadioBrowseDb& db, const CString& name, CString& code);
