#include <gtest/gtest.h>

#include "tests/contents/TreeBuilder.h"

namespace {

// Roots R0..R(n-1) (n up to 10); each root Ri has one child "Ci" holding
// one item.
std::u16string Numbered(char16_t letter, int i) {
    return {letter, static_cast<char16_t>(u'0' + i)};
}

CMediaContents Roots(int n) {
    CMediaContents tree;
    for (int i = 0; i < n; ++i) {
        const std::u16string root = Numbered(u'R', i), child = Numbered(u'C', i);
        const std::u16string item = child + u"-item";
        tree.AddItem(Ensure(tree, {root.c_str(), child.c_str()}),
                     MakeItem(item.c_str(), MEDIA_AUDIO_FILE, {root.c_str(), child.c_str()}),
                     FALSE);
    }
    return tree;
}

CNodeArray RootPath(int i) {
    return MakePath({{Numbered(u'R', i).c_str(), i}});
}

CNodeArray Child(const CMediaContents& tree, std::initializer_list<int> positions) {
    const CTopicArray* level = &tree.m_topics;
    const CTopic* topic = nullptr;
    for (int p : positions) {
        topic = &(*level)[p];
        level = &topic->m_children;
    }
    return topic->Path();
}

} // namespace

TEST(TopicDeletion, RenumbersAndPicksTheCurrentTopic) {
    CMediaContents tree = Roots(5);
    ASSERT_TRUE(tree.DeleteTopic(RootPath(3), TRUE));
    EXPECT_EQ(ChildNames(tree), CString(u"R0,R1,R2,R4"));
    EXPECT_EQ(tree.m_currentTopic.GetName(), CString(u"R2"));
    EXPECT_TRUE(PathsConsistent(tree));
    EXPECT_TRUE(tree.m_topics[3].m_children[0].Path() == MakePath({{u"R4", 3}, {u"C4", 0}}));

    CMediaContents two = Roots(2);
    ASSERT_TRUE(two.DeleteTopic(RootPath(0), TRUE));
    EXPECT_TRUE(two.m_currentTopic.Path() == MakePath({{u"R1", 0}}));
    ASSERT_TRUE(two.DeleteTopic(MakePath({{u"R1", 0}}), TRUE));
    EXPECT_TRUE(two.m_topics.IsEmpty());
    EXPECT_TRUE(two.m_currentTopic.IsEmpty());

    // The last child goes: the parent, now without children, becomes current.
    CMediaContents one = Roots(1);
    ASSERT_TRUE(one.DeleteTopic(MakePath({{u"R0", 0}, {u"C0", 0}}), TRUE));
    EXPECT_EQ(one.m_currentTopic.GetName(), CString(u"R0"));
    EXPECT_TRUE(one.m_currentTopic.m_children.IsEmpty());
    EXPECT_FALSE(one.DeleteTopic(CNodeArray(), TRUE));
}

TEST(TopicRename, RewritesPathsAndTopicListsBelow) {
    CMediaContents tree;
    CNodeArray jazz = Ensure(tree, {u"Music", u"Jazz"});
    CNodeArray music = Ensure(tree, {u"Music"});
    tree.AddItem(jazz, MakeItem(u"j", MEDIA_AUDIO_FILE, {u"Music", u"Jazz"}), FALSE);
    tree.AddItem(music, MakeItem(u"m", MEDIA_AUDIO_FILE, {u"Music"}), FALSE);
    ASSERT_TRUE(tree.EditTopic(music, CString(u"Songs"), MEDIA_VIDEO_FILE, TRUE));
    EXPECT_EQ(tree.m_currentTopic.m_mediaType, MEDIA_VIDEO_FILE);
    const CTopic& child = tree.m_topics[0].m_children[0];
    EXPECT_TRUE(child.Path() == MakePath({{u"Songs", 0}, {u"Jazz", 0}}));
    EXPECT_EQ(child.m_media[0].TopicsAsList(), CString(u"Songs,Jazz"));
    // Items directly in the renamed topic keep the list they were filed with.
    EXPECT_EQ(tree.m_topics[0].m_media[0].TopicsAsList(), CString(u"Music"));
}

TEST(TopicAddChild, TakesTheNameAndTheNextPosition) {
    CMediaContents tree = Roots(1);
    CTopic fresh;
    EXPECT_FALSE(tree.AddChildTopic(RootPath(0), fresh, TRUE)); // no name node
    fresh.SetName(CString(u"New"));
    EXPECT_FALSE(tree.AddChildTopic(CNodeArray(), fresh, TRUE));
    EXPECT_FALSE(tree.AddChildTopic(MakePath({{u"R0", 1}}), fresh, TRUE));
    // A topic with a subtree from elsewhere is re-pathed where it lands.
    CTopic subtree = tree.m_topics[0];
    ASSERT_TRUE(tree.AddChildTopic(RootPath(0), subtree, TRUE));
    EXPECT_TRUE(tree.m_currentTopic.Path() == MakePath({{u"R0", 0}, {u"R0", 1}}));
    EXPECT_EQ(tree.m_currentTopic.m_children[0].m_media[0].TopicsAsList(), CString(u"R0,R0,C0"));
    EXPECT_TRUE(PathsConsistent(tree));
}

