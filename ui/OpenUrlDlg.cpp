#include "ui/OpenUrlDlg.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "platform/qt/QtGlue.h"

COpenUrlDlg::COpenUrlDlg(QWidget* parent) : QDialog(parent) {
    setWindowTitle(QStringLiteral("Open Media URL"));
    auto* label = new QLabel(QStringLiteral("Enter a URL to open"), this);
    m_edit = new QLineEdit(this);
    m_edit->setObjectName(QStringLiteral("1009"));
    m_edit->setMinimumWidth(460);
    label->setBuddy(m_edit);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(m_edit);
    layout->addWidget(buttons);
}

int COpenUrlDlg::exec() {
    m_edit->setText(ToQString(m_url));
    if (!m_url.IsEmpty()) {
        // The sample is selected whole, so typing replaces it.
        m_edit->selectAll();
        m_edit->setFocus(Qt::OtherFocusReason);
    }
    return QDialog::exec();
}

void COpenUrlDlg::accept() {
    m_url = FromQString(m_edit->text());
    QDialog::accept();
}
