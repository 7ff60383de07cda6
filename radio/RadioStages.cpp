// The stages of the update after the stations are in: the lookup lists with
// their status texts and cancel polls, the language codes, and the limits.
#include <iterator>

#include "platform/base/UserMessages.h"
#include "radio/RadioBrowseDb.h"

namespace {

struct JobStage {
    const char16_t* status;
    int (*run)(CRadioBrowseDb& db);
    const char16_t* failure;
};

const JobStage kStages[] = {
    {u"Loading countries.", [](CRadioBrowseDb& db) { return db.BuildCountryCodesArray(); },
     u"Loading countries failed."},
    {u"Setting country codes.", [](CRadioBrowseDb& db) { return db.SetCountryCodesUsed(); },
     u"Setting country codes used failed."},
    {u"Building tag list.", [](CRadioBrowseDb& db) { return db.BuildTagArray(RB_TAG_MIN_COUNT); },
     u"Building tags failed."},
    {u"Building states list.", [](CRadioBrowseDb& db) { return db.BuildStateArray(); },
     u"Building states failed."},
    {u"Loading languages.", [](CRadioBrowseDb& db) { return db.BuildLanguageCodesArray(); },
     u"Loading languages failed."},
};

} // namespace

int CRadioBrowseDb::BuildLookupLists(int stationCount, CString* error) {
    CString count;
    count.Format(CString(u"%d stations proccessed."), stationCount);
    ShowStatus(count);
    if (m_hwndProgress) {
        PostMessageW(m_hwndProgress, UM_UPDATE_RANGE, 0, 5);
        PostMessageW(m_hwndProgress, UM_UPDATE_POS, 0, 0);
    }
    const int last = static_cast<int>(std::size(kStages)) - 1;
    for (int i = 0; i <= last; ++i) {
        const JobStage& stage = kStages[i];
        ShowStatus(CString(stage.status));
        if (stage.run(*this) == 0) {
            if (error)
                *error = stage.failure;
            ShowStatus(CString(stage.failure));
            return 0;
        }
        if (i < last && IsCancelled())
            return 0;
        if (m_hwndProgress)
            PostMessageW(m_hwndProgress, UM_UPDATE_POS, 0, i + 1);
    }
    ResolveLanguageCodes();
    SetLanguageCodesUsed();
    if (m_hwndProgress)
        PostMessageW(m_hwndProgress, UM_UPDATE_POS, 0, last + 1);
    if (m_bDirectoryCut || !MeetsLimits()) {
        const CString corrupt(u"Radio Browser data appears corrupt - update failed.");
        if (error)
            *error = corrupt;
        ShowStatus(corrupt);
        return 0;
    }
    return 1;
}

BOOL CRadioBrowseDb::IsCancelled() {
    if (!CJobLink::IsCancelled())
        return FALSE;
    ShowStatus(CString(u"Canceling Update."));
    return TRUE;
}
