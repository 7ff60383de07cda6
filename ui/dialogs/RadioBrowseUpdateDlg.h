// "Update Radio Station Database": the face of the update job. The Update
// button starts the job on its worker; the job reports by posted messages,
// which this dialog turns into lines of its status box and the bar's
// progress. Cancel asks the job to stop; the dialog stays open until the user
// closes it once no job runs.
#pragma once
#include "platform/base/CString.h"
#include "platform/base/Window.h"
#include "ui/dialogs/OrvexDialog.h"

class COrvexDoc;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;

class CRadioBrowseUpdateDlg : public COrvexDialog, public CMessageTarget {
public:
    CRadioBrowseUpdateDlg(QWidget* parent, COrvexDoc* doc, const CString& server);

    CString m_text; // the whole text of the status box
    COrvexDoc* m_pDoc;
    CString m_server;

    LRESULT OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

protected:
    void OnInitDialog() override;
    // Escape and the window manager's close: a Cancel while a job runs, the
    // end of the dialog when none does.
    void reject() override;

private:
    void OnUpdateButton();
    void OnCancel();
    void OnStatusText();
    void OnJobIdle();
    void AddLine(const CString& line);
    void ShowText();

    QPushButton* m_update;
    QPlainTextEdit* m_status;
    QProgressBar* m_bar;
    QPushButton* m_cancel;
    QPushButton* m_close;
};
