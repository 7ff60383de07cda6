#include "ui/dialogs/NewTopicDlg.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "app/OrvexDoc.h"
#include "platform/qt/QtGlue.h"

CNewTopicDlg::CNewTopicDlg(QWidget* parent) : COrvexDialog(parent, QStringLiteral("CNewTopicDlg")) {
    setWindowTitle(QStringLiteral("New Topic"));
    m_nameList = new QComboBox(this);
    SetControlId(m_nameList, 1025);
    m_nameList->setEditable(true);
    // A typed name stays a name: it never joins the list.
    m_nameList->setInsertPolicy(QComboBox::NoInsert);
    m_nameList->setMinimumWidth(280);
    m_typeList = new QComboBox(this);
    SetControlId(m_typeList, 1028);

    auto* layout = new QVBoxLayout(this);
    auto* nameLabel = new QLabel(
        QStringLiteral(
            "Enter a Topic Name, or select one from the list of predefined Topic Names."),
        this);
    nameLabel->setWordWrap(true);
    layout->addWidget(nameLabel);
    layout->addWidget(m_nameList);
    layout->addWidget(
        new QLabel(QStringLiteral("Set a Media Type for this topic if not fixed."), this));
    layout->addWidget(m_typeList);
    layout->addWidget(MakeOkCancel());
}

void CNewTopicDlg::OnInitDialog() {
    setWindowTitle(ToQString(m_title));
    if (!m_pDoc)
        return;
    FillMediaTypeList(m_typeList);
    m_typeList->setCurrentText(MediaTypeName(m_mediaType));
    if (m_mediaType != MEDIA_NONE && m_title != u"Edit Topic")
        m_typeList->setEnabled(false);
    for (const TOPIC_STR_ALIAS& row : m_pDoc->m_aliases)
        m_nameList->addItem(ToQString(row.m_topic));
    WidenDropDown(m_nameList);
    m_nameList->setCurrentIndex(-1);
    m_nameList->setEditText(ToQString(m_name));
}

void CNewTopicDlg::OnOK() {
    m_name = FromQString(m_nameList->currentText());
    m_mediaType = MediaTypeFromName(m_typeList->currentText());
    if (m_mediaType == MEDIA_NONE) {
        ShowBox(u"Please enter a valid Media Type.");
        return;
    }
    if (m_name.IsEmpty()) {
        ShowBox(u"Please enter a Topic Name.");
        return;
    }
    EndOK();
}
