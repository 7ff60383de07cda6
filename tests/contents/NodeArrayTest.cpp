#include <gtest/gtest.h>

#include "contents/NodeArray.h"
#include "tests/contents/TreeBuilder.h"

TEST(CNodeArray, NamesAndParents) {
    CNodeArray empty;
    CNodeArray out;
    EXPECT_EQ(empty.GetName(), CString());
    EXPECT_FALSE(empty.GetParentPath(out));
    CNodeItem last;
    EXPECT_FALSE(empty.GetLastNode(last));
    empty.SetLastIndex(3); // nothing to change
    EXPECT_TRUE(empty.IsEmpty());
    empty.SetName(CString(u"Favorites"));
    ASSERT_EQ(empty.GetSize(), 1);
    EXPECT_EQ(empty[0].m_index, -1);

    CNodeArray root = MakePath({{u"Music", 0}});
    ASSERT_TRUE(root.GetParentPath(out));
    EXPECT_TRUE(out == root); // a root is its own parent
    CNodeArray deep = MakePath({{u"Music", 0}, {u"Jazz", 2}, {u"Cool", 1}});
    ASSERT_TRUE(deep.GetParentPath(out));
    EXPECT_TRUE(out == MakePath({{u"Music", 0}, {u"Jazz", 2}}));
    EXPECT_EQ(deep.GetPathString(), CString(u"Music\\Jazz\\Cool"));
    deep.SetName(CString(u"Hot"));
    deep.SetLastIndex(5);
    EXPECT_TRUE(deep[2] == CNodeItem(CString(u"Hot"), 5));
    CStringArray names;
    names.Add(CString(u"stale"));
    deep.GetPathNames(names);
    EXPECT_EQ(names.GetSize(), 3);
    EXPECT_EQ(names[2], CString(u"Hot"));

    CNodeArray fromText;
    fromText.SetFromPath(CString(u" A \\B\\ C"));
    EXPECT_EQ(fromText.GetPathString(), CString(u"A\\B\\C"));
    EXPECT_EQ(fromText[1].m_index, -1);
    fromText.SetFromPath(CString());
    EXPECT_EQ(fromText.GetSize(), 3);
}

TEST(CNodeArray, SiblingAndPrefixTests) {
    BOOL flag = TRUE;
    CNodeArray a = MakePath({{u"A", 0}});
    CNodeArray b = MakePath({{u"B", 4}});
    EXPECT_TRUE(a.IsSiblingOf(b, &flag));
    EXPECT_TRUE(flag); // any two roots
    CNodeArray a1 = MakePath({{u"A", 0}, {u"X", 1}});
    CNodeArray a2 = MakePath({{u"A", 0}, {u"Y", 3}});
    CNodeArray b1 = MakePath({{u"B", 4}, {u"X", 1}});
    EXPECT_TRUE(a1.IsSiblingOf(a2, &flag));
    EXPECT_FALSE(flag);
    EXPECT_FALSE(a1.IsSiblingOf(b1, &flag));
    EXPECT_FALSE(a.IsSiblingOf(a1, &flag));
    EXPECT_FALSE(CNodeArray().IsSiblingOf(CNodeArray(), &flag));

    EXPECT_TRUE(a.IsPrefixOf(a1, &flag));
    EXPECT_FALSE(flag);
    EXPECT_TRUE(a1.IsPrefixOf(a1, &flag));
    EXPECT_TRUE(flag);
    EXPECT_FALSE(a1.IsPrefixOf(a, &flag));
    EXPECT_FALSE(MakePath({{u"A", 1}}).IsPrefixOf(a1, &flag)); // positions count too
    EXPECT_FALSE(CNodeArray().IsPrefixOf(a1, &flag));

    EXPECT_TRUE(MakePath({{u"A", 7}}).IsNamePrefixOf(Names({u"A", u"X"}), &flag));
    EXPECT_FALSE(flag);
    EXPECT_TRUE(a1.IsNamePrefixOf(Names({u"A", u"X"}), &flag));
    EXPECT_TRUE(flag);
    EXPECT_FALSE(a1.IsNamePrefixOf(Names({u"A", u"x"}), &flag));
}
