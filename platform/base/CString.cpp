#include "platform/base/CString.h"

#include <algorithm>

#include "platform/base/Exceptions.h"
#include "platform/base/Utf.h"

namespace {

bool ContainsUnit(std::u16string_view set, char16_t ch) {
    return set.find(ch) != std::u16string_view::npos;
}

constexpr std::u16string_view kWhiteSpace = u" \t\r\n\v\f";

} // namespace

bool IsWhiteSpaceUnit(char16_t ch) {
    return ContainsUnit(kWhiteSpace, ch);
}

CString::CString(const char16_t* text) {
    if (text)
        m_text = text;
}

CString::CString(const char16_t* text, int length) {
    if (text && length > 0)
        m_text.assign(text, static_cast<size_t>(length));
}

CString::CString(const char* utf8) {
    if (utf8)
        m_text = Utf8ToUtf16(utf8);
}

CString::CString(const std::string& utf8) : m_text(Utf8ToUtf16(utf8)) {}

CString::CString(char16_t ch, int repeat) {
    if (repeat > 0)
        m_text.assign(static_cast<size_t>(repeat), ch);
}

CString CString::FromUtf8(std::string_view utf8) {
    return CString(Utf8ToUtf16(utf8));
}

std::string CString::ToUtf8() const {
    return Utf16ToUtf8(m_text);
}

char16_t CString::GetAt(int index) const {
    if (index < 0 || index >= GetLength())
        throw CInvalidArgException();
    return m_text[static_cast<size_t>(index)];
}

void CString::SetAt(int index, char16_t ch) {
    if (index < 0 || index >= GetLength())
        throw CInvalidArgException();
    m_text[static_cast<size_t>(index)] = ch;
}

void CString::Truncate(int newLength) {
    if (newLength < 0 || newLength > GetLength())
        throw CInvalidArgException();
    m_text.resize(static_cast<size_t>(newLength));
}

CString& CString::operator+=(const CString& other) {
    m_text += other.m_text;
    return *this;
}

CString& CString::operator+=(const char16_t* other) {
    if (other)
        m_text += other;
    return *this;
}

CString& CString::operator+=(const char* utf8) {
    if (utf8)
        m_text += Utf8ToUtf16(utf8);
    return *this;
}

CString& CString::operator+=(char16_t ch) {
    m_text += ch;
    return *this;
}

void CString::Append(const char16_t* text, int length) {
    if (text && length > 0)
        m_text.append(text, static_cast<size_t>(length));
}

int CString::Compare(const CString& other) const {
    int r = m_text.compare(other.m_text);
    return r < 0 ? -1 : (r > 0 ? 1 : 0);
}

int CString::CompareNoCase(const CString& other) const {
    const size_t n = std::min(m_text.size(), other.m_text.size());
    for (size_t i = 0; i < n; ++i) {
        char16_t a = ToLowerUnit(m_text[i]);
        char16_t b = ToLowerUnit(other.m_text[i]);
        if (a != b)
            return a < b ? -1 : 1;
    }
    if (m_text.size() == other.m_text.size())
        return 0;
    return m_text.size() < other.m_text.size() ? -1 : 1;
}

int CString::Find(char16_t ch, int start) const {
    if (start < 0)
        start = 0;
    if (start > GetLength())
        return -1;
    size_t pos = m_text.find(ch, static_cast<size_t>(start));
    return pos == std::u16string::npos ? -1 : static_cast<int>(pos);
}

int CString::Find(const CString& sub, int start) const {
    if (start < 0)
        start = 0;
    if (start > GetLength())
        return -1;
    size_t pos = m_text.find(sub.m_text, static_cast<size_t>(start));
    return pos == std::u16string::npos ? -1 : static_cast<int>(pos);
}

int CString::ReverseFind(char16_t ch) const {
    size_t pos = m_text.rfind(ch);
    return pos == std::u16string::npos ? -1 : static_cast<int>(pos);
}

int CString::FindOneOf(const CString& chars) const {
    size_t pos = m_text.find_first_of(chars.m_text);
    return pos == std::u16string::npos ? -1 : static_cast<int>(pos);
}

CString CString::Mid(int first) const {
    return Mid(first, GetLength());
}

CString CString::Mid(int first, int count) const {
    const int length = GetLength();
    if (first < 0)
        first = 0;
    if (count < 0)
        count = 0;
    if (first >= length)
        return CString();
    if (count > length - first)
        count = length - first;
    return CString(m_text.substr(static_cast<size_t>(first), static_cast<size_t>(count)));
}

CString CString::Left(int count) const {
    return Mid(0, count);
}

CString CString::Right(int count) const {
    if (count < 0)
        count = 0;
    if (count >= GetLength())
        return *this;
    return Mid(GetLength() - count, count);
}

CString CString::SpanIncluding(const CString& chars) const {
    size_t n = m_text.find_first_not_of(chars.m_text);
    return n == std::u16string::npos ? *this : Left(static_cast<int>(n));
}

