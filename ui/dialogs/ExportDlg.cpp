#include "ui/dialogs/ExportDlg.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/base/FileDialog.h"
#include "platform/qt/QtGlue.h"

CExportDlg::CExportDlg(QWidget* parent) : COrvexDialog(parent, QStringLiteral("CExportDlg")) {
    setWindowTitle(ToQString(m_title));
    auto* forms = new QGroupBox(QStringLiteral("Export Contents As"), this);
    m_datCheck = MakeCheck(forms, 1036, QStringLiteral("Orvex Contents File (.dat)"));
    m_textCheck = MakeCheck(forms, 1014, QStringLiteral("Orvex Media Record Format (,txt)"));
    m_m3uCheck = MakeCheck(forms, 1018, QStringLiteral("M3U Format (.m3u)"));
    auto* formRows = new QVBoxLayout(forms);
    for (QCheckBox* box : {m_datCheck, m_textCheck, m_m3uCheck}) {
        formRows->addWidget(box);
        connect(box, &QCheckBox::clicked, this, [this, box] { OnForm(box); });
    }
    m_excludeCheck = MakeCheck(this, 1035, QStringLiteral("Exclude Media Disc Files"));
    m_unicodeCheck = MakeCheck(this, 1038, QStringLiteral("Save As Unicode"));
    m_aliasesCheck = MakeCheck(this, 1039, QStringLiteral("Write Topic Aliases"));
    m_pathEdit = new QLineEdit(this);
    SetControlId(m_pathEdit, 1010);
    m_pathEdit->setMinimumWidth(420);
    QPushButton* browse = MakeButton(this, 1011, QStringLiteral("Browse"));
    connect(browse, &QPushButton::clicked, this, &CExportDlg::OnBrowse);

    auto* layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(forms);
    for (QCheckBox* box : {m_excludeCheck, m_unicodeCheck, m_aliasesCheck})
        layout->addWidget(box);
    layout->addWidget(new QLabel(QStringLiteral("Enter a file Name and Path"), this));
    layout->addWidget(m_pathEdit);
    layout->addWidget(browse, 0, Qt::AlignLeft);
    layout->addWidget(MakeOkCancel());
}

void CExportDlg::OnInitDialog() {
    setWindowTitle(ToQString(m_title));
    UpdateData(false);
    if (m_topicOnly)
        m_datCheck->setEnabled(false);
}

void CExportDlg::UpdateData(bool save) {
    ExchangeText(m_pathEdit, m_path, save);
    ExchangeChecks({{m_excludeCheck, &m_excludeDiscFiles},
                    {m_textCheck, &m_toText},
                    {m_datCheck, &m_toDat},
                    {m_unicodeCheck, &m_unicode},
                    {m_aliasesCheck, &m_writeAliases},
                    {m_m3uCheck, &m_toM3u}},
                   save);
}

void CExportDlg::SetOption(QCheckBox* box, bool checked, bool enabled) {
    box->setChecked(checked);
    box->setEnabled(enabled);
}

void CExportDlg::OnForm(QCheckBox* box) {
    if (!box->isChecked())
        return;
    for (QCheckBox* other : {m_datCheck, m_textCheck, m_m3uCheck}) {
        if (other != box)
            other->setChecked(false);
    }
    if (box == m_datCheck) {
        // The contents file takes everything as it is: no option applies.
        SetOption(m_excludeCheck, false, false);
        SetOption(m_unicodeCheck, false, false);
        SetOption(m_aliasesCheck, false, false);
    } else if (box == m_textCheck) {
        SetOption(m_excludeCheck, false, true);
        SetOption(m_unicodeCheck, false, true);
        SetOption(m_aliasesCheck, false, true);
    } else {
        // A playlist never carries local disc files, nor topics.
        SetOption(m_excludeCheck, true, false);
        SetOption(m_unicodeCheck, false, true);
        SetOption(m_aliasesCheck, false, false);
    }
}

void CExportDlg::OnOK() {
    UpdateData(true);
    if (!m_toDat && !m_toText && !m_toM3u) {
        ShowBox(u"Please check a export type.");
        return;
    }
    if (m_path.IsEmpty()) {
        ShowBox(u"Please enter a file path.");
        return;
    }
    if (HasInvalidPathCharacters(m_path)) {
        ShowBox(u"File path contains invalid characters.");
        return;
    }
    EndOK();
}

void CExportDlg::OnBrowse() {
    UpdateData(true);
    FileDialogRequest request;
    if (m_toDat) {
        request.defaultExt = u".dat";
        request.filter = u"Orvex Contents File - binary (*.dat)|*.dat|All Files (*.*)|*.*||";
    } else if (m_toM3u) {
        request.defaultExt = u".m3u";
        request.filter = u"M3u File (*.m3u)|*.m3u|All Files (*.*)|*.*||";
    } else {
        request.defaultExt = u".txt";
        request.filter = u"Media Record Format text file - (*.txt)|*.txt|All Files (*.*)|*.*||";
    }
    request.open = FALSE;
    request.flags = OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST | OFN_FILEMUSTEXIST;
    request.initialFolder = m_startFolder;
    CString chosen;
    if (!RunFileDialog(request, chosen))
        return;
    m_path = chosen;
    UpdateData(false);
}
