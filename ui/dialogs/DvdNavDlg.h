// "DVD Navigation": where the disc stands (title, chapter, the title's
// length, the domain) and jumps to a title's chapter or to a menu. Modal, but
// the player's events go on behind it, and each new chapter refreshes it.
#pragma once
#include "platform/base/Window.h"
#include "ui/dialogs/OrvexDialog.h"

class CMediaPlayer;
class QLabel;

class CDvdNavDlg : public COrvexDialog, public CMessageTarget {
public:
    explicit CDvdNavDlg(QWidget* parent = nullptr);
    ~CDvdNavDlg() override;

    LRESULT OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    // Set before the dialog runs; without it the dialog stays empty.
    CMediaPlayer* m_pPlayer = nullptr;
    CString m_titleText;
    CString m_chapterText;
    CString m_domainText;
    CString m_durationText;
    int m_titleIndex = -1;
    int m_chapterIndex = -1;

protected:
    void OnInitDialog() override;
    void done(int result) override;

private:
    void Refresh();
    void OnGoTo();
    void OnTitleCloseUp(int index);
    BOOL IsDvd() const;
    // Fills a list with "1" to count and selects the entry of `current`;
    // gives the index selected, -1 for none.
    static int FillNumbers(QComboBox* box, uint32_t count, uint32_t current);

    QComboBox* m_titles;
    QComboBox* m_chapters;
    QLabel* m_title;
    QLabel* m_chapter;
    QLabel* m_domain;
    QLabel* m_duration;
};
