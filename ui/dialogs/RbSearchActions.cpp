// What the search dialog's buttons, headings and tag list do.
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QTableView>

#include "app/OrvexDoc.h"
#include "platform/base/HelpViewer.h"
#include "platform/base/MessageBox.h"
#include "platform/qt/QtGlue.h"
#include "ui/dialogs/RbSearchDlg.h"
#include "ui/dialogs/RbSearchLists.h"
#include "ui/dialogs/RbTagDlg.h"
#include "ui/dialogs/StationTableModel.h"

void CRbSearchDlg::OnSearch() {
    CRadioBrowseDb& db = m_pDoc->m_radioDb;
    db.ClearCriteria();
    if (!UpdateData(true))
        return;
    CString code;
    if (m_countryName != u"No Country" && CountryNameToCode(db, m_countryName, code)) {
        db.m_bFindCountry = TRUE;
        db.m_findCountry = code;
    }
    if (m_stateName != u"No State") {
        db.m_bFindState = TRUE;
        db.m_findState = m_stateName;
    }
    if (m_languageName != u"No Language" && LanguageNameToCode(db, m_languageName, code)) {
        db.m_bFindLanguage = TRUE;
        db.m_findLanguage = code;
    }
    if (!m_nameWords.IsEmpty()) {
        db.m_bFindName = TRUE;
        db.m_findName = m_nameWords;
    }
    if (!m_tagList.IsEmpty()) {
        db.m_bFindTags = TRUE;
        db.m_findTags = m_tagList;
    }
    if (m_minClicks != 0) {
        db.m_bMinClicks = TRUE;
        db.m_minClicks = m_minClicks;
    }
    if (m_minVotes != 0) {
        db.m_bMinVotes = TRUE;
        db.m_minVotes = m_minVotes;
    }
    if (db.CountCriteria() == 0) {
        AfxMessageBox(CString(u"Please set one or more search criteria."));
        return;
    }
    const int found = db.SearchStations();
    FillResultList();
    CString line;
    if (found == 0)
        line.Format(u"No results in %d Stations searched", db.m_stations.GetSize());
    else if (m_maxResults == 0)
        line.Format(u"Found %d Stations", found);
    else
        line.Format(u"Showing %d of %d Stations found", m_model->rowCount(), found);
    SetResultLine(line);
}

void CRbSearchDlg::FillResultList() {
    CStationResults& results = m_pDoc->m_radioDb.m_results;
    if (results.IsEmpty()) {
        m_model->DeleteAllRows();
        return;
    }
    const int rows = m_maxResults != 0 ? m_maxResults : results.GetSize();
    m_model->Fill(results.Positions(), rows);
}

void CRbSearchDlg::OnClearResults() {
    m_model->DeleteAllRows();
}

void CRbSearchDlg::OnColumnClick(int column) {
    CRadioBrowseDb& db = m_pDoc->m_radioDb;
    if (db.m_results.IsEmpty())
        return;
    db.SortResults(m_bSortAscending, column == CStationTableModel::NAME,
                   column == CStationTableModel::VOTES, column == CStationTableModel::CLICKS);
    QHeaderView* header = m_table->horizontalHeader();
    if (column == CStationTableModel::URL) {
        header->setSortIndicatorShown(false);
    } else {
        header->setSortIndicatorShown(true);
        header->setSortIndicator(column,
                                 m_bSortAscending ? Qt::AscendingOrder : Qt::DescendingOrder);
    }
    // Whichever heading it was, the next sort goes the other way.
    m_bSortAscending = !m_bSortAscending;
    FillResultList();
}

void CRbSearchDlg::OnClearCriteria() {
    m_minClicks = m_minVotes = m_maxResults = 0;
    m_nameWords.Empty();
    m_languageName.Empty();
    UpdateData(false);
    m_stateBox->clear();
    m_stateBox->addItem(QStringLiteral("No State"));
    m_stateBox->setCurrentIndex(0);
    m_tagList.RemoveAll();
    FillTagList();
    m_tagChoice->setCurrentIndex(-1);
    m_lastTagChoice = -1;
    m_countryBox->setCurrentIndex(0);
    m_languageBox->setCurrentIndex(0);
    UpdateData(true);
}

