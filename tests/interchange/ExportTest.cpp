#include <gtest/gtest.h>

#include "interchange/Export.h"
#include "interchange/ImportPlacing.h"
#include "interchange/MediaRecordFormat.h"
#include "tests/interchange/InterchangeHelpers.h"
#include "tests/support/TempDir.h"

namespace {

CTopic TopicCopy(CMediaContents& tree, std::initializer_list<const char16_t*> names) {
    CStringArray list;
    for (const char16_t* n : names)
        list.Add(CString(n));
    CNodeArray path;
    EXPECT_TRUE(tree.EnsureTopicPath(list, nullptr, path));
    CTopic topic;
    EXPECT_TRUE(tree.GetTopicCopy(path, topic));
    return topic;
}

} // namespace

TEST(TopicExport, SubTopicRecordsKeepTheirFullTopicsFromTheRoot) {
    TempDir dir;
    CMediaContents tree = SampleTree();
    const CTopic radio = TopicCopy(tree, {u"Radio"});
    CExportOptions options;
    options.m_form = EXPORT_FORM_MEDIA_RECORDS;
    int count = 0;
    ASSERT_EQ(ExportTopicFile(radio, CString(dir / "t.txt"), options, nullptr, &count),
              TOPIC_EXPORT_WRITTEN);
    EXPECT_EQ(count, 2);
    const std::string text = TempDir::Read(dir / "t.txt");
    EXPECT_EQ(text.rfind("\r\n// Orvex Media List\r\n", 0), 0u);
    EXPECT_NE(text.find("6\r\nRadio,TV,News\r\n"), std::string::npos);

    CTopicStrAliasAr aliases;
    CMediaArray items;
    int read = 0;
    ASSERT_TRUE(ReadMediaRecordFile(CString(dir / "t.txt"), &aliases, items, &read));
    CMediaContents back;
    OverwriteContents(back, items);
    const auto flat = Flatten(back);
    ASSERT_EQ(flat.size(), 2u);
    EXPECT_EQ(flat[1].first, u"Radio\\TV\\News");
}

TEST(TopicExport, CountsHeadsAndRefusals) {
    TempDir dir;
    CMediaContents tree;
    tree.AddItemByTopics(Item(MEDIA_AUDIO_URL, u"n", u"http://n", {u"Outer", u"Inner"}), FALSE);
    tree.AddItemByTopics(Item(MEDIA_VIDEO_FILE, u"f", u"/v/f.mkv", {u"Films"}), FALSE);
    CExportOptions options;
    options.m_form = EXPORT_FORM_M3U;
    options.m_unicode = TRUE;
    int count = 0;
    // A topic holding only a sub-topic counts the sub-topic's items.
    const CTopic outer = TopicCopy(tree, {u"Outer"});
    ASSERT_EQ(ExportTopicFile(outer, CString(dir / "t.m3u"), options, nullptr, &count),
              TOPIC_EXPORT_WRITTEN);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(TempDir::Read(dir / "t.m3u").rfind("\xFF\xFE\r\0\n\0#\0", 0), 0u);
    EXPECT_EQ(ExportTopicFile(outer, CString(dir / "no/such/dir.m3u"), options, nullptr, &count),
              TOPIC_EXPORT_OPEN_FAILED);

    // Every item left out: the head alone, and still written.
    options.m_form = EXPORT_FORM_MEDIA_RECORDS;
    options.m_unicode = FALSE;
    options.m_excludeDiscFiles = TRUE;
    const CTopic films = TopicCopy(tree, {u"Films"});
    count = 0;
    ASSERT_EQ(ExportTopicFile(films, CString(dir / "t.txt"), options, nullptr, &count),
              TOPIC_EXPORT_WRITTEN);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(TempDir::Read(dir / "t.txt"), "\r\n// Orvex Media List\r\n\r\n"
                                            "// Media Record Format 0.1\r\n"
                                            "// See MediaRecordFormat.txt for definitions.\r\n");
    options.m_form = EXPORT_FORM_NONE;
    EXPECT_EQ(ExportTopicFile(films, CString(dir / "e.txt"), options, nullptr, &count),
              TOPIC_EXPORT_NO_FORM);
    EXPECT_EQ(TempDir::Read(dir / "e.txt"), "");
}

TEST(TreeExport, TreeWithoutExportableItemsIsAHeadAndASuccess) {
    TempDir dir;
    CMediaContents tree;
    tree.AddItemByTopics(Item(MEDIA_AUDIO_FILE, u"f", u"/a/f.mp3", {u"Songs"}), FALSE);
    int count = 0;
    ASSERT_TRUE(ExportTreeM3u(tree, CString(dir / "o.m3u"), FALSE, &count));
    EXPECT_EQ(count, 0);
    EXPECT_EQ(TempDir::Read(dir / "o.m3u"), "\r\n#EXTM3U\r\n\r\n");
    EXPECT_FALSE(ExportTreeM3u(tree, CString(dir / "missing/o.m3u"), FALSE, &count));
}
