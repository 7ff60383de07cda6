#include "ui/dialogs/ImportDlg.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QResizeEvent>
#include <QScrollBar>
#include <QVBoxLayout>

#include "platform/base/FileDialog.h"
#include "platform/qt/QtGlue.h"
#include "ui/dialogs/DialogScroller.h"

namespace {

const QString kImportedMedia = QStringLiteral("Imported Media");

} // namespace

CImportDlg::CImportDlg(QWidget* parent) : COrvexDialog(parent, QStringLiteral("CImportDlg")) {
    setWindowTitle(QStringLiteral("Import Contents Media"));
    setSizeGripEnabled(true);
    auto* body = new QWidget;

    auto* sources = new QGroupBox(QStringLiteral("Import From:"), body);
    m_datCheck = MakeCheck(sources, 1036, QStringLiteral("Orvex Contents File (.dat)"));
    m_textCheck = MakeCheck(sources, 1037, QStringLiteral("Orvex Media Record Format (.txt)"));
    m_plsCheck = MakeCheck(sources, 1017, QStringLiteral("PLS Path or URL"));
    m_m3uCheck = MakeCheck(sources, 1018, QStringLiteral("M3U Path or URL"));
    auto* sourceRows = new QVBoxLayout(sources);
    for (QCheckBox* box : {m_datCheck, m_textCheck, m_plsCheck, m_m3uCheck})
        sourceRows->addWidget(box);

    m_pathEdit = new QLineEdit(body);
    SetControlId(m_pathEdit, 1010);
    m_pathEdit->setMinimumWidth(420);
    QPushButton* browse = MakeButton(body, 1011, QStringLiteral("Browse"));
    m_overwriteCheck = MakeCheck(body, 1016,
                                 QStringLiteral("Overwrite current Media Contents Tree. Note you "
                                                "should export existing Media Contents before "
                                                "overwriting."));
    m_placeCheck =
        MakeCheck(body, 1022, QStringLiteral("Place imported media items in the following Topic:"));
    m_topicEdit = new QLineEdit(body);
    SetControlId(m_topicEdit, 1021);

    auto* bodyLayout = new QVBoxLayout(body);
    bodyLayout->addWidget(sources);
    bodyLayout->addWidget(
        new QLabel(QStringLiteral("Enter the Path or URL to a pls, m3u, txt or dat file."), body));
    bodyLayout->addWidget(m_pathEdit);
    bodyLayout->addWidget(browse, 0, Qt::AlignLeft);
    bodyLayout->addWidget(m_overwriteCheck);
    bodyLayout->addWidget(m_placeCheck);
    bodyLayout->addWidget(m_topicEdit);
    bodyLayout->addWidget(MakeOkCancel());

    m_scroller = MakeScrollingBody(this, body);

    connect(m_datCheck, &QCheckBox::clicked, this, &CImportDlg::OnDat);
    connect(m_textCheck, &QCheckBox::clicked, this, &CImportDlg::OnText);
    connect(m_plsCheck, &QCheckBox::clicked, this, [this] { OnPlaylist(m_plsCheck); });
    connect(m_m3uCheck, &QCheckBox::clicked, this, [this] { OnPlaylist(m_m3uCheck); });
    connect(m_overwriteCheck, &QCheckBox::clicked, this, &CImportDlg::OnOverwrite);
    connect(m_placeCheck, &QCheckBox::clicked, this, &CImportDlg::OnPlace);
    connect(browse, &QPushButton::clicked, this, &CImportDlg::OnBrowse);
}

void CImportDlg::OnInitDialog() {
    UpdateData(false);
}

void CImportDlg::showEvent(QShowEvent* event) {
    COrvexDialog::showEvent(event);
    if (!m_opened) {
        m_opened = true;
        m_scroller->OnOpen();
    }
}

void CImportDlg::resizeEvent(QResizeEvent* event) {
    COrvexDialog::resizeEvent(event);
    m_scroller->OnSize(event->size().height());
}

void CImportDlg::UpdateData(bool save) {
    ExchangeText(m_pathEdit, m_path, save);
    ExchangeText(m_topicEdit, m_topic, save);
    ExchangeChecks({{m_datCheck, &m_fromDat},
                    {m_m3uCheck, &m_fromM3u},
                    {m_textCheck, &m_fromText},
                    {m_plsCheck, &m_fromPls},
                    {m_overwriteCheck, &m_overwrite},
                    {m_placeCheck, &m_place}},
                   save);
}

