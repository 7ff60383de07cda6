// The radio database: five tables of the station directory, the parser's work
// station, the search criteria and the last search's results.
#pragma once
#include <memory>
#include <vector>

#include "net/JobLink.h"
#include "platform/base/Archive.h"
#include "radio/RadioRecords.h"
#include "radio/StationResults.h"

class CStationSearchIndex;
enum class StationField : int8_t;

// The lower bounds a freshly built database must reach to be trusted.
constexpr int RB_MIN_STATIONS = 20000;
constexpr int RB_MIN_COUNTRIES = 200;
constexpr int RB_MIN_TAGS = 70;
constexpr int RB_MIN_STATES = 2000;
constexpr int RB_MIN_LANGUAGES = 100;
// A tag must occur this often among all stations to be offered.
constexpr int RB_TAG_MIN_COUNT = 80;

class CRadioBrowseDb : public CJobLink {
public:
    CRadioBrowseDb();
    ~CRadioBrowseDb();
    CRadioBrowseDb(const CRadioBrowseDb&) = delete;
    CRadioBrowseDb& operator=(const CRadioBrowseDb&) = delete;

    int m_lastProgress = -1;
    CStationAr m_stations;
    CCountryCodeArray m_countries;
    CLanguageCodeArray m_languages;
    CTagArray m_tags;
    CStateArray m_states;
    CStation m_work;
    // The last parsed directory did not end with the closing tag of its root
    // element: it was cut short, whatever the number of stations, and is
    // judged corrupt with the limits.
    BOOL m_bDirectoryCut = FALSE;

    BOOL m_bFindName = FALSE;
    BOOL m_bFindCountry = FALSE;
    BOOL m_bFindState = FALSE;
    BOOL m_bFindLanguage = FALSE;
    BOOL m_bFindTags = FALSE;
    BOOL m_bMinClicks = FALSE;
    BOOL m_bMinVotes = FALSE;
    CString m_findName;
    CString m_findCountry;
    CString m_findState;
    CString m_findLanguage;
    CStringArray m_findTags;
    int32_t m_minClicks = 0;
    int32_t m_minVotes = 0;

    // The last search's hits: the stations themselves, not copies (see
    // CStationResults); emptied by every change of the tables.
    CStationResults m_results{m_stations};
    CString m_scratchA;
    CString m_scratchB;

    // The file's body: the five tables in the order stations, countries,
    // tags, states, languages.
    void StoreTo(CArchive& ar) const;
    // Empties each table just before reading it, so a failure part way
    // leaves the tables read so far.
    void LoadFrom(CArchive& ar);
    void AssignTables(const CRadioBrowseDb& other);
    void ClearTables();
    // Position of `pattern` in `text`, both taken in upper case, or -1.
    int FindNoCase(const CString& text, const CString& pattern);

    // The scanner of the downloaded directory (its parsing half): fills
    // m_stations from the file and gives the count, or 0 with *error set.
    int ParseStationFile(const CString& fileName, CString* error);
    // Keys are compared with case; unknown keys are ignored.
    void SetStationField(const CString& key, const CString& value);
    void SetStationField(StationField field, CString value);

    // The lookup lists.
    int BuildCountryCodesArray();
    int SetCountryCodesUsed();
    int BuildTagArray(int minCount);
    int BuildStateArray();
    int BuildLanguageCodesArray();
    void ResolveLanguageCodes();
    int SetLanguageCodesUsed();
    int FindLanguageCode(const CString& text, CString& code);
    void AddTag(const CString& name);
    void AddState(const CString& name, const CString& countryCode);
    // The job's poll of the cancel event; a cancel it sees is told in the
    // status as "Canceling Update.".
    BOOL IsCancelled();

    // 1 when every table holds at least its minimum.
    BOOL MeetsLimits() const;

    // The server list: fetches it from `listUrl` into `fileName` and gives
    // the "https://" address of each server found, or 0 with *message set.
    int GetServers(const CString& fileName, CString* message, CStringArray* servers);
    int GetServers(const CString& listUrl, const CString& fileName, CString* message,
                   CStringArray* servers);

    // The job, on its worker thread: downloads `url` into `fileName` and
    // parses it; then the lists and the limits. 1 when the tables are whole
    // and can be trusted.
    int BuildRadioBrowserThread(const CString& url, const CString& fileName, CString* error,
                                HWND hwndMain, HWND hwndProgress, CEvent* pCancelEvent);
    int BuildStationArrayThread(const CString& url, const CString& fileName, CString* error);
    // The stages after the stations: the four lists with their status texts
    // and cancel polls, the language codes, and the limits.
    int BuildLookupLists(int stationCount, CString* error);

    // Search.
    int CountCriteria() const;
    int SearchStations();
    void ClearCriteria();
    void ClearSearch();
    // Sorts the results by the first key whose flag is set: the name without
    // case, then votes, then clicks; votes and clicks fall back to the name,
    // in the same direction. Equal results keep their order.
    void SortResults(BOOL ascending, BOOL byName, BOOL byVotes, BOOL byClicks);
    // Drops what the search has derived from the stations, the results
    // too; called by every operation here that changes m_stations. Code that
    // edits the table in place must call it too.
    void InvalidateSearchIndex();

private:
    void AddStationTags(const CString& tags);
    CStationSearchIndex& SearchIndex();
    struct ListIndexes;
    ListIndexes& Indexes();

    std::unique_ptr<CStationSearchIndex> m_searchIndex;
    // Lookup indexes of AddTag and AddState, alive while a list is built.
    std::unique_ptr<ListIndexes> m_listIndexes;
};

// The file RadioBrowse.dat: schema 1, then the tables. Messages as the
// document shows them; 1 on success.
BOOL SaveRadioBrowseFile(const CRadioBrowseDb& db, const CString& path);
BOOL LoadRadioBrowseFile(CRadioBrowseDb& db, const CString& path);
