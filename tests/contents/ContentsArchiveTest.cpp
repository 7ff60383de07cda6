#include <gtest/gtest.h>

#include "contents/MediaContents.h"
#include "contents/TopicAliases.h"
#include "platform/base/Archive.h"
#include "tests/contents/TreeBuilder.h"
#include "tests/support/FileBytes.h"
#include "tests/support/TempDir.h"

using namespace filebytes;

namespace {

std::string StoreBytes(const CMediaContents& tree, const CTopicStrAliasAr& aliases) {
    TempDir dir;
    CFile file(dir.File("out.dat"), CFile::modeCreate | CFile::modeWrite);
    CArchive ar(&file, CArchive::store);
    int schema = 1;
    tree.Store(ar, aliases, &schema);
    ar.Close();
    file.Close();
    return TempDir::Read(dir / "out.dat");
}

// Loads the bytes into `tree`; gives the cause of the archive exception that
// ended the load, or -1 when it ran to the end.
int LoadBytes(const std::string& bytes, CMediaContents& tree, const CTopicStrAliasAr& aliases) {
    TempDir dir;
    TempDir::Write(dir / "in.dat", bytes);
    CFile file(dir.File("in.dat"), CFile::modeRead);
    CArchive ar(&file, CArchive::load);
    int schema = 1;
    try {
        tree.Load(ar, aliases, &schema);
    } catch (const CArchiveException& e) {
        return e.m_cause;
    }
    return -1;
}

// The two-root example tree: Music (4) with child Jazz (4) holding the
// favourite Blue, and News (1) holding one stream.
CMediaContents ExampleTree() {
    CMediaContents tree;
    const CNodeArray jazz = Ensure(tree, {u"Music", u"Jazz"});
    tree.AddItem(jazz, MakeItem(u"Blue", MEDIA_AUDIO_FILE, {u"Music", u"Jazz"}, TRUE), FALSE);
    const CNodeArray news = Ensure(tree, {u"News"}, MEDIA_AUDIO_URL);
    CMediaItem stream = MakeItem(u"World", MEDIA_AUDIO_URL, {u"News"});
    stream.m_location = u"http://radio/world";
    tree.AddItem(news, stream, FALSE);
    return tree;
}

std::string Node(const char16_t* name, int32_t index) {
    return Wide(CString(name)) + I32(index);
}

std::string ExampleBytes() {
    return I32(2) +
           // Music: path, type, no items, one child
           I32(1) + Node(u"Music", 0) + I32(4) + I32(0) + I32(1) +
           // Jazz: path of two nodes, type, one item, no children
           I32(2) + Node(u"Music", 0) + Node(u"Jazz", 0) + I32(4) + I32(1) + I32(4) +
           Wide(CString(u"Blue")) + Wide(CString(u"/media/Blue")) + I32(2) +
           Wide(CString(u"Music")) + Wide(CString(u"Jazz")) + I32(1) + I32(0) +
           // News
           I32(1) + Node(u"News", 1) + I32(1) + I32(1) + I32(1) + Wide(CString(u"World")) +
           Wide(CString(u"http://radio/world")) + I32(1) + Wide(CString(u"News")) + I32(0) + I32(0);
}

} // namespace

TEST(ContentsArchive, TreeIsWrittenDepthFirstWithPathsAndItems) {
    EXPECT_EQ(StoreBytes(ExampleTree(), CTopicStrAliasAr()), ExampleBytes());
    EXPECT_EQ(StoreBytes(CMediaContents(), CTopicStrAliasAr()), I32(0));
}

