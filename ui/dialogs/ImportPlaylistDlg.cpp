#include "ui/dialogs/ImportPlaylistDlg.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "platform/qt/QtGlue.h"

CImportPlaylistDlg::CImportPlaylistDlg(QWidget* parent)
    : COrvexDialog(parent, QStringLiteral("CImportPlaylistDlg")) {
    setWindowTitle(QStringLiteral("Import Playlist"));
    m_deleteCheck = MakeCheck(this, 1085, QStringLiteral("Delete Playlist Media Item"));
    m_topicEdit = new QLineEdit(this);
    SetControlId(m_topicEdit, 1084);
    m_topicEdit->setMinimumWidth(280);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_deleteCheck);
    layout->addWidget(new QLabel(QStringLiteral("Import To Folder"), this));
    layout->addWidget(m_topicEdit);
    layout->addWidget(MakeOkCancel(QStringLiteral("Import")));
}

void CImportPlaylistDlg::OnInitDialog() {
    m_deleteCheck->setChecked(m_deleteItem != FALSE);
    m_topicEdit->setText(ToQString(m_topic));
}

void CImportPlaylistDlg::OnOK() {
    m_deleteItem = m_deleteCheck->isChecked();
    m_topic = FromQString(m_topicEdit->text());
    EndOK();
}
