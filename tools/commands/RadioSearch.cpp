// orvexctl radio-search: searches a RadioBrowse.dat by the criteria of the
// search dialog and lists the results.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "radio/RadioBrowseDb.h"
#include "radio/StationText.h"
#include "tools/CtlCommand.h"

namespace {

bool ReadCount(const std::string& text, int32_t& out) {
    char* end = nullptr;
    const long value = strtol(text.c_str(), &end, 10);
    if (text.empty() || *end || value < 0 || value > 2000000000)
        return false;
    out = static_cast<int32_t>(value);
    return true;
}

int RunRadioSearch(const CtlArgs& args) {
    if (args.empty())
        return CtlUsageError("radio-search");
    CRadioBrowseDb db;
    bool byName = false, byVotes = false, byClicks = false, descending = false;
    int32_t maxResults = 0;
    for (size_t i = 1; i < args.size(); ++i) {
        const std::string& option = args[i];
        if (option == "--desc") {
            descending = true;
            continue;
        }
        if (i + 1 >= args.size())
            return CtlUsageError("radio-search");
        const std::string& value = args[++i];
        int32_t number = 0;
        if (option == "--country") {
            db.m_bFindCountry = TRUE;
            db.m_findCountry = CString::FromUtf8(value);
        } else if (option == "--state") {
            db.m_bFindState = TRUE;
            db.m_findState = CString::FromUtf8(value);
        } else if (option == "--language") {
            db.m_bFindLanguage = TRUE;
            db.m_findLanguage = CString::FromUtf8(value);
        } else if (option == "--name") {
            db.m_bFindName = !value.empty();
            db.m_findName = CString::FromUtf8(value);
        } else if (option == "--tag") {
            db.m_bFindTags = TRUE;
            db.m_findTags.Add(CString::FromUtf8(value));
        } else if (option == "--min-votes" && ReadCount(value, number)) {
            db.m_bMinVotes = number != 0;
            db.m_minVotes = number;
        } else if (option == "--min-clicks" && ReadCount(value, number)) {
            db.m_bMinClicks = number != 0;
            db.m_minClicks = number;
        } else if (option == "--max" && ReadCount(value, number)) {
            maxResults = number;
        } else if (option == "--sort" &&
                   (value == "name" || value == "votes" || value == "clicks")) {
            byName = value == "name";
            byVotes = value == "votes";
            byClicks = value == "clicks";
        } else {
            return CtlUsageError("radio-search");
        }
    }
    if (!LoadRadioBrowseFile(db, CString(args[0])))
        return 1;
    if (db.CountCriteria() == 0) {
        printf("Please set one or more search criteria.\n");
        return 1;
    }
    const int found = db.SearchStations();
    db.SortResults(!descending, byName, byVotes, byClicks);
    const int shown = maxResults != 0 && maxResults < found ? maxResults : found;
    if (found == 0)
        printf("No results in %d Stations searched\n", db.m_stations.GetSize());
    else if (maxResults == 0)
        printf("Found %d Stations\n", found);
    else
        printf("Showing %d of %d Stations found\n", shown, found);
    for (int i = 0; i < shown; ++i) {
        const CStation& s = db.m_results[i];
        printf("%s\t%d\t%d\t%s\n", StationText(s.m_name).ToUtf8().c_str(), s.m_votes, s.m_clicks,
               StationText(s.m_url).ToUtf8().c_str());
    }
    return 0;
}

const CtlCommandRegistrar
    kRegistrar("radio-search",
               "DB.dat [--country CODE] [--state S] [--language CODE] [--name W] [--tag T]... "
               "[--min-votes N] [--min-clicks N] [--sort name|votes|clicks] [--desc] [--max N]",
               "search a radio database; all criteria must hold, any one of the tags is enough",
               RunRadioSearch);

} // namespace
