#include <gtest/gtest.h>

#include "platform/base/Array.h"
#include "platform/base/CString.h"
#include "platform/base/Utf.h"

TEST(CString, ComparesWithAndWithoutCase) {
    CString a(u"Jazz"), b(u"jazz");
    EXPECT_FALSE(a == b);
    EXPECT_NE(a.Compare(b), 0);
    EXPECT_EQ(a.CompareNoCase(b), 0);
    EXPECT_LT(CString(u"apple").CompareNoCase(CString(u"Banana")), 0);
    EXPECT_GT(CString(u"b").CompareNoCase(CString(u"A")), 0);
    EXPECT_LT(CString(u"ab").CompareNoCase(CString(u"ABC")), 0);
    // Case folding reaches beyond ASCII, independent of the user's locale.
    EXPECT_EQ(CString(u"MÜNCHEN").CompareNoCase(CString(u"münchen")), 0);
    EXPECT_EQ(CString(u"ПРИВЕТ").CompareNoCase(CString(u"привет")), 0);
    EXPECT_TRUE(CString(u"Favorites") == "Favorites");
    EXPECT_FALSE(CString(u"Favorite") == "Favorites");
    EXPECT_TRUE(CString(u"Grün") == "Grün");
}

TEST(CString, FindMidAndTrimFollowTheirBounds) {
    CString s(u"  one\\two\\three \t\r\n");
    EXPECT_EQ(s.Find(u'\\'), 5);
    EXPECT_EQ(s.Find(u'\\', 6), 9);
    EXPECT_EQ(s.Find(CString(u"three")), 10);
    EXPECT_EQ(s.Find(u'x'), -1);
    EXPECT_EQ(s.Find(u'o', 100), -1);
    EXPECT_EQ(s.ReverseFind(u'\\'), 9);
    EXPECT_EQ(s.FindOneOf(CString(u"wt")), 6);
    s.Trim();
    EXPECT_EQ(s, CString(u"one\\two\\three"));

    CString t(u"abcdef");
    EXPECT_EQ(t.Mid(2), CString(u"cdef"));
    EXPECT_EQ(t.Mid(2, 2), CString(u"cd"));
    EXPECT_EQ(t.Mid(4, 100), CString(u"ef"));
    EXPECT_EQ(t.Mid(10), CString());
    EXPECT_EQ(t.Mid(-3, 2), CString(u"ab"));
    EXPECT_EQ(t.Left(10), t);
    EXPECT_EQ(t.Right(2), CString(u"ef"));
    EXPECT_EQ(t.Right(-1), CString());
    EXPECT_THROW(t.GetAt(6), CInvalidArgException);

    CString trimmed(u"xxhixx");
    trimmed.Trim(u'x');
    EXPECT_EQ(trimmed, CString(u"hi"));
    CString none(u"   ");
    none.Trim();
    EXPECT_TRUE(none.IsEmpty());
}

TEST(CString, EditsInPlace) {
    CString s(u"a,b,,c");
    EXPECT_EQ(s.Replace(u',', u';'), 3);
    EXPECT_EQ(s, CString(u"a;b;;c"));
    EXPECT_EQ(s.Replace(CString(u";;"), CString(u"--")), 1);
    EXPECT_EQ(s, CString(u"a;b--c"));
    EXPECT_EQ(s.Remove(u'-'), 2);
    s.Insert(0, CString(u">"));
    s.Delete(1, 2);
    EXPECT_EQ(s, CString(u">bc"));
    CString upper(u"Straße ÄÖ x");
    upper.MakeUpper();
    EXPECT_EQ(upper, CString(u"STRAßE ÄÖ X")); // one unit maps to one unit
    upper.MakeLower();
    EXPECT_EQ(upper, CString(u"straße äö x"));

    int start = 0;
    CString list(u",a,,bc,");
    EXPECT_EQ(list.Tokenize(CString(u","), start), CString(u"a"));
    EXPECT_EQ(list.Tokenize(CString(u","), start), CString(u"bc"));
    EXPECT_TRUE(list.Tokenize(CString(u","), start).IsEmpty());
    EXPECT_EQ(start, -1);
}

TEST(CString, FormatTakesEachArgumentByItsOwnType) {
    CString s;
    s.Format(u"%d.%d.%d.%d", 0, 9, 0, 0);
    EXPECT_EQ(s, CString(u"0.9.0.0"));
    s.Format(u"[%s|%s|%s]", CString(u"wide"), "utf8 é", u"raw");
    EXPECT_EQ(s, CString(u"[wide|utf8 é|raw]"));
    s.Format(u"%5d|%-4s|%03u|%x|%.2f|%%|%c", 42, CString(u"ab"), 7u, 255, 3.14159, u'Z');
    EXPECT_EQ(s, CString(u"   42|ab  |007|ff|3.14|%|Z"));
    s.Format(u"%lld %I64d %ld", static_cast<long long>(1) << 40, int64_t(-5), 12L);
    EXPECT_EQ(s, CString(u"1099511627776 -5 12"));
    // Missing arguments and unknown conversions never read beyond the list.
    s.Format(u"%s and %d and %y");
    EXPECT_EQ(s, CString(u" and  and %y"));
    s.AppendFormat(u"!%s", CString(u"x"));
    EXPECT_EQ(s, CString(u" and  and %y!x"));
}

TEST(Utf, RoundTripsAndReplacesMalformedInput) {
    const std::u16string text = u"A é € 𝄞 Ж 中";
    EXPECT_EQ(Utf8ToUtf16(Utf16ToUtf8(text)), text);
    EXPECT_EQ(Utf16ToUtf8(u"𝄞"), "\xF0\x9D\x84\x9E");
    EXPECT_EQ(Utf8ToUtf16("a\xFF"
                          "b"),
              u"a\uFFFDb");
    EXPECT_EQ(Utf8ToUtf16("a\xE2\x82"), u"a\uFFFD");     // cut-off sequence
    EXPECT_EQ(Utf8ToUtf16("\xC0\xAF"), u"\uFFFD\uFFFD"); // overlong lead is invalid
    EXPECT_EQ(Utf8ToUtf16("\xED\xA0\x80"), u"\uFFFD");   // encoded surrogate
    EXPECT_EQ(Utf16ToUtf8(std::u16string(1, char16_t(0xD800))), "\xEF\xBF\xBD");
    EXPECT_EQ(GetACP(), 65001u);
}

TEST(CArray, BoundsAreChecked) {
    CStringArray a;
    a.Add(CString(u"x"));
    a.InsertAt(0, CString(u"w"));
    a.InsertAt(2, CString(u"y"));
    ASSERT_EQ(a.GetSize(), 3);
    EXPECT_EQ(a[0], CString(u"w"));
    EXPECT_EQ(a[2], CString(u"y"));
    EXPECT_THROW(a[3], CInvalidArgException);
    EXPECT_THROW(a.InsertAt(5, CString()), CInvalidArgException);
    EXPECT_THROW(a.RemoveAt(2, 2), CInvalidArgException);
    a.RemoveAt(0);
    EXPECT_EQ(a[0], CString(u"x"));
}