void CImportDlg::SetTopic(const QString& text, bool enabled) {
    m_topicEdit->setText(text);
    m_topicEdit->setEnabled(enabled);
}

void CImportDlg::OnDat() {
    const bool set = m_datCheck->isChecked();
    for (QCheckBox* box : {m_textCheck, m_plsCheck, m_m3uCheck})
        box->setChecked(false);
    m_overwriteCheck->setChecked(set);
    m_overwriteCheck->setEnabled(!set);
    if (set) {
        m_placeCheck->setChecked(false);
        SetTopic(QString(), false);
    } else {
        m_topicEdit->setEnabled(true);
    }
    m_placeCheck->setEnabled(!set);
    UpdateData(true);
}

void CImportDlg::OnText() {
    for (QCheckBox* box : {m_datCheck, m_plsCheck, m_m3uCheck})
        box->setChecked(false);
    // Both modes stay open, and neither is chosen for the user.
    m_overwriteCheck->setChecked(false);
    m_overwriteCheck->setEnabled(true);
    m_placeCheck->setChecked(false);
    m_placeCheck->setEnabled(true);
    SetTopic(QString(), false);
    UpdateData(true);
}

void CImportDlg::OnPlaylist(QCheckBox* box) {
    if (box->isChecked()) {
        for (QCheckBox* other : {m_datCheck, m_textCheck, m_plsCheck, m_m3uCheck}) {
            if (other != box)
                other->setChecked(false);
        }
        // A playlist can only be placed under a topic.
        m_overwriteCheck->setChecked(false);
        m_overwriteCheck->setEnabled(false);
        m_placeCheck->setChecked(true);
        m_placeCheck->setEnabled(true);
        SetTopic(kImportedMedia, true);
    }
    UpdateData(true);
}

void CImportDlg::OnOverwrite() {
    if (m_overwriteCheck->isChecked()) {
        m_placeCheck->setChecked(false);
        SetTopic(QString(), false);
    } else {
        m_placeCheck->setChecked(true);
        SetTopic(kImportedMedia, true);
    }
    UpdateData(true);
}

void CImportDlg::OnPlace() {
    if (m_placeCheck->isChecked()) {
        m_overwriteCheck->setChecked(false);
        SetTopic(kImportedMedia, true);
    } else if (m_plsCheck->isChecked() || m_m3uCheck->isChecked()) {
        m_placeCheck->setChecked(true);
    } else {
        m_overwriteCheck->setChecked(true);
        SetTopic(QString(), false);
    }
    UpdateData(true);
}

void CImportDlg::OnOK() {
    UpdateData(true);
    if (!m_fromDat && !m_fromM3u && !m_fromText && !m_fromPls) {
        ShowBox(u"Please select an Import From check box.");
        return;
    }
    if (m_path.IsEmpty()) {
        ShowBox(u"Please enter or browse for a File Path or URL.");
        return;
    }
    // Playlists are spared: their paths can be URLs.
    if ((m_fromDat || m_fromText) && HasInvalidPathCharacters(m_path)) {
        ShowBox(u"File path contains one or more invalid characters.");
        return;
    }
    if (!m_overwrite && !m_place) {
        ShowBox(u"Please check either overwrite or topic.");
        return;
    }
    if (m_place && m_topic.IsEmpty()) {
        ShowBox(u"Please enter the Topic to place media items under. This can be an existing or "
                u"new topic.");
        return;
    }
    EndOK();
}

void CImportDlg::OnBrowse() {
    // On the fields as the last click left them: what was typed since isn't read.
    FileDialogRequest request;
    if (m_fromDat) {
        request.defaultExt = u".dat";
        request.filter = u"Orvex Contents File (*.dat)|*.dat|All Files (*.*)|*.*||";
    } else if (m_fromM3u) {
        request.defaultExt = u".m3u";
        request.filter = u"m3u playlist (*.m3u)|*.m3u|All Files (*.*)|*.*||";
    } else if (m_fromPls) {
        request.defaultExt = u".pls";
        request.filter = u"pls playlist (*.pls)|*.pls|All Files (*.*)|*.*||";
    } else if (m_fromText) {
        request.defaultExt = u".txt";
        request.filter = u"Media Record Format text file (*.txt)|*.txt|All Files (*.*)|*.*||";
    } else {
        ShowBox(u"Please select an Import From check box.");
        return;
    }
    request.open = TRUE;
    request.flags = OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST;
    request.initialFolder = m_startFolder;
    CString chosen;
    if (!RunFileDialog(request, chosen))
        return;
    m_path = chosen;
    UpdateData(false);
}
