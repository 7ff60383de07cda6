// Simple (one unit to one unit) Unicode case mapping for the Basic Multilingual
// Plane. The tables come from the C library's C.UTF-8 locale, which does not
// depend on the user's locale settings, so comparisons give the same answer on
// every machine. Surrogate units map to themselves.
#include <clocale>
#include <cwctype>
#include <locale.h>
#include <memory>
#include <mutex>

#include "platform/base/CString.h"

namespace {

struct CaseTables {
    char16_t upper[0x10000];
    char16_t lower[0x10000];

    CaseTables() {
        locale_t utf8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", static_cast<locale_t>(0));
        for (unsigned u = 0; u < 0x10000; ++u) {
            char16_t up = static_cast<char16_t>(u);
            char16_t low = static_cast<char16_t>(u);
            if (u >= 0xD800 && u <= 0xDFFF) {
                // surrogates stay as they are
            } else if (utf8) {
                wint_t mu = towupper_l(static_cast<wint_t>(u), utf8);
                wint_t ml = towlower_l(static_cast<wint_t>(u), utf8);
                if (mu < 0x10000 && !(mu >= 0xD800 && mu <= 0xDFFF))
                    up = static_cast<char16_t>(mu);
                if (ml < 0x10000 && !(ml >= 0xD800 && ml <= 0xDFFF))
                    low = static_cast<char16_t>(ml);
            } else if (u < 0x80) {
                if (u >= 'a' && u <= 'z')
                    up = static_cast<char16_t>(u - 32);
                if (u >= 'A' && u <= 'Z')
                    low = static_cast<char16_t>(u + 32);
            }
            upper[u] = up;
            lower[u] = low;
        }
        if (utf8)
            freelocale(utf8);
    }
};

const CaseTables& Tables() {
    static const std::unique_ptr<CaseTables> tables = std::make_unique<CaseTables>();
    return *tables;
}

} // namespace

char16_t ToUpperUnit(char16_t ch) {
    if (ch < 0x80)
        return (ch >= u'a' && ch <= u'z') ? static_cast<char16_t>(ch - 32) : ch;
    return Tables().upper[ch];
}

char16_t ToLowerUnit(char16_t ch) {
    if (ch < 0x80)
        return (ch >= u'A' && ch <= u'Z') ? static_cast<char16_t>(ch + 32) : ch;
    return Tables().lower[ch];
}

namespace {

struct FoldRun {
    char16_t first;
    char16_t last;
    int distance;
    int stride;
};

constexpr FoldRun kFoldRuns[] = {
#include "platform/base/CaseFoldingTable.inc"
};

struct FoldTable {
    char16_t fold[0x10000];

    FoldTable() {
        for (unsigned u = 0; u < 0x10000; ++u)
            fold[u] = static_cast<char16_t>(u);
        for (const FoldRun& run : kFoldRuns) {
            for (unsigned u = run.first; u <= run.last; u += static_cast<unsigned>(run.stride))
                fold[u] = static_cast<char16_t>(static_cast<int>(u) + run.distance);
        }
    }
};

const FoldTable& Folds() {
    static const std::unique_ptr<FoldTable> table = std::make_unique<FoldTable>();
    return *table;
}

} // namespace

const char16_t* CaseFoldTable() {
    return Folds().fold;
}

char16_t FoldCaseUnit(char16_t ch) {
    if (ch < 0x80)
        return (ch >= u'A' && ch <= u'Z') ? static_cast<char16_t>(ch + 32) : ch;
    return Folds().fold[ch];
}
