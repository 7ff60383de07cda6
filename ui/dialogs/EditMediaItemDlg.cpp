#include "ui/dialogs/EditMediaItemDlg.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QVBoxLayout>

#include "platform/qt/QtGlue.h"

CEditMediaItemDlg::CEditMediaItemDlg(QWidget* parent)
    : COrvexDialog(parent, QStringLiteral("CEditMediaItemDlg")) {
    setWindowTitle(QStringLiteral("Edit MediaItem"));
    m_typeList = new QComboBox(this);
    SetControlId(m_typeList, 1028);
    m_nameEdit = new QLineEdit(this);
    SetControlId(m_nameEdit, 1029);
    m_locationEdit = new QLineEdit(this);
    SetControlId(m_locationEdit, 1030);
    m_locationEdit->setMinimumWidth(420);
    m_favoriteCheck = MakeCheck(this, 1027, QStringLiteral("Favorite"));

    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Media Type"), m_typeList);
    form->addRow(QStringLiteral("Media Name"), m_nameEdit);
    form->addRow(QStringLiteral("URL or File Path"), m_locationEdit);
    form->addRow(QString(), m_favoriteCheck);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(MakeOkCancel());
}

void CEditMediaItemDlg::OnInitDialog() {
    setWindowTitle(ToQString(m_title));
    // A blank item is only filled in for a new one.
    if (!m_pDoc || (!m_item.IsValid() && m_title != u"New Media Item"))
        return;
    FillMediaTypeList(m_typeList);
    m_typeList->setCurrentText(ToQString(m_item.GetTypeName()));
    m_name = m_item.m_name;
    m_location = m_item.m_location;
    m_favorite = m_item.m_favorite;
    m_nameEdit->setText(ToQString(m_name));
    m_locationEdit->setText(ToQString(m_location));
    m_favoriteCheck->setChecked(m_favorite != FALSE);
}

void CEditMediaItemDlg::OnOK() {
    m_favoriteChanged = FALSE;
    m_fieldsChanged = FALSE;
    m_name = FromQString(m_nameEdit->text());
    m_location = FromQString(m_locationEdit->text());
    m_favorite = m_favoriteCheck->isChecked();
    const auto type = static_cast<MediaType>(MediaTypeFromName(m_typeList->currentText()));
    if (m_name.IsEmpty()) {
        ShowBox(u"Please enter valid Media Name.");
        return;
    }
    if (m_location.IsEmpty()) {
        ShowBox(u"Please enter valid Media URL/File Path.");
        return;
    }
    if (type == MEDIA_NONE) {
        ShowBox(u"Please enter valid Media Type.");
        return;
    }
    if (type != m_item.m_type) {
        m_item.m_type = type;
        m_fieldsChanged = TRUE;
    }
    if (m_name != m_item.m_name) {
        m_item.m_name = m_name;
        m_fieldsChanged = TRUE;
    }
    if (m_location != m_item.m_location) {
        m_item.m_location = m_location;
        m_fieldsChanged = TRUE;
    }
    // A mark stored as any other nonzero value is the same mark.
    if ((m_favorite != FALSE) != (m_item.m_favorite != FALSE)) {
        m_item.m_favorite = m_favorite;
        m_favoriteChanged = TRUE;
    }
    EndOK();
}
