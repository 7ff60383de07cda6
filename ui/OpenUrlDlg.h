// "Open Media URL": one line for the address of a stream to play.
#pragma once
#include <QDialog>

#include "platform/base/CString.h"

class QLineEdit;

class COpenUrlDlg : public QDialog {
    Q_OBJECT
public:
    explicit COpenUrlDlg(QWidget* parent = nullptr);

    // Set before exec; read after OK.
    CString m_url;

    int exec() override;
    void accept() override;

private:
    QLineEdit* m_edit;
};
