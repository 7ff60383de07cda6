// Driving the program's dialogs from tests: controls found by their ids,
// clicked and typed into as a user would, modal dialogs answered while the
// command that opened them runs, and the file and folder pickers answered by
// the test.
#pragma once
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <deque>
#include <functional>
#include <vector>

#include "platform/base/FileDialog.h"
#include "platform/qt/QtGlue.h"
#include "tests/ui/PrintQString.h"

inline QApplication& TestApp() {
    static int argc = 1;
    static char name[] = "test_ui_dialogs";
    static char* argv[] = {name, nullptr};
    static QApplication* app = new QApplication(argc, argv);
    return *app;
}

template <typename Control>
Control* Find(QWidget* dialog, int id) {
    auto* control = dialog->findChild<Control*>(QString::number(id));
    EXPECT_NE(control, nullptr) << "no control " << id;
    return control;
}

// A left click where a user would click: on a box's indicator, or a
// button's face.
inline void Click(QWidget* dialog, int id) {
    auto* button = Find<QAbstractButton>(dialog, id);
    if (button)
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(8, button->height() / 2));
}

// The entries of a drop-down list, top to bottom.
inline QStringList Entries(QComboBox* box) {
    QStringList entries;
    for (int i = 0; i < box->count(); ++i)
        entries << box->itemText(i);
    return entries;
}

inline bool Checked(QWidget* dialog, int id) {
    return Find<QAbstractButton>(dialog, id)->isChecked();
}

inline bool Enabled(QWidget* dialog, int id) {
    return dialog->findChild<QWidget*>(QString::number(id))->isEnabled();
}

inline QString Text(QWidget* dialog, int id) {
    return Find<QLineEdit>(dialog, id)->text();
}

// Replaces the text of an edit by typing.
inline void Type(QWidget* dialog, int id, const QString& text) {
    auto* edit = Find<QLineEdit>(dialog, id);
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, text);
}

// Opens the context menu of a widget's viewport at a point and answers it:
// gives its entries ("<no menu>" when none opened) and chooses the one named,
// or closes the menu when there is none of that name.
inline QStringList ChooseFromMenu(QWidget* viewport, QPoint point, const QString& choice,
                                  QContextMenuEvent::Reason reason = QContextMenuEvent::Mouse) {
    QStringList entries;
    bool opened = false;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu)
            return;
        opened = true;
        poll.stop();
        QAction* chosen = nullptr;
        for (QAction* action : menu->actions()) {
            entries << action->text();
            if (action->text() == choice)
                chosen = action;
        }
        if (chosen) {
            menu->setActiveAction(chosen);
            QTest::keyClick(menu, Qt::Key_Return);
        } else {
            menu->close();
        }
    });
    poll.start(5);
    QContextMenuEvent event(reason, point, viewport->mapToGlobal(point));
    QApplication::sendEvent(viewport, &event);
    QCoreApplication::processEvents();
    if (!opened)
        entries << QStringLiteral("<no menu>");
    return entries;
}

// Runs the dialog modally; `interact` is called once it shows. A dialog still
// open after it is cancelled, so a refusal can never hang the test.
template <typename Dialog>
int RunModal(Dialog& dialog, const std::function<void()>& interact) {
    QTimer::singleShot(0, &dialog, [&] {
        interact();
        if (dialog.isVisible())
            dialog.reject();
    });
    return dialog.DoModal();
}

// Answers, in order, the modal dialogs that open while a command runs. A step
// is tried on its dialog every few milliseconds until it says it is done.
class ModalScript {
public:
    using Step = std::function<bool(QWidget* dialog)>;

    void Then(const QString& dialogName, Step step) { m_steps.push_back({dialogName, step}); }

    void Run(const std::function<void()>& command, int timeoutMs = 20000) {
        QTimer poll;
        QElapsedTimer clock;
        clock.start();
        QObject::connect(&poll, &QTimer::timeout, [&] {
            QWidget* modal = QApplication::activeModalWidget();
            if (clock.elapsed() > timeoutMs) {
                ADD_FAILURE() << "a dialog was left open";
                if (modal)
                    modal->close();
                return;
            }
            if (!modal || m_steps.empty() || modal->objectName() != m_steps.front().name)
                return;
            if (m_steps.front().step(modal))
                m_steps.pop_front();
        });
        poll.start(5);
        command();
        poll.stop();
        EXPECT_TRUE(m_steps.empty())
            << "a dialog never came: " << m_steps.front().name.toStdString();
    }

private:
    struct Entry {
        QString name;
        Step step;
    };
    std::deque<Entry> m_steps;
};

// Answers the file and folder pickers: each request is recorded, then answered
// with the next path given ("<cancel>" cancels, an empty one is an empty OK).
class PickerAnswers {
public:
    PickerAnswers() {
        m_previousFile = SetFileDialogHook([this](const FileDialogRequest& r, CString& path) {
            m_files.push_back(r);
            return Answer(path);
        });
        m_previousFolder = SetFolderBrowseHook([this](const FolderBrowseRequest& r, CString& path) {
            m_folders.push_back(r);
            return Answer(path);
        });
    }
    ~PickerAnswers() {
        SetFileDialogHook(m_previousFile);
        SetFolderBrowseHook(m_previousFolder);
    }
    void Answer(const char16_t* path) { m_answers.push_back(CString(path)); }

    std::vector<FileDialogRequest> m_files;
    std::vector<FolderBrowseRequest> m_folders;

private:
    BOOL Answer(CString& path) {
        if (m_answers.empty())
            return FALSE;
        CString next = m_answers.front();
        m_answers.pop_front();
        if (next == u"<cancel>")
            return FALSE;
        path = next;
        return TRUE;
    }

    std::deque<CString> m_answers;
    FileDialogHook m_previousFile;
    FolderBrowseHook m_previousFolder;
};