void CRbSearchDlg::OnImport() {
    if (m_pDoc->m_radioDb.m_results.IsEmpty())
        return;
    if (!UpdateData(true))
        return;
    if (m_topicName.IsEmpty()) {
        AfxMessageBox(CString(u"Please enter a Topic name to import results into."));
        m_topicEdit->setFocus();
        return;
    }
    const int imported = m_pDoc->ImportStationResults(m_topicName, m_maxResults);
    if (imported == 0)
        return;
    FillResultList();
    CString line;
    line.Format(u"%d Stations imported to %s Topic.", imported, m_topicName);
    SetResultLine(line);
}

void CRbSearchDlg::OnHelp() {
    HtmlHelpW(kRadioHelpPage, kRadioSearchHelpSection);
}

void CRbSearchDlg::OnTagChosen(int index) {
    // Choosing the entry that is already chosen is no change.
    if (index < 0 || index == m_lastTagChoice)
        return;
    m_lastTagChoice = index;
    m_tagList.Add(FromQString(m_tagChoice->itemText(index)));
    FillTagList();
    m_tagBox->setFocus();
    SelectTag(m_tagList.GetSize() - 1);
}

void CRbSearchDlg::FillTagList() {
    QListWidget* box = m_tagBox;
    box->clear();
    for (const CString& tag : m_tagList)
        box->addItem(ToQString(tag));
}

int CRbSearchDlg::SelectedTag() const {
    const QList<QListWidgetItem*> selected = m_tagBox->selectedItems();
    return selected.isEmpty() ? -1 : m_tagBox->row(selected.first());
}

void CRbSearchDlg::SelectTag(int line) {
    QListWidget* box = m_tagBox;
    if (line < 0 || line >= box->count())
        box->setCurrentRow(-1, QItemSelectionModel::Clear);
    else
        box->setCurrentRow(line, QItemSelectionModel::ClearAndSelect);
}

void CRbSearchDlg::OnTagMenu(const QPoint& position) {
    QListWidget* box = m_tagBox;
    const bool onSelectedLine = !box->selectedItems().isEmpty() && box->itemAt(position);
    QMenu menu(box);
    QAction* edit = onSelectedLine ? menu.addAction(QStringLiteral("Edit Tag")) : nullptr;
    QAction* add = menu.addAction(QStringLiteral("Add New Tag"));
    QAction* remove = onSelectedLine ? menu.addAction(QStringLiteral("Delete Tag")) : nullptr;
    QAction* clear = menu.addAction(QStringLiteral("Clear List"));
    QAction* chosen = menu.exec(box->viewport()->mapToGlobal(position));
    // The menu acts on the selected line, whichever line was clicked.
    if (!chosen)
        return;
    if (chosen == edit)
        EditTag();
    else if (chosen == add)
        AddTag();
    else if (chosen == remove)
        DeleteTag();
    else if (chosen == clear)
        ClearTags();
}

void CRbSearchDlg::EditTag() {
    const int line = SelectedTag();
    if (line < 0 || line >= m_tagList.GetSize())
        return;
    CRbTagDlg dialog(this);
    dialog.m_title = u"Edit Tag";
    dialog.m_text = m_tagList[line];
    if (dialog.DoModal() != IDOK)
        return;
    m_tagList.SetAt(line, dialog.m_text);
    FillTagList();
    SelectTag(line);
}

void CRbSearchDlg::AddTag() {
    CRbTagDlg dialog(this);
    dialog.m_title = u"Add Tag";
    if (dialog.DoModal() != IDOK)
        return;
    m_tagList.Add(dialog.m_text);
    FillTagList();
    SelectTag(m_tagList.GetSize() - 1);
}

void CRbSearchDlg::DeleteTag() {
    const int line = SelectedTag();
    if (line < 0 || line >= m_tagList.GetSize())
        return;
    m_tagList.RemoveAt(line);
    FillTagList();
    if (line == 0)
        SelectTag(0);
    else if (m_tagList.GetSize() < 2)
        SelectTag(-1);
    else
        SelectTag(line - 1);
}

void CRbSearchDlg::ClearTags() {
    m_tagList.RemoveAll();
    FillTagList();
    SelectTag(-1);
    m_tagChoice->setCurrentIndex(-1);
    m_lastTagChoice = -1;
}
