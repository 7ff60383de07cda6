// "Search Radio Stations": criteria over the local station database, a
// result list sorted by its headings, and the import of the results into a
// topic. The search itself is the database's; this dialog reads the criteria,
// fills its lists from the lookup tables, and shows the stations as people
// read them.
#pragma once
#include "platform/base/Array.h"
#include "platform/base/CString.h"
#include "ui/dialogs/OrvexDialog.h"

class COrvexDoc;
class CDialogScroller;
class CStationTableModel;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QTableView;

class CRbSearchDlg : public COrvexDialog {
public:
    CRbSearchDlg(QWidget* parent, COrvexDoc* doc);
    ~CRbSearchDlg() override;

    CString m_countryName;
    CString m_languageName;
    CString m_stateName;
    CString m_nameWords;
    CString m_topicName = u"Imported Media";
    int32_t m_minClicks = 0;
    int32_t m_minVotes = 0;
    int32_t m_maxResults = 0; // 0: no limit
    COrvexDoc* m_pDoc;
    CStringArray m_tagList;
    BOOL m_bSortAscending = TRUE;

    CDialogScroller* Scroller() const { return m_scroller; }
    CStationTableModel* Results() const { return m_model; }

    // The actions of the dialog's buttons and lists, as the user starts them.
    void OnSearch();
    void OnClearCriteria();
    void OnClearResults();
    void OnImport();
    void OnColumnClick(int column);
    void OnCountryChange();
    void OnTagChosen(int index);
    void OnHelp();

protected:
    void OnInitDialog() override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    friend class CTagListBox;
    // Controls to fields (save) or fields to controls; a number the fields
    // can't take is refused with its box, and the exchange gives false.
    bool UpdateData(bool save);
    void FillStateList();
    void FillResultList();
    void FillTagList();
    void SetResultLine(const CString& text);
    void SizeColumns();
    // The tag list's menu and its four commands.
    void OnTagMenu(const QPoint& position);
    void EditTag();
    void AddTag();
    void DeleteTag();
    void ClearTags();
    void SelectTag(int line);
    // The line of the tag list that is selected, or -1.
    int SelectedTag() const;

    QComboBox* m_countryBox;
    QComboBox* m_stateBox;
    QComboBox* m_languageBox;
    QLineEdit* m_nameEdit;
    QListWidget* m_tagBox;
    QComboBox* m_tagChoice;
    QLineEdit* m_votesEdit;
    QLineEdit* m_clicksEdit;
    QLineEdit* m_maxEdit;
    QLineEdit* m_topicEdit;
    QLabel* m_resultLine;
    QTableView* m_table;
    CStationTableModel* m_model;
    CDialogScroller* m_scroller;
    int m_lastTagChoice = -1;
    bool m_opened = false;
};