TEST(ContentsArchive, LoadingTakesOrderIndicesAndPathsAsStored) {
    // Stored indices that disagree with positions and with the nesting are
    // taken as they stand; nothing is recomputed.
    const std::string bytes =
        I32(2) + I32(1) + Node(u"B", 7) + I32(3) + I32(2) + I32(4) + Wide(CString(u"z")) +
        Wide(CString(u"/z")) + I32(0) + I32(0) + I32(4) + Wide(CString(u"a")) +
        Wide(CString(u"/a")) + I32(1) + Wide(CString(u"Elsewhere")) + I32(5) + I32(1) + I32(1) +
        Node(u"Child", 3) + I32(99) + I32(0) + I32(0) + I32(0) + I32(2) + I32(0) + I32(0);
    CMediaContents tree;
    ASSERT_EQ(LoadBytes(bytes, tree, CTopicStrAliasAr()), -1);
    ASSERT_EQ(tree.m_topics.GetSize(), 2);
    const CTopic& b = tree.m_topics[0];
    EXPECT_EQ(b.GetName(), CString(u"B"));
    EXPECT_EQ(b[0].m_index, 7);
    EXPECT_EQ(b.m_mediaType, MEDIA_VIDEO_FILE);
    ASSERT_EQ(b.m_media.GetSize(), 2);
    EXPECT_EQ(b.m_media[0].m_name, CString(u"z"));
    EXPECT_EQ(b.m_media[1].m_name, CString(u"a"));
    EXPECT_EQ(b.m_media[1].m_topics.GetSize(), 1);
    EXPECT_EQ(b.m_media[1].m_topics[0], CString(u"Elsewhere"));
    EXPECT_EQ(b.m_media[1].m_favorite, 5); // the word as stored
    ASSERT_EQ(b.m_children.GetSize(), 1);
    EXPECT_EQ(b.m_children[0].GetSize(), 1); // a one-node path under B, as stored
    EXPECT_EQ(b.m_children[0][0].m_index, 3);
    EXPECT_EQ(static_cast<uint32_t>(b.m_children[0].m_mediaType), 99u);
    EXPECT_TRUE(tree.m_topics[1].IsEmpty());
    EXPECT_EQ(tree.m_topics[1].m_mediaType, MEDIA_VIDEO_URL);
    // And it goes back out byte for byte.
    EXPECT_EQ(StoreBytes(tree, CTopicStrAliasAr()), bytes);
}

TEST(ContentsArchive, LoadingAppendsToTheRoots) {
    CMediaContents tree = ExampleTree();
    ASSERT_EQ(LoadBytes(ExampleBytes(), tree, CTopicStrAliasAr()), -1);
    EXPECT_EQ(ChildNames(tree), CString(u"Music,News,Music,News"));
}

TEST(ContentsArchive, NarrowStringsAreReadAndWrittenBackWide) {
    const std::string bytes = I32(1) + I32(1) + Narrow("Gr\xC3\xBCn") + I32(0) + I32(4) + I32(1) +
                              I32(4) + Narrow("Song") + Narrow("/m/song.mp3") + I32(1) +
                              Narrow("Gr\xC3\xBCn") + I32(0) + I32(0);
    CMediaContents tree;
    ASSERT_EQ(LoadBytes(bytes, tree, CTopicStrAliasAr()), -1);
    ASSERT_EQ(tree.m_topics.GetSize(), 1);
    EXPECT_EQ(tree.m_topics[0].GetName(), CString(u"Grün"));
    EXPECT_EQ(tree.m_topics[0].m_media[0].m_location, CString(u"/m/song.mp3"));
    EXPECT_EQ(tree.m_topics[0].m_media[0].m_topics[0], CString(u"Grün"));
    const std::string wide = I32(1) + I32(1) + Node(u"Grün", 0) + I32(4) + I32(1) + I32(4) +
                             Wide(CString(u"Song")) + Wide(CString(u"/m/song.mp3")) + I32(1) +
                             Wide(CString(u"Grün")) + I32(0) + I32(0);
    EXPECT_EQ(StoreBytes(tree, CTopicStrAliasAr()), wide);
}

TEST(ContentsArchive, TopicNamesGoThroughTheAliasTableItemNamesDoNot) {
    CTopicStrAliasAr aliases;
    aliases.AddAlias(CString(u"X"), CString(u"Long Name"));
    CMediaContents tree;
    const CNodeArray path = Ensure(tree, {u"Long Name"});
    CMediaItem item = MakeItem(u"Long Name", MEDIA_AUDIO_FILE, {u"Long Name"});
    item.m_location = u"Long Name";
    tree.AddItem(path, item, FALSE);

    const std::string bytes = StoreBytes(tree, aliases);
    const std::string expected = I32(1) + I32(1) + Node(u"X", 0) + I32(4) + I32(1) + I32(4) +
                                 Wide(CString(u"Long Name")) + Wide(CString(u"Long Name")) +
                                 I32(1) + Wide(CString(u"X")) + I32(0) + I32(0);
    EXPECT_EQ(bytes, expected);

    CMediaContents back;
    ASSERT_EQ(LoadBytes(bytes, back, aliases), -1);
    EXPECT_EQ(back.m_topics[0].GetName(), CString(u"Long Name"));
    EXPECT_EQ(back.m_topics[0].m_media[0], item);

    // A topic that was X before the table had its row reads as Long Name.
    CMediaContents plain;
    Ensure(plain, {u"X"});
    CMediaContents mapped;
    ASSERT_EQ(LoadBytes(StoreBytes(plain, CTopicStrAliasAr()), mapped, aliases), -1);
    EXPECT_EQ(mapped.m_topics[0].GetName(), CString(u"Long Name"));
    // Without the table the stored form is what comes back.
    CMediaContents unmapped;
    ASSERT_EQ(LoadBytes(bytes, unmapped, CTopicStrAliasAr()), -1);
    EXPECT_EQ(unmapped.m_topics[0].GetName(), CString(u"X"));
}

