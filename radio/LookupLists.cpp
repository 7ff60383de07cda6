// The lists derived from the stations and the two name files. Tags and
// states are counted through hash indexes over the tables; each index maps a
// text to the first record that holds it, which is the record a search from
// the table's start would find.
#include <vector>

#include "platform/base/AppContext.h"
#include "platform/base/CommaRecordFile.h"
#include "radio/ListIndexes.h"
#include "radio/RadioBrowseDb.h"
#include "radio/TextKeys.h"

namespace {

// A state is found by its name and its country code together; the length in
// front keeps every pair apart.
std::u16string StateKey(std::u16string_view name, std::u16string_view code) {
    std::u16string key;
    key.reserve(name.size() + code.size() + 2);
    const uint32_t length = static_cast<uint32_t>(name.size());
    key.push_back(static_cast<char16_t>(length & 0xFFFF));
    key.push_back(static_cast<char16_t>(length >> 16));
    key.append(name);
    key.append(code);
    return key;
}

template <typename Table>
int LoadCodeTable(Table& table, const char16_t* fileName) {
    table.RemoveAll();
    const CString path = AfxGetAppContext().GetStartDirectory() + u"/" + fileName;
    const BOOL read = ReadCommaRecordFile(path, [&](CString&& name, CString&& code) {
        typename Table::value_type record;
        record.m_name = std::move(name);
        record.m_code = std::move(code);
        table.Add(std::move(record));
    });
    return read ? table.GetSize() : 0;
}

// Marks, for each text, the first record with that code, counting the marks
// made now; like SetUsed for every station, with one look-up each.
template <typename Table, typename Texts>
int MarkCodesUsed(Table& table, const Texts& texts) {
    TextKeyMap<int> first;
    for (int i = 0; i < table.GetSize(); ++i)
        first.try_emplace(table[i].m_code.str(), i);
    int marked = 0;
    for (const CString* text : texts) {
        auto it = first.find(text->view());
        if (it == first.end())
            continue;
        int32_t& used = table[it->second].m_used;
        if (!used) {
            used = 1;
            ++marked;
        }
    }
    return marked;
}

// Indexes the table anew when it has changed size since it was indexed.
template <typename Table, typename KeyOf>
void SyncIndex(TextKeyMap<int>& index, int& indexed, const Table& table, KeyOf keyOf) {
    if (indexed == table.GetSize())
        return;
    index.clear();
    for (int i = 0; i < table.GetSize(); ++i)
        index.try_emplace(keyOf(table[i]), i);
    indexed = table.GetSize();
}

} // namespace

int CRadioBrowseDb::BuildCountryCodesArray() {
    return LoadCodeTable(m_countries, u"RadioBrowse_CC.txt");
}

int CRadioBrowseDb::BuildLanguageCodesArray() {
    return LoadCodeTable(m_languages, u"RadioBrowse_LC.txt");
}

int CRadioBrowseDb::SetCountryCodesUsed() {
    if (m_countries.IsEmpty() || m_stations.IsEmpty())
        return 0;
    std::vector<const CString*> codes;
    codes.reserve(m_stations.Items().size());
    for (const CStation& station : m_stations)
        codes.push_back(&station.m_country);
    return MarkCodesUsed(m_countries, codes);
}

int CRadioBrowseDb::SetLanguageCodesUsed() {
    if (m_languages.IsEmpty() || m_stations.IsEmpty())
        return 0;
    std::vector<const CString*> codes;
    for (const CStation& station : m_stations) {
        if (!station.m_language.IsEmpty())
            codes.push_back(&station.m_language);
    }
    return MarkCodesUsed(m_languages, codes);
}

CRadioBrowseDb::ListIndexes& CRadioBrowseDb::Indexes() {
    if (!m_listIndexes)
        m_listIndexes = std::make_unique<ListIndexes>();
    return *m_listIndexes;
}

void CRadioBrowseDb::AddTag(const CString& name) {
    ListIndexes& index = Indexes();
    SyncIndex(index.tags, index.tagsIndexed, m_tags,
              [](const CTag& tag) { return tag.m_name.str(); });
    auto [it, added] = index.tags.try_emplace(name.str(), m_tags.GetSize());
    if (!added) {
        ++m_tags[it->second].m_count;
        return;
    }
    CTag tag;
    tag.m_name = name;
    tag.m_count = 1;
    m_tags.Add(std::move(tag));
    index.tagsIndexed = m_tags.GetSize();
}

