#include <gtest/gtest.h>

#include "app/OrvexApp.h"
#include "platform/base/FontDialog.h"
#include "tests/app/DocFixtures.h"
#include "tests/contents/TreeBuilder.h"
#include "tests/support/MessageBoxRecorder.h"
#include "tests/support/TempDir.h"

namespace {

const CString kSavePrompt(u"Save Changes to Contents?");

// Answers the font dialog with a fixed choice, or cancels.
class FontChoice {
public:
    explicit FontChoice(bool ok) {
        m_previous = SetFontDialogHook([this, ok](LOGFONTW& font, DWORD flags) {
            m_flags = flags;
            m_started = font;
            if (!ok) {
                font.lfHeight = 99; // a dialog may scribble on its copy before Cancel
                return FALSE;
            }
            font.lfHeight = -20;
            SetFaceName(font, CString(u"Chosen"));
            return TRUE;
        });
    }
    ~FontChoice() { SetFontDialogHook(m_previous); }

    DWORD m_flags = 0;
    LOGFONTW m_started{};

private:
    FontDialogHook m_previous;
};

} // namespace

TEST(SaveModified, StopsPlaybackAndAsksNothingWhenNothingChanged) {
    RunningProgram program;
    MessageBoxRecorder boxes;
    const std::string before = program.Contents();
    EXPECT_TRUE(program.doc->SaveModified());
    EXPECT_EQ(program.log, std::vector<std::string>{"stop"});
    EXPECT_TRUE(boxes.Boxes().empty());
    EXPECT_EQ(program.Contents(), before);
}

TEST(SaveModified, AnswerYesSavesBothFilesAnswerNoWritesNothing) {
    RunningProgram program;
    Ensure(program.doc->m_contents, {u"A"});
    program.doc->m_bContentsChanged = TRUE;
    MessageBoxRecorder boxes;
    boxes.Answer(IDNO);
    EXPECT_TRUE(program.doc->SaveModified());
    ASSERT_EQ(boxes.Boxes().size(), 1u);
    EXPECT_EQ(boxes.Boxes()[0].text, kSavePrompt);
    EXPECT_EQ(boxes.Boxes()[0].type, MB_YESNO | MB_ICONINFORMATION);
    EXPECT_EQ(program.Contents(), "");
    EXPECT_EQ(program.User(), "");

    // The prompt comes after playback has stopped.
    program.log.clear();
    boxes.Clear();
    EXPECT_TRUE(program.doc->SaveModified());
    EXPECT_EQ(program.log, std::vector<std::string>{"stop"});
    EXPECT_EQ(boxes.Texts(), std::vector<CString>{kSavePrompt});
    EXPECT_EQ(program.Contents().size(), 34u); // the one-topic tree
    EXPECT_EQ(program.User().size(), 204u + 8u);
}

TEST(SaveContentsCommand, WritesBothFilesAndClearsTheFlagEvenOnFailure) {
    RunningProgram program;
    Ensure(program.doc->m_contents, {u"A"});
    program.doc->m_bContentsChanged = TRUE;
    MessageBoxRecorder boxes;
    program.doc->OnSaveContents();
    EXPECT_FALSE(program.doc->m_bContentsChanged);
    EXPECT_TRUE(boxes.Boxes().empty()); // no message of success
    EXPECT_EQ(program.Contents().size(), 34u);
    EXPECT_EQ(program.User().size(), 212u);

    program.doc->m_dataFolder = CString(program.root / "gone");
    program.doc->m_bContentsChanged = TRUE;
    program.doc->OnSaveContents();
    EXPECT_FALSE(program.doc->m_bContentsChanged);
    EXPECT_EQ(boxes.Boxes().size(), 2u); // neither file could be opened
    // So the exit asks nothing.
    boxes.Clear();
    program.doc->SaveModified();
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST(FontCommands, OkTakesTheFontTellsThePaneAndMarksTheChange) {
    COrvexDoc doc;
    RecordingView view;
    doc.AddView(&view);
    const LOGFONTW before = doc.m_rightFont;
    {
        FontChoice cancel(false);
        doc.OnFontRight();
        EXPECT_EQ(memcmp(&doc.m_rightFont, &before, sizeof before), 0);
        EXPECT_TRUE(view.m_hints.empty());
        EXPECT_FALSE(doc.m_bContentsChanged);
        EXPECT_EQ(cancel.m_flags, CF_EFFECTS | CF_SCREENFONTS);
    }
    {
        FontChoice ok(true);
        doc.OnFontLeft();
        EXPECT_EQ(memcmp(&ok.m_started, &before, sizeof before), 0); // starts on the pane's font
        EXPECT_EQ(GetFaceName(doc.m_leftFont), CString(u"Chosen"));
        EXPECT_EQ(doc.m_rightFont.lfHeight, before.lfHeight);
        EXPECT_EQ(view.Numbers(), std::vector<int>{HINT_LEFT_FONT});
        EXPECT_TRUE(doc.m_bContentsChanged);
        doc.OnFontRight();
        EXPECT_EQ(doc.m_rightFont.lfHeight, -20);
        EXPECT_EQ(view.Numbers(), (std::vector<int>{HINT_LEFT_FONT, HINT_RIGHT_FONT}));
    }
    // Without any dialog nothing can be chosen.
    COrvexDoc plain;
    plain.OnFontLeft();
    EXPECT_FALSE(plain.m_bContentsChanged);
}

TEST(DiscChange, ArrivalIsToldRemovalStopsDiscPlaybackFirst) {
    RunningProgram program;
    RecordingView view;
    program.doc->AddView(&view);
    program.doc->OnDiscChange(CString(u"/dev/sr0"), TRUE);
    ASSERT_EQ(view.m_hints.size(), 1u);
    EXPECT_EQ(view.m_hints[0],
              (RecordingView::Hint{HINT_DISC_ARRIVED, CString(u"/dev/sr0"), true}));
    EXPECT_TRUE(program.log.empty());
    program.doc->OnDiscChange(CString(u"/dev/sr1"), FALSE);
    EXPECT_EQ(program.log, std::vector<std::string>{"stop disc"});
    ASSERT_EQ(view.m_hints.size(), 2u);
    EXPECT_EQ(view.m_hints[1],
              (RecordingView::Hint{HINT_DISC_REMOVED, CString(u"/dev/sr1"), true}));

    // Without a frame a removal tells nobody.
    COrvexDoc alone;
    RecordingView other;
    alone.AddView(&other);
    program.app.reset();
    alone.OnDiscChange(CString(u"/dev/sr0"), FALSE);
    EXPECT_TRUE(other.m_hints.empty());
}
