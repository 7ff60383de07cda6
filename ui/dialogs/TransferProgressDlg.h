// A download that the user watches: the transfer runs on a worker while this
// modal dialog shows how much has come and offers Cancel. The dialog closes
// itself when the transfer ends, however it ends.
#pragma once
#include <QDialog>

#include "app/DocDialogs.h"
#include "net/TransferWorker.h"

class QLabel;
class QProgressBar;
class QPushButton;

class CTransferProgressDlg : public QDialog {
public:
    explicit CTransferProgressDlg(QWidget* parent = nullptr);

    // Fetches `url` into `target` (at most maxBytes), modally.
    TransferOutcome Run(const CString& url, const CString& target, unsigned maxBytes,
                        CString* error);

protected:
    void reject() override;
    void timerEvent(QTimerEvent* event) override;

private:
    void ShowProgress();

    CTransferWorker m_worker;
    unsigned m_maxBytes = 0;
    int m_pollTimer = 0;
    bool m_cancelRequested = false;
    QLabel* m_status;
    QProgressBar* m_bar;
    QPushButton* m_cancel;
};