TEST(TopicMoveSibling, ReordersRootsAndChildren) {
    CMediaContents tree = Roots(4);
    ASSERT_TRUE(tree.MoveSibling(RootPath(0), RootPath(2), TRUE, TRUE));
    EXPECT_EQ(ChildNames(tree), CString(u"R1,R2,R0,R3"));
    EXPECT_TRUE(tree.m_currentTopic.Path() == MakePath({{u"R0", 2}}));
    EXPECT_TRUE(PathsConsistent(tree));
    EXPECT_EQ(tree.m_topics[2].m_children[0].m_media[0].TopicsAsList(), CString(u"R0,C0"));

    // In front of the target, and to the end.
    CMediaContents t2 = Roots(4);
    ASSERT_TRUE(t2.MoveSibling(RootPath(3), RootPath(1), FALSE, TRUE));
    EXPECT_EQ(ChildNames(t2), CString(u"R0,R3,R1,R2"));
    ASSERT_TRUE(t2.MoveSibling(MakePath({{u"R0", 0}}), MakePath({{u"R2", 3}}), TRUE, TRUE));
    EXPECT_EQ(ChildNames(t2), CString(u"R3,R1,R2,R0"));
    EXPECT_TRUE(PathsConsistent(t2));

    // The Favorites row stands above all roots: before or behind it is place 0.
    for (BOOL after : {FALSE, TRUE}) {
        CMediaContents t3 = Roots(3);
        ASSERT_TRUE(t3.MoveSibling(RootPath(2), MakePath({{u"Favorites", -1}}), after, TRUE));
        EXPECT_EQ(ChildNames(t3), CString(u"R2,R0,R1"));
        EXPECT_TRUE(PathsConsistent(t3));
    }

    // Children: the last behind itself, or any behind the last, stays last.
    CMediaContents kids;
    CNodeArray a = Ensure(kids, {u"P", u"A"});
    CNodeArray b = Ensure(kids, {u"P", u"B"});
    CNodeArray c = Ensure(kids, {u"P", u"C"});
    CNodeArray p = Ensure(kids, {u"P"});
    ASSERT_TRUE(kids.MoveSibling(c, c, TRUE, TRUE));
    EXPECT_EQ(ChildNames(kids, &p), CString(u"A,B,C"));
    ASSERT_TRUE(kids.MoveSibling(a, c, TRUE, TRUE));
    EXPECT_EQ(ChildNames(kids, &p), CString(u"B,C,A"));
    EXPECT_TRUE(kids.m_currentTopic.Path() == MakePath({{u"P", 0}, {u"A", 2}}));
    ASSERT_TRUE(kids.MoveSibling(MakePath({{u"P", 0}, {u"A", 2}}), MakePath({{u"P", 0}, {u"B", 0}}),
                                 FALSE, TRUE));
    EXPECT_EQ(ChildNames(kids, &p), CString(u"A,B,C"));
    EXPECT_TRUE(PathsConsistent(kids));

    EXPECT_FALSE(kids.MoveSibling(p, b, FALSE, TRUE)); // lengths differ
    EXPECT_FALSE(kids.MoveSibling(MakePath({{u"P", 0}, {u"Z", 1}}), b, FALSE, TRUE)); // stale
}

