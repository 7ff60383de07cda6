// A growable string of UTF-16 units: the one text type of the program.
// Narrow (char) text is always UTF-8, which is the program's code page.
#pragma once
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "platform/base/Types.h"

class CString;

// One argument of CString::Format, captured with its own type so that the
// conversion in the format text never reads a value of the wrong width.
struct CFormatArg {
    enum Kind { Signed, Unsigned, Floating, Text16, Text8, Pointer };
    Kind kind = Signed;
    long long i = 0;
    unsigned long long u = 0;
    double d = 0;
    std::u16string_view s16;
    std::string_view s8;
    const void* p = nullptr;

    CFormatArg(const CString& s);
    CFormatArg(const char16_t* s) : kind(Text16), s16(s ? s : u"") {}
    CFormatArg(const char* s) : kind(Text8), s8(s ? s : "") {}
    CFormatArg(const std::string& s) : kind(Text8), s8(s) {}
    CFormatArg(const std::u16string& s) : kind(Text16), s16(s) {}
    CFormatArg(char16_t c) : kind(Unsigned), u(c) {}
    CFormatArg(char c) : kind(Signed), i(c) {}
    CFormatArg(bool b) : kind(Signed), i(b ? 1 : 0) {}
    CFormatArg(double v) : kind(Floating), d(v) {}
    CFormatArg(float v) : kind(Floating), d(v) {}
    template <typename T, std::enable_if_t<std::is_integral_v<T> && std::is_signed_v<T>, int> = 0>
    CFormatArg(T v) : kind(Signed), i(v) {}
    template <typename T, std::enable_if_t<std::is_integral_v<T> && std::is_unsigned_v<T>, int> = 0>
    CFormatArg(T v) : kind(Unsigned), u(v) {}
    template <typename T, std::enable_if_t<std::is_enum_v<T>, int> = 0>
    CFormatArg(T v) : kind(Signed), i(static_cast<long long>(v)) {}
    CFormatArg(const void* ptr) : kind(Pointer), p(ptr) {}
};

class CString {
public:
    CString() = default;
    CString(const char16_t* text);
    CString(const char16_t* text, int length);
    CString(const char* utf8);
    CString(const std::u16string& text) : m_text(text) {}
    CString(std::u16string&& text) : m_text(std::move(text)) {}
    explicit CString(std::u16string_view text) : m_text(text) {}
    explicit CString(const std::string& utf8);
    explicit CString(char16_t ch, int repeat = 1);

    static CString FromUtf8(std::string_view utf8);
    std::string ToUtf8() const;

    int GetLength() const { return static_cast<int>(m_text.size()); }
    BOOL IsEmpty() const { return m_text.empty(); }
    void Empty() { m_text.clear(); }
    char16_t GetAt(int index) const;
    void SetAt(int index, char16_t ch);
    char16_t operator[](int index) const { return GetAt(index); }
    const char16_t* GetString() const { return m_text.c_str(); }
    const std::u16string& str() const { return m_text; }
    std::u16string_view view() const { return m_text; }
    void Truncate(int newLength);
    void Preallocate(int length) { m_text.reserve(length > 0 ? length : 0); }

    CString& operator+=(const CString& other);
    CString& operator+=(const char16_t* other);
    CString& operator+=(const char* utf8);
    CString& operator+=(char16_t ch);
    void Append(const char16_t* text, int length);

    // Ordinal comparison of UTF-16 units, like wcscmp.
    int Compare(const CString& other) const;
    // Comparison with simple Unicode case folding.
    int CompareNoCase(const CString& other) const;

    int Find(char16_t ch, int start = 0) const;
    int Find(const CString& sub, int start = 0) const;
    int ReverseFind(char16_t ch) const;
    int FindOneOf(const CString& chars) const;

    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    CString Left(int count) const;
    CString Right(int count) const;
    CString SpanIncluding(const CString& chars) const;
    CString SpanExcluding(const CString& chars) const;
    CString Tokenize(const CString& delimiters, int& start) const;

    // Without an argument these remove white space (space, tab, CR, LF, VT, FF).
    CString& Trim();
    CString& Trim(char16_t ch);
    CString& Trim(const CString& chars);
    CString& TrimLeft();
    CString& TrimLeft(char16_t ch);
    CString& TrimLeft(const CString& chars);
    CString& TrimRight();
    CString& TrimRight(char16_t ch);
    CString& TrimRight(const CString& chars);

    CString& MakeUpper();
    CString& MakeLower();
    CString& MakeReverse();

    int Replace(char16_t oldCh, char16_t newCh);
    int Replace(const CString& oldText, const CString& newText);
    int Remove(char16_t ch);
    int Insert(int index, char16_t ch);
    int Insert(int index, const CString& text);
    int Delete(int index, int count = 1);

    // printf-style formatting; each argument is converted according to its
    // own type, so "%s" takes CString, char16_t*, char* (UTF-8) alike.
    template <typename... Args>
    void Format(const CString& format, const Args&... args) {
        const CFormatArg list[] = {CFormatArg(args)..., CFormatArg(0)};
        *this = FormatList(format, list, sizeof...(Args));
    }
    template <typename... Args>
    void AppendFormat(const CString& format, const Args&... args) {
        const CFormatArg list[] = {CFormatArg(args)..., CFormatArg(0)};
        *this += FormatList(format, list, sizeof...(Args));
    }
    static CString FormatList(const CString& format, const CFormatArg* args, size_t count);

    friend bool operator==(const CString& a, const CString& b) { return a.m_text == b.m_text; }
    friend bool operator==(const CString& a, const char16_t* b);
    friend bool operator==(const CString& a, const char* b);
    friend bool operator<(const CString& a, const CString& b) { return a.m_text < b.m_text; }

private:
    std::u16string m_text;
};

CString operator+(const CString& a, const CString& b);
CString operator+(const CString& a, const char16_t* b);
CString operator+(const char16_t* a, const CString& b);
CString operator+(const CString& a, const char* b);
CString operator+(const char* a, const CString& b);
CString operator+(const CString& a, char16_t b);

inline CFormatArg::CFormatArg(const CString& s) : kind(Text16), s16(s.view()) {}

// Case mapping of single UTF-16 units, shared by the string class and by
// code that compares without case in bulk.
char16_t ToUpperUnit(char16_t ch);
char16_t ToLowerUnit(char16_t ch);
bool IsWhiteSpaceUnit(char16_t ch);
// Unicode simple case folding (one unit to one) of the Basic Multilingual
// Plane: "É" and "é" fold alike, "ı" and "i" don't. For comparing text
// without case the way people expect; surrogate units stay as they are.
char16_t FoldCaseUnit(char16_t ch);
// The same folding as a table of all 65,536 units, for folding in bulk.
const char16_t* CaseFoldTable();

template <>
struct std::hash<CString> {
    size_t operator()(const CString& s) const noexcept {
        return std::hash<std::u16string>()(s.str());
    }
};