TEST(ContentsArchive, NamesOf254And255CharactersUseTheirLengthForms) {
    CMediaContents tree;
    const CString name254(std::u16string(254, u'n'));
    const CString name255(std::u16string(255, u'm'));
    const CString name70000(std::u16string(70000, u'q'));
    CTopic topic;
    topic.Add(CNodeItem(name254, 0));
    topic.Add(CNodeItem(name255, 1));
    topic.Add(CNodeItem(name70000, 2));
    tree.m_topics.Add(topic);
    const std::string bytes = StoreBytes(tree, CTopicStrAliasAr());
    EXPECT_EQ(bytes.substr(8, 4), std::string("\xFF\xFE\xFF\xFE", 4));
    const size_t second = 8 + 4 + 254 * 2 + 4;
    EXPECT_EQ(bytes.substr(second, 6), std::string("\xFF\xFE\xFF\xFF\xFF\x00", 6));
    const size_t third = second + 6 + 255 * 2 + 4;
    EXPECT_EQ(bytes.substr(third, 10),
              std::string("\xFF\xFE\xFF\xFF\xFF\xFF\x70\x11\x01\x00", 10)); // 70000 = 0x11170
    EXPECT_EQ(bytes, I32(1) + I32(3) + Wide(name254) + I32(0) + Wide(name255) + I32(1) +
                         Wide(name70000) + I32(2) + I32(0) + I32(0) + I32(0));
    CMediaContents back;
    ASSERT_EQ(LoadBytes(bytes, back, CTopicStrAliasAr()), -1);
    EXPECT_TRUE(back.m_topics[0] == topic);
}

TEST(ContentsArchive, BadCountsEndAtTheEndOfTheData) {
    // Negative counts read as no elements.
    CMediaContents tree;
    ASSERT_EQ(
        LoadBytes(I32(1) + I32(-5) + I32(3) + I32(-1) + I32(INT32_MIN), tree, CTopicStrAliasAr()),
        -1);
    ASSERT_EQ(tree.m_topics.GetSize(), 1);
    EXPECT_TRUE(tree.m_topics[0].IsEmpty());

    // A count that promises two billion topics costs nothing up front.
    CMediaContents huge;
    EXPECT_EQ(
        LoadBytes(I32(INT32_MAX) + I32(0) + I32(4) + I32(0) + I32(0), huge, CTopicStrAliasAr()),
        CArchiveException::endOfFile);
    EXPECT_EQ(huge.m_topics.GetSize(), 1); // the one complete topic

    // So does a string that claims more characters than the file holds.
    CMediaContents longName;
    EXPECT_EQ(
        LoadBytes(I32(1) + I32(1) + std::string("\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x7F") + "ab",
                  longName, CTopicStrAliasAr()),
        CArchiveException::endOfFile);
    EXPECT_TRUE(longName.m_topics.IsEmpty());
}

TEST(ContentsArchive, ACutOffTreeKeepsTheTopicsReadBeforeTheCut) {
    const std::string full = ExampleBytes();
    // Cut inside News: Music with its child is complete, News is lost.
    const size_t newsStart = full.find(Node(u"News", 1)) - 4;
    for (size_t cut : {newsStart, newsStart + 3, full.size() - 1}) {
        CMediaContents tree;
        EXPECT_EQ(LoadBytes(full.substr(0, cut), tree, CTopicStrAliasAr()),
                  CArchiveException::endOfFile);
        EXPECT_EQ(ChildNames(tree), CString(u"Music"));
    }
    // A cut inside Music's child loses Music as a whole.
    CMediaContents early;
    EXPECT_EQ(LoadBytes(full.substr(0, 40), early, CTopicStrAliasAr()),
              CArchiveException::endOfFile);
    EXPECT_TRUE(early.m_topics.IsEmpty());
}

TEST(ContentsArchive, NestingDeeperThanAnyLibraryIsRefused) {
    auto nested = [](int depth) {
        std::string bytes = I32(1);
        for (int level = 0; level < depth; ++level)
            bytes += I32(0) + I32(0) + I32(0) + I32(level + 1 < depth ? 1 : 0);
        return bytes;
    };
    CMediaContents fits;
    EXPECT_EQ(LoadBytes(nested(1000), fits, CTopicStrAliasAr()), -1);
    ASSERT_EQ(fits.m_topics.GetSize(), 1);
    CMediaContents tooDeep;
    EXPECT_EQ(LoadBytes(nested(1001), tooDeep, CTopicStrAliasAr()), CArchiveException::badSchema);
    EXPECT_TRUE(tooDeep.m_topics.IsEmpty());
}