TEST(TopicRelocate, MovesSubtreesAnywhereAndKeepsAllPathsValid) {
    // A child behind the last root becomes the last root, with its subtree.
    CMediaContents tree = Roots(3);
    CNodeArray c0 = Child(tree, {0, 0});
    ASSERT_TRUE(tree.RelocateTopic(c0, RootPath(2), RELOCATE_AFTER, TRUE));
    EXPECT_EQ(ChildNames(tree), CString(u"R0,R1,R2,C0"));
    EXPECT_TRUE(tree.m_currentTopic.Path() == MakePath({{u"C0", 3}}));
    EXPECT_TRUE(PathsConsistent(tree));
    EXPECT_TRUE(tree.m_topics[0].m_children.IsEmpty());

    // From in front of the target to under it: the target keeps its subtree.
    CMediaContents t2 = Roots(3);
    ASSERT_TRUE(t2.RelocateTopic(RootPath(0), RootPath(2), RELOCATE_INTO, TRUE));
    EXPECT_EQ(ChildNames(t2), CString(u"R1,R2"));
    CNodeArray r2 = MakePath({{u"R2", 1}});
    EXPECT_EQ(ChildNames(t2, &r2), CString(u"C2,R0"));
    EXPECT_TRUE(PathsConsistent(t2));
    // The moved topic is current where it now stands, not where it first landed.
    EXPECT_TRUE(t2.m_currentTopic.Path() == MakePath({{u"R2", 1}, {u"R0", 1}}));
    EXPECT_EQ(t2.m_currentTopic.m_children[0].m_media[0].TopicsAsList(), CString(u"R2,R0,C0"));

    // From behind the target into it: deletion first.
    CMediaContents t3 = Roots(3);
    ASSERT_TRUE(t3.RelocateTopic(Child(t3, {2, 0}), RootPath(0), RELOCATE_BEFORE, TRUE));
    EXPECT_EQ(ChildNames(t3), CString(u"C2,R0,R1,R2"));
    EXPECT_TRUE(t3.m_currentTopic.Path() == MakePath({{u"C2", 0}}));
    EXPECT_TRUE(PathsConsistent(t3));

    // Between children of different parents, in front of the target.
    CMediaContents t4 = Roots(3);
    ASSERT_TRUE(t4.RelocateTopic(Child(t4, {0, 0}), Child(t4, {2, 0}), RELOCATE_BEFORE, TRUE));
    CNodeArray r2b = MakePath({{u"R2", 2}});
    EXPECT_EQ(ChildNames(t4, &r2b), CString(u"C0,C2"));
    EXPECT_TRUE(t4.m_currentTopic.Path() == MakePath({{u"R2", 2}, {u"C0", 0}}));
    EXPECT_TRUE(PathsConsistent(t4));

    // Siblings go through the sibling move.
    CMediaContents t5 = Roots(3);
    ASSERT_TRUE(t5.RelocateTopic(RootPath(0), RootPath(2), RELOCATE_AFTER, TRUE));
    EXPECT_EQ(ChildNames(t5), CString(u"R1,R2,R0"));
}

TEST(TopicRelocate, RefusesItsOwnSubtreeBadModesAndSamePaths) {
    CMediaContents tree = Roots(2);
    CNodeArray r0 = RootPath(0);
    CNodeArray c0 = Child(tree, {0, 0});
    EXPECT_FALSE(tree.RelocateTopic(r0, c0, RELOCATE_INTO, TRUE));
    EXPECT_FALSE(tree.RelocateTopic(r0, c0, RELOCATE_AFTER, TRUE));
    EXPECT_FALSE(tree.RelocateTopic(r0, r0, RELOCATE_INTO, TRUE));
    EXPECT_FALSE(tree.RelocateTopic(r0, RootPath(1), 0, TRUE));
    EXPECT_FALSE(tree.RelocateTopic(r0, RootPath(1), 4, TRUE));
    EXPECT_FALSE(tree.RelocateTopic(MakePath({{u"R0", 1}}), RootPath(1), RELOCATE_INTO, TRUE));
    EXPECT_EQ(ChildNames(tree), CString(u"R0,R1"));
    EXPECT_EQ(tree.m_topics[0].m_children.GetSize(), 1);
    EXPECT_TRUE(tree.m_currentTopic.IsEmpty());

    // A child may move into its own parent: it goes last there.
    ASSERT_TRUE(tree.RelocateTopic(c0, r0, RELOCATE_INTO, TRUE));
    EXPECT_EQ(tree.m_topics[0].m_children.GetSize(), 1);
    EXPECT_TRUE(PathsConsistent(tree));
}

TEST(PathAfterDeletion, ShiftsOnlyLaterSiblingsAndTheirSubtrees) {
    CNodeArray deleted = MakePath({{u"A", 0}, {u"B", 1}});
    EXPECT_TRUE(PathAfterDeletion(MakePath({{u"A", 0}, {u"C", 2}, {u"D", 0}}), deleted) ==
                MakePath({{u"A", 0}, {u"C", 1}, {u"D", 0}}));
    EXPECT_TRUE(PathAfterDeletion(MakePath({{u"A", 0}, {u"Z", 0}}), deleted) ==
                MakePath({{u"A", 0}, {u"Z", 0}}));
    EXPECT_TRUE(PathAfterDeletion(MakePath({{u"X", 1}, {u"C", 2}}), deleted) ==
                MakePath({{u"X", 1}, {u"C", 2}}));
    EXPECT_TRUE(PathAfterDeletion(MakePath({{u"A", 0}}), deleted) == MakePath({{u"A", 0}}));
}
