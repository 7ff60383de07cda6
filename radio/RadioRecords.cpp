#include "radio/RadioRecords.h"

#include <algorithm>
#include <numeric>

#include "radio/StationText.h"

void CStation::Reset() {
    m_name.Empty();
    m_url.Empty();
    m_country.Empty();
    m_state.Empty();
    m_language.Empty();
    m_tags.Empty();
    m_votes = 0;
    m_clicks = 0;
}

std::u16string FoldForSort(const CString& text) {
    return FoldedStationText(text.view());
}

namespace {

// Sorts `items` by precomputed keys: folding every name once costs far less
// than folding both operands at each of the n log n comparisons.
template <typename T, typename Less>
void SortByKeys(std::vector<T>& items, Less less) {
    std::vector<size_t> order(items.size());
    std::iota(order.begin(), order.end(), size_t{0});
    std::stable_sort(order.begin(), order.end(), less);
    std::vector<T> sorted;
    sorted.reserve(items.size());
    for (size_t index : order)
        sorted.push_back(std::move(items[index]));
    items = std::move(sorted);
}

} // namespace

void CTagArray::SortTags() {
    std::vector<CTag>& items = Items();
    std::vector<std::u16string> names(items.size());
    for (size_t i = 0; i < items.size(); ++i)
        names[i] = FoldForSort(items[i].m_name);
    SortByKeys(items, [&](size_t a, size_t b) { return names[a] < names[b]; });
}

void CStateArray::SortStates() {
    std::vector<CState>& items = Items();
    std::vector<std::u16string> codes(items.size());
    std::vector<std::u16string> names(items.size());
    for (size_t i = 0; i < items.size(); ++i) {
        codes[i] = FoldForSort(items[i].m_countryCode);
        names[i] = FoldForSort(items[i].m_name);
    }
    SortByKeys(items, [&](size_t a, size_t b) {
        if (codes[a] != codes[b])
            return codes[a] < codes[b];
        return names[a] < names[b];
    });
}
