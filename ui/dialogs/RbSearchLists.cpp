#include "ui/dialogs/RbSearchLists.h"

#include "radio/StationText.h"

namespace {

// The lists show each name as people read it, so a name is matched in that
// form too.
template <typename Records>
BOOL NameToCode(const Records& records, const CString& name, CString& code) {
    for (const auto& record : records) {
        if (StationText(record.m_name) == name) {
            code = record.m_code;
            return TRUE;
        }
    }
    return FALSE;
}

} // namespace

BOOL CountryNameToCode(const CRadioBrowseDb& db, const CString& name, CString& code) {
    return NameToCode(db.m_countries, name, code);
}

BOOL LanguageNameToCode(const CRadioBrowseDb& db, const CString& name, CString& code) {
    return NameToCode(db.m_languages, name, code);
}