void CRadioBrowseDb::AddState(const CString& name, const CString& countryCode) {
    ListIndexes& index = Indexes();
    SyncIndex(index.states, index.statesIndexed, m_states, [](const CState& state) {
        return StateKey(state.m_name.view(), state.m_countryCode.view());
    });
    auto [it, added] =
        index.states.try_emplace(StateKey(name.view(), countryCode.view()), m_states.GetSize());
    if (!added) {
        ++m_states[it->second].m_count;
        return;
    }
    CState state;
    state.m_name = name;
    state.m_countryCode = countryCode;
    state.m_count = 1;
    m_states.Add(std::move(state));
    index.statesIndexed = m_states.GetSize();
}

void CRadioBrowseDb::AddStationTags(const CString& tags) {
    std::u16string_view rest = tags.view();
    while (!rest.empty()) {
        const size_t comma = rest.find(u',');
        const std::u16string_view piece =
            comma == std::u16string_view::npos ? rest : rest.substr(0, comma);
        AddTag(CString(TrimView(piece)));
        rest = comma == std::u16string_view::npos ? std::u16string_view() : rest.substr(comma + 1);
    }
}

int CRadioBrowseDb::BuildTagArray(int minCount) {
    m_tags.RemoveAll();
    m_listIndexes.reset();
    for (const CStation& station : m_stations) {
        if (!station.m_tags.IsEmpty())
            AddStationTags(station.m_tags);
    }
    CTagArray kept;
    for (CTag& tag : m_tags) {
        if (tag.m_count >= minCount)
            kept.Add(std::move(tag));
    }
    kept.SortTags();
    m_tags = std::move(kept);
    m_listIndexes.reset();
    return m_tags.GetSize();
}

int CRadioBrowseDb::BuildStateArray() {
    m_states.RemoveAll();
    m_listIndexes.reset();
    for (const CStation& station : m_stations) {
        if (!station.m_state.IsEmpty() && !station.m_country.IsEmpty())
            AddState(station.m_state, station.m_country);
    }
    m_states.SortStates();
    m_listIndexes.reset();
    return m_states.GetSize();
}

namespace {

// The language table prepared once for many look-ups: names in upper case
// and, for two-character texts, the first record of each code.
class CLanguageMatcher {
public:
    explicit CLanguageMatcher(const CLanguageCodeArray& languages) : m_languages(languages) {
        m_upperNames.reserve(languages.Items().size());
        for (int i = 0; i < languages.GetSize(); ++i) {
            m_upperNames.push_back(UpperText(languages[i].m_name.view()));
            m_firstCode.try_emplace(languages[i].m_code.str(), i);
        }
    }

    // 0 nothing, 1 a name found (code set), 2 a known two-character code.
    int Find(const CString& text, CString& code) {
        if (m_languages.IsEmpty())
            return 0;
        if (text.GetLength() == 2)
            return m_firstCode.count(text.view()) ? 2 : 0;
        const std::u16string upper = UpperText(text.view());
        for (size_t i = 0; i < m_upperNames.size(); ++i) {
            if (upper.find(m_upperNames[i]) != std::u16string::npos) {
                code = m_languages[static_cast<int>(i)].m_code;
                return 1;
            }
        }
        return 0;
    }

private:
    const CLanguageCodeArray& m_languages;
    std::vector<std::u16string> m_upperNames;
    TextKeyMap<int> m_firstCode;
};

} // namespace

int CRadioBrowseDb::FindLanguageCode(const CString& text, CString& code) {
    return CLanguageMatcher(m_languages).Find(text, code);
}

void CRadioBrowseDb::ResolveLanguageCodes() {
    if (m_languages.IsEmpty() || m_stations.IsEmpty())
        return;
    CLanguageMatcher matcher(m_languages);
    // The directory repeats the same few thousand language texts; each is
    // looked up once.
    struct Answer {
        int result;
        CString code;
    };
    TextKeyMap<Answer> answers;
    InvalidateSearchIndex();
    for (CStation& station : m_stations) {
        if (station.m_language.IsEmpty())
            continue;
        auto it = answers.find(station.m_language.view());
        if (it == answers.end()) {
            Answer answer{0, CString()};
            answer.result = matcher.Find(station.m_language, answer.code);
            it = answers.emplace(station.m_language.str(), std::move(answer)).first;
        }
        if (it->second.result == 1)
            station.m_language = it->second.code;
    }
}

BOOL CRadioBrowseDb::MeetsLimits() const {
    return m_stations.GetSize() >= RB_MIN_STATIONS && m_countries.GetSize() >= RB_MIN_COUNTRIES &&
           m_tags.GetSize() >= RB_MIN_TAGS && m_states.GetSize() >= RB_MIN_STATES &&
           m_languages.GetSize() >= RB_MIN_LANGUAGES;
}
