// Media for the window tests, encoded once per test program, and the ways a
// test answers the modal dialogs the window opens.
#pragma once
#include <QDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QPointer>
#include <QTimer>

#include "platform/base/FileDialog.h"
#include "tests/player/PlayerTestSupport.h"
#include "tests/support/TestDiscs.h"
#include "tests/ui/FrameFixture.h"

struct FrameMedia {
    TempDir dir;
    std::string movie = dir / "movie.mkv"; // H.264 320x240 and Vorbis, 6 s
    std::string clip = dir / "clip.mkv";   // the same, 1 s
    std::string song = dir / "song.ogg";   // Vorbis only, 2 s

    static const FrameMedia& Get() {
        static FrameMedia media;
        return media;
    }

private:
    FrameMedia() {
        auto both = [](const std::string& path, int seconds) {
            return "videotestsrc num-buffers=" + std::to_string(seconds * 25) +
                   " ! video/x-raw,width=320,height=240,framerate=25/1 ! "
                   "x264enc speed-preset=ultrafast key-int-max=5 ! h264parse ! "
                   "matroskamux name=m ! filesink location=" +
                   path + " audiotestsrc num-buffers=" + std::to_string(seconds * 43) +
                   " samplesperbuffer=1024 ! audio/x-raw,rate=44100 ! audioconvert ! "
                   "vorbisenc ! m.";
        };
        EXPECT_TRUE(EncodeMedia(both(movie, 6)));
        EXPECT_TRUE(EncodeMedia(both(clip, 1)));
        EXPECT_TRUE(EncodeMedia("audiotestsrc num-buffers=86 samplesperbuffer=1024 ! "
                                "audio/x-raw,rate=44100,channels=2 ! audioconvert ! vorbisenc ! "
                                "oggmux ! filesink location=" +
                                song));
    }
};

// Answers the next modal dialog once it is open.
template <typename Dialog>
void AnswerDialog(std::function<void(Dialog*)> answer) {
    auto* poll = new QTimer;
    poll->setInterval(10);
    QObject::connect(poll, &QTimer::timeout, [poll, answer] {
        if (auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget())) {
            poll->stop();
            poll->deleteLater();
            answer(dialog);
            // A dialog the answer did not close must not hang the test.
            QPointer<QDialog> open(dialog);
            QTimer::singleShot(5000, [open] {
                if (open && open->isVisible()) {
                    ADD_FAILURE() << "the dialog stayed open";
                    open->reject();
                }
            });
        }
    });
    poll->start();
}

// Answers the next file dialog with this path, once.
inline void ChooseFile(const std::string& path) {
    auto previous = std::make_shared<FileDialogHook>();
    *previous = SetFileDialogHook([path, previous](const FileDialogRequest&, CString& chosen) {
        chosen = CString(path);
        SetFileDialogHook(*previous);
        return TRUE;
    });
}

// Types a text into the next dialog's line edit with this id, then OK.
inline void TypeAndConfirm(const char* editId, const QString& text) {
    AnswerDialog<QDialog>([editId, text](QDialog* dialog) {
        auto* edit = dialog->findChild<QLineEdit*>(QString::fromUtf8(editId));
        ASSERT_NE(edit, nullptr);
        edit->setText(text);
        dialog->accept();
    });
}

// Plays into sinks that need no device.
class PlaybackTest : public FrameTest {
protected:
    PlaybackTest() {
        SetGraphAudioSink("fakesink sync=true");
        SetGraphVideoSink("fakesink sync=true");
    }
    ~PlaybackTest() override {
        SetGraphAudioSink("");
        SetGraphVideoSink("");
    }
    static const FrameMedia& Media() { return FrameMedia::Get(); }
    CMediaPlayer& Engine() { return Frame().m_player; }
};

// Where the video pane shows a point of the test disc's 720x480 frame, and
// the middle of one of its two menu buttons.
inline QPoint OnDvdPicture(CMediaPlayer& player, int x, int y) {
    LONG left = 0, top = 0, width = 0, height = 0;
    player.m_pVideoWindow->GetWindowPosition(&left, &top, &width, &height);
    return QPoint(left + x * width / 720, top + y * height / 480);
}
inline QPoint OnDvdButton(CMediaPlayer& player, int which) {
    const int left = which == 1 ? CDiscMaker::kButton1Left : CDiscMaker::kButton2Left;
    return OnDvdPicture(player, left + 100,
                        (CDiscMaker::kButtonTop + CDiscMaker::kButtonBottom) / 2);
}