CString CString::SpanExcluding(const CString& chars) const {
    size_t n = m_text.find_first_of(chars.m_text);
    return n == std::u16string::npos ? *this : Left(static_cast<int>(n));
}

CString CString::Tokenize(const CString& delimiters, int& start) const {
    if (start < 0 || start >= GetLength()) {
        start = -1;
        return CString();
    }
    size_t from = m_text.find_first_not_of(delimiters.m_text, static_cast<size_t>(start));
    if (from == std::u16string::npos) {
        start = -1;
        return CString();
    }
    size_t to = m_text.find_first_of(delimiters.m_text, from);
    if (to == std::u16string::npos)
        to = m_text.size();
    start = static_cast<int>(to + 1);
    return CString(m_text.substr(from, to - from));
}

CString& CString::Trim() {
    return TrimRight().TrimLeft();
}
CString& CString::Trim(char16_t ch) {
    return TrimRight(ch).TrimLeft(ch);
}
CString& CString::Trim(const CString& chars) {
    return TrimRight(chars).TrimLeft(chars);
}

CString& CString::TrimLeft() {
    return TrimLeft(CString(kWhiteSpace));
}
CString& CString::TrimLeft(char16_t ch) {
    return TrimLeft(CString(ch));
}
CString& CString::TrimLeft(const CString& chars) {
    size_t n = m_text.find_first_not_of(chars.m_text);
    m_text.erase(0, n == std::u16string::npos ? m_text.size() : n);
    return *this;
}

CString& CString::TrimRight() {
    return TrimRight(CString(kWhiteSpace));
}
CString& CString::TrimRight(char16_t ch) {
    return TrimRight(CString(ch));
}
CString& CString::TrimRight(const CString& chars) {
    size_t n = m_text.find_last_not_of(chars.m_text);
    m_text.erase(n == std::u16string::npos ? 0 : n + 1);
    return *this;
}

CString& CString::MakeUpper() {
    for (char16_t& ch : m_text)
        ch = ToUpperUnit(ch);
    return *this;
}

CString& CString::MakeLower() {
    for (char16_t& ch : m_text)
        ch = ToLowerUnit(ch);
    return *this;
}

CString& CString::MakeReverse() {
    std::reverse(m_text.begin(), m_text.end());
    return *this;
}

int CString::Replace(char16_t oldCh, char16_t newCh) {
    int count = 0;
    for (char16_t& ch : m_text) {
        if (ch == oldCh) {
            ch = newCh;
            ++count;
        }
    }
    return count;
}

int CString::Replace(const CString& oldText, const CString& newText) {
    if (oldText.IsEmpty())
        return 0;
    int count = 0;
    std::u16string result;
    size_t from = 0;
    for (;;) {
        size_t at = m_text.find(oldText.m_text, from);
        if (at == std::u16string::npos)
            break;
        result.append(m_text, from, at - from);
        result += newText.m_text;
        from = at + oldText.m_text.size();
        ++count;
    }
    if (count) {
        result.append(m_text, from, std::u16string::npos);
        m_text.swap(result);
    }
    return count;
}

int CString::Remove(char16_t ch) {
    size_t before = m_text.size();
    m_text.erase(std::remove(m_text.begin(), m_text.end(), ch), m_text.end());
    return static_cast<int>(before - m_text.size());
}

int CString::Insert(int index, char16_t ch) {
    return Insert(index, CString(ch));
}

int CString::Insert(int index, const CString& text) {
    index = std::clamp(index, 0, GetLength());
    m_text.insert(static_cast<size_t>(index), text.m_text);
    return GetLength();
}

int CString::Delete(int index, int count) {
    if (index < 0)
        index = 0;
    if (count > 0 && index < GetLength())
        m_text.erase(static_cast<size_t>(index), static_cast<size_t>(count));
    return GetLength();
}

bool operator==(const CString& a, const char16_t* b) {
    return a.m_text == (b ? b : u"");
}

bool operator==(const CString& a, const char* b) {
    if (!b)
        return a.m_text.empty();
    const auto* p = reinterpret_cast<const unsigned char*>(b);
    size_t i = 0;
    for (; p[i] && p[i] < 0x80; ++i) {
        if (i >= a.m_text.size() || a.m_text[i] != p[i])
            return false;
    }
    if (!p[i])
        return i == a.m_text.size();
    return a == CString(b);
}

CString operator+(const CString& a, const CString& b) {
    CString r(a);
    r += b;
    return r;
}
CString operator+(const CString& a, const char16_t* b) {
    CString r(a);
    r += b;
    return r;
}
CString operator+(const char16_t* a, const CString& b) {
    CString r(a);
    r += b;
    return r;
}
CString operator+(const CString& a, const char* b) {
    CString r(a);
    r += b;
    return r;
}
CString operator+(const char* a, const CString& b) {
    CString r(a);
    r += b;
    return r;
}
CString operator+(const CString& a, char16_t b) {
    CString r(a);
    r += b;
    return r;
}
