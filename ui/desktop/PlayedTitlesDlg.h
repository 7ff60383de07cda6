// "Played Titles": the songs heard on streams, newest last, with date,
// time and station; the text can be selected and copied, or copied whole.
#pragma once
#include <QDialog>

class QPlainTextEdit;

class CPlayedTitlesDlg : public QDialog {
    Q_OBJECT
public:
    // text: the lines of the played titles file.
    CPlayedTitlesDlg(const QString& text, QWidget* parent = nullptr);

    // Copies the selection, or everything when nothing is selected.
    void CopyToClipboard();

private:
    QPlainTextEdit* m_text;
};
