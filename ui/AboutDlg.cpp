#include "ui/AboutDlg.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include "app/OrvexApp.h"
#include "platform/qt/QtGlue.h"
#include "ui/AppIcon.h"

CAboutDlg::CAboutDlg(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("100"));
    setWindowTitle(QStringLiteral("About Orvex"));

    auto* icon = new QLabel(this);
    icon->setPixmap(OrvexIcon().pixmap(48, 48));
    icon->setAlignment(Qt::AlignTop);

    auto* text = new QPlainTextEdit(this);
    text->setObjectName(QStringLiteral("1053"));
    text->setReadOnly(true);
    COrvexApp* app = AfxGetOrvexApp();
    // The box shows CR LF line ends as one line break each.
    QString about = app ? ToQString(app->GetAboutText()) : QString();
    about.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text->setPlainText(about);
    text->setMinimumSize(420, 260);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

    auto* row = new QHBoxLayout;
    row->addWidget(icon);
    row->addWidget(text, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(row);
    layout->addWidget(buttons);
}
