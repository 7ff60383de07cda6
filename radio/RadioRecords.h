// The records of the radio database and the tables that hold them by value.
#pragma once
#include "platform/base/Array.h"
#include "platform/base/CString.h"

class CStation {
public:
    CString m_name;
    CString m_url;
    CString m_country;
    CString m_state;
    CString m_language;
    CString m_tags;
    int32_t m_votes = 0;
    int32_t m_clicks = 0;

    void Reset();
    friend bool operator==(const CStation&, const CStation&) = default;
};

// A country or a language: a display name, its code, and whether any station
// carries the code.
class CCodeRecord {
public:
    CString m_name;
    CString m_code;
    int32_t m_used = 0;
    friend bool operator==(const CCodeRecord&, const CCodeRecord&) = default;
};
class CCountryCode : public CCodeRecord {};
class CLanguageCode : public CCodeRecord {};

class CState {
public:
    CString m_name;
    CString m_countryCode;
    int32_t m_count = 0;
    friend bool operator==(const CState&, const CState&) = default;
};

class CTag {
public:
    CString m_name;
    int32_t m_count = 0;
    friend bool operator==(const CTag&, const CTag&) = default;
};

class CStationAr : public CArray<CStation> {};

template <typename Record>
class CCodeArray : public CArray<Record> {
public:
    // Marks the first record with exactly this code; 1 only when it was
    // unmarked before.
    BOOL SetUsed(const CString& code) {
        for (Record& record : *this) {
            if (record.m_code == code) {
                if (record.m_used)
                    return FALSE;
                record.m_used = 1;
                return TRUE;
            }
        }
        return FALSE;
    }
};
class CCountryCodeArray : public CCodeArray<CCountryCode> {};
class CLanguageCodeArray : public CCodeArray<CLanguageCode> {};

class CTagArray : public CArray<CTag> {
public:
    // By name without case, ascending.
    void SortTags();
};

class CStateArray : public CArray<CState> {
public:
    // By country code, then by name, both without case, ascending.
    void SortStates();
};

// The sort key of text "without case": decoded as people read it, in simple
// case folding.
std::u16string FoldForSort(const CString& text);
