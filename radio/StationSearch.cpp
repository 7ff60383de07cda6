// The search over all stations: every criterion that is set must hold, the
// tags among themselves need only one. A text criterion holds when it occurs
// anywhere in its field, both decoded and in simple case folding.
#include <algorithm>
#include <iterator>

#include "radio/RadioBrowseDb.h"
#include "radio/StationSearchIndex.h"
#include "radio/StationText.h"
#include "radio/TextFind.h"

CStationSearchIndex::CStationSearchIndex(const CStationAr& stations) : m_size(stations.GetSize()) {
    size_t total = 0;
    for (const CStation& s : stations) {
        total += s.m_name.str().size() + s.m_country.str().size() + s.m_state.str().size() +
                 s.m_language.str().size() + s.m_tags.str().size();
    }
    // Decoding never makes text longer.
    m_text.reserve(total);
    m_spans.reserve(static_cast<size_t>(m_size) * fieldCount);
    for (const CStation& s : stations) {
        for (const CString* field :
             {&s.m_name, &s.m_country, &s.m_state, &s.m_language, &s.m_tags}) {
            const size_t begin = m_text.size();
            AppendFoldedStationText(field->view(), m_text);
            m_spans.push_back(
                {static_cast<uint32_t>(begin), static_cast<uint32_t>(m_text.size() - begin)});
        }
    }
}

int CRadioBrowseDb::CountCriteria() const {
    return m_bFindName + m_bFindCountry + m_bFindState + m_bFindLanguage + m_bFindTags +
           m_bMinClicks + m_bMinVotes;
}

void CRadioBrowseDb::DropResults() {
    // The records go to the spare set with their strings' memory, for the
    // next search to copy into; no string is freed on the way.
    std::vector<CStation>& results = m_results.Items();
    if (m_spareResults.empty()) {
        results.swap(m_spareResults);
    } else {
        m_spareResults.insert(m_spareResults.end(), std::make_move_iterator(results.begin()),
                              std::make_move_iterator(results.end()));
        results.clear();
    }
}

int CRadioBrowseDb::SearchStations() {
    DropResults();
    if (CountCriteria() == 0)
        return 0;
    if (!m_searchIndex || m_searchIndex->GetSize() != m_stations.GetSize())
        m_searchIndex = std::make_unique<CStationSearchIndex>(m_stations);
    const CStationSearchIndex& index = *m_searchIndex;

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
    // Matches are noted first and copied afterwards into a table of the right
    // size: a search that hits most stations copies each once.
    std::vector<int> hits;
    // A station is in when every criterion that is set holds, so the first
    // that fails ends its tests; the cheap ones go first.
    auto holds = [&](int i) {
        const CStation& station = m_stations[i];
        if (m_bMinClicks && station.m_clicks < m_minClicks)
            return false;
        if (m_bMinVotes && station.m_votes < m_minVotes)
            return false;
        if (m_bFindCountry && !occurs(index.Get(i, CStationSearchIndex::country), country))
            return false;
        if (m_bFindLanguage && !occurs(index.Get(i, CStationSearchIndex::language), language))
            return false;
        if (m_bFindState && !occurs(index.Get(i, CStationSearchIndex::state), state))
            return false;
        if (m_bFindName && !occurs(index.Get(i, CStationSearchIndex::name), name))
            return false;
        if (m_bFindTags) {
            const std::u16string_view field = index.Get(i, CStationSearchIndex::tags);
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
    for (int i = 0; i < m_stations.GetSize(); ++i) {
        if (holds(i))
            hits.push_back(i);
    }
    std::vector<CStation>& results = m_results.Items();
    const size_t reused = std::min(hits.size(), m_spareResults.size());
    results.reserve(hits.size());
    results.insert(results.end(),
                   std::make_move_iterator(m_spareResults.end() - static_cast<long>(reused)),
                   std::make_move_iterator(m_spareResults.end()));
    m_spareResults.resize(m_spareResults.size() - reused);
    results.resize(hits.size());
    for (size_t k = 0; k < hits.size(); ++k)
        results[k] = m_stations[hits[k]];
    return m_results.GetSize();
}

void CRadioBrowseDb::ClearCriteria() {
    DropResults();
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
    DropResults();
    ClearCriteria();
}

void CRadioBrowseDb::SortResults(BOOL ascending, BOOL byName, BOOL byVotes, BOOL byClicks) {
    if (m_results.IsEmpty())
        return;
    m_results.SortStations(ascending, byName, byVotes, byClicks);
}
