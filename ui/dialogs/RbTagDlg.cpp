#include "ui/dialogs/RbTagDlg.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QVBoxLayout>

#include "platform/qt/QtGlue.h"

CRbTagDlg::CRbTagDlg(QWidget* parent) : COrvexDialog(parent, QStringLiteral("154")) {
    m_edit = new QLineEdit(this);
    SetControlId(m_edit, 1075);
    m_edit->setMinimumWidth(280);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_edit);
    layout->addWidget(MakeOkCancel());
}

void CRbTagDlg::OnInitDialog() {
    setWindowTitle(ToQString(m_title));
    ExchangeText(m_edit, m_text, false);
    m_edit->setFocus();
}

void CRbTagDlg::OnOK() {
    ExchangeText(m_edit, m_text, true);
    EndOK();
}
