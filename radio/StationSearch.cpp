// The search over all stations: every criterion that is set must hold, the
// tags among themselves need only one. A text criterion holds when it occurs
// anywhere in its field, both decoded and in simple case folding.
#include <algorithm>

#include "radio/RadioBrowseDb.h"
#include "radio/StationSearchIndex.h"
#include "radio/StationText.h"
#include "radio/TextFind.h"

CStationSearchIndex::CStationSearchIndex() {
    for (bool& made : m_made)
        made = true;
}

void CStationSearchIndex::Append(const CStation& station) {
    for (int field = 0; field < fieldCount; ++field) {
        CColumn& column = m_columns[field];
        AppendFoldedStationText((station.*kFields[field]).view(), column.m_text);
        column.m_ends.push_back(static_cast<uint32_t>(column.m_text.size()));
    }
    ++m_size;
}

const CStationSearchIndex::CColumn& CStationSearchIndex::Column(const CStationAr& stations,
                                                                Field field) {
    CColumn& column = m_columns[field];
    if (m_made[field])
        return column;
    const CString CStation::*member = kFields[field];
    size_t total = 0;
    for (const CStation& s : stations)
        total += (s.*member).str().size();
    // Decoding never makes text longer.
    column.m_text.reserve(total);
    column.m_ends.reserve(static_cast<size_t>(stations.GetSize()));
    for (const CStation& s : stations) {
        AppendFoldedStationText((s.*member).view(), column.m_text);
        column.m_ends.push_back(static_cast<uint32_t>(column.m_text.size()));
    }
    m_made[field] = true;
    return column;
}

int CRadioBrowseDb::CountCriteria() const {
    return m_bFindName + m_bFindCountry + m_bFindState + m_bFindLanguage + m_bFindTags +
           m_bMinClicks + m_bMinVotes;
}

CStationSearchIndex& CRadioBrowseDb::SearchIndex() {
    if (!m_searchIndex || m_searchIndex->GetSize() != m_stations.GetSize())
        m_searchIndex = std::make_unique<CStationSearchIndex>(m_stations.GetSize());
    return *m_searchIndex;
}

int CRadioBrowseDb::SearchStations() {
    m_results.RemoveAll();
    if (CountCriteria() == 0)
        return 0;
    using Index = CStationSearchIndex;
    Index& index = SearchIndex();
    auto column = [&](BOOL wanted, Index::Field field) {
        return wanted ? &index.Column(m_stations, field) : nullptr;
    };
    const Index::CColumn* names = column(m_bFindName, Index::name);
    const Index::CColumn* countries = column(m_bFindCountry, Index::country);
    const Index::CColumn* states = column(m_bFindState, Index::state);
    const Index::CColumn* languages = column(m_bFindLanguage, Index::language);
    const Index::CColumn* tagTexts = column(m_bFindTags, Index::tags);

    // Criteria come as people type them; decoding them too lets a criterion
    // taken from the tables (a state, a tag) match as well.
    const std::u16string name = FoldedStationText(m_findName.view());
    const std::u16string country = FoldedStationText(m_findCountry.view());
    const std::u16string state = FoldedStationText(m_findState.view());
    const std::u16string language = FoldedStationText(m_findLanguage.view());
    std::vector<std::u16string> tags;
    for (const CString& tag : m_findTags)
        tags.push_back(FoldedStationText(tag.view()));

    auto occurs = [](std::u16string_view field, const std::u16string& pattern) {
        return FindUnits(field, pattern) != std::u16string_view::npos;
    };
    // A station is in when every criterion that is set holds, so the first
    // that fails ends its tests; the cheap ones go first.
    auto holds = [&](int i) {
        const CStation& station = m_stations[i];
        if (m_bMinClicks && station.m_clicks < m_minClicks)
            return false;
        if (m_bMinVotes && station.m_votes < m_minVotes)
            return false;
        if (countries && !occurs(countries->Get(i), country))
            return false;
        if (languages && !occurs(languages->Get(i), language))
            return false;
        if (states && !occurs(states->Get(i), state))
            return false;
        if (names && !occurs(names->Get(i), name))
            return false;
        if (tagTexts) {
            const std::u16string_view field = tagTexts->Get(i);
            if (field.empty())
                return false;
            for (const std::u16string& tag : tags) {
                if (occurs(field, tag))
                    return true;
            }
            return false;
        }
        return true;
    };
    std::vector<int>& hits = m_results.Positions();
    for (int i = 0; i < m_stations.GetSize(); ++i) {
        if (holds(i))
            hits.push_back(i);
    }
    return m_results.GetSize();
}

void CRadioBrowseDb::ClearCriteria() {
    m_results.RemoveAll();
    m_bFindName = m_bFindCountry = m_bFindState = m_bFindLanguage = FALSE;
    m_bFindTags = m_bMinClicks = m_bMinVotes = FALSE;
    m_findName.Empty();
    m_findCountry.Empty();
    m_findState.Empty();
    m_findLanguage.Empty();
    m_findTags.RemoveAll();
    m_minClicks = 0;
    m_minVotes = 0;
}

void CRadioBrowseDb::ClearSearch() {
    m_results.RemoveAll();
    ClearCriteria();
}

void CRadioBrowseDb::SortResults(BOOL ascending, BOOL byName, BOOL byVotes, BOOL byClicks) {
    if (m_results.IsEmpty() || (!byName && !byVotes && !byClicks))
        return;
    // The folded names of the index are the sort keys "without case".
    const CStationSearchIndex::CColumn& names =
        SearchIndex().Column(m_stations, CStationSearchIndex::name);
    const bool up = ascending != 0;
    auto byNameOnly = [&](int a, int b) {
        return up ? names.Get(a) < names.Get(b) : names.Get(b) < names.Get(a);
    };
    std::vector<int>& positions = m_results.Positions();
    // Equal records keep their previous order.
    if (byName) {
        std::stable_sort(positions.begin(), positions.end(), byNameOnly);
        return;
    }
    const int32_t CStation::*key = byVotes ? &CStation::m_votes : &CStation::m_clicks;
    std::stable_sort(positions.begin(), positions.end(), [&](int a, int b) {
        const int32_t ka = m_stations[a].*key;
        const int32_t kb = m_stations[b].*key;
        if (ka != kb)
            return up ? ka < kb : kb < ka;
        return byNameOnly(a, b);
    });
}
