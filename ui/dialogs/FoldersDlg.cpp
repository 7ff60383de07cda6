#include "ui/dialogs/FoldersDlg.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/base/FileDialog.h"
#include "platform/qt/QtGlue.h"
#include "ui/desktop/FrameDesktop.h"

CFoldersDlg::CFoldersDlg(QWidget* parent) : COrvexDialog(parent, QStringLiteral("CFoldersDlg")) {
    setWindowTitle(QStringLiteral("Set Folder Paths"));
    m_videoEdit = new QLineEdit(this);
    SetControlId(m_videoEdit, 1086);
    m_contentsEdit = new QLineEdit(this);
    SetControlId(m_contentsEdit, 1087);
    for (QLineEdit* edit : {m_videoEdit, m_contentsEdit}) {
        edit->setReadOnly(true);
        edit->setMinimumWidth(360);
    }
    QPushButton* browseVideo = MakeButton(this, 1088, QStringLiteral("Browse"));
    QPushButton* browseContents = MakeButton(this, 1089, QStringLiteral("Browse"));
    connect(browseVideo, &QPushButton::clicked, this,
            [this] { Browse(u"Pick a folder used for Video file storage:", m_videoFolder); });
    connect(browseContents, &QPushButton::clicked, this,
            [this] { Browse(u"Pick a folder used for Contents file storage:", m_contentsFolder); });

    auto* grid = new QGridLayout;
    grid->addWidget(new QLabel(QStringLiteral("Video Files Folder:"), this), 0, 0, 1, 2);
    grid->addWidget(m_videoEdit, 1, 0);
    grid->addWidget(browseVideo, 1, 1);
    grid->addWidget(new QLabel(QStringLiteral("Contents Files Folder:"), this), 2, 0, 1, 2);
    grid->addWidget(m_contentsEdit, 3, 0);
    grid->addWidget(browseContents, 3, 1);
    // Where Record puts a stream's songs; empty stands for the default.
    m_recordingsEdit = new QLineEdit(this);
    SetControlId(m_recordingsEdit, 1090);
    m_recordingsEdit->setReadOnly(true);
    m_recordingsEdit->setPlaceholderText(ToQString(CFrameDesktop::DefaultRecordingsFolder()));
    QPushButton* browseRecordings = MakeButton(this, 1091, QStringLiteral("Browse"));
    connect(browseRecordings, &QPushButton::clicked, this,
            [this] { Browse(u"Pick a folder for stream recordings:", m_recordingsFolder); });
    grid->addWidget(new QLabel(QStringLiteral("Stream Recordings Folder:"), this), 4, 0, 1, 2);
    grid->addWidget(m_recordingsEdit, 5, 0);
    grid->addWidget(browseRecordings, 5, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("Set initial directories used when browsing for\n"
                                                "Video Files and Contents Files."),
                                 this));
    layout->addLayout(grid);
    layout->addWidget(MakeOkCancel());
}

void CFoldersDlg::OnInitDialog() {
    FillControls();
}

void CFoldersDlg::FillControls() {
    m_videoEdit->setText(ToQString(m_videoFolder));
    m_contentsEdit->setText(ToQString(m_contentsFolder));
    m_recordingsEdit->setText(ToQString(m_recordingsFolder));
}

void CFoldersDlg::Browse(const char16_t* prompt, CString& field) {
    FolderBrowseRequest request;
    request.prompt = prompt;
    request.initialFolder = field;
    request.flags = BIF_RETURNONLYFSDIRS | BIF_EDITBOX | BIF_NEWDIALOGSTYLE;
    CString chosen;
    if (!BrowseForFolder(request, chosen) || chosen.IsEmpty())
        return;
    field = chosen;
    FillControls();
}
