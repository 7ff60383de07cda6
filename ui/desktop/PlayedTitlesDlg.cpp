#include "ui/desktop/PlayedTitlesDlg.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

CPlayedTitlesDlg::CPlayedTitlesDlg(const QString& text, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("CPlayedTitlesDlg"));
    setWindowTitle(QStringLiteral("Played Titles"));
    m_text = new QPlainTextEdit(this);
    m_text->setObjectName(QStringLiteral("PlayedTitlesText"));
    m_text->setReadOnly(true);
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_text->setTabStopDistance(m_text->fontMetrics().horizontalAdvance(QLatin1Char(' ')) * 20);
    m_text->setPlainText(text.isEmpty() ? QString() : text);
    m_text->setPlaceholderText(QStringLiteral("No titles heard yet."));
    m_text->verticalScrollBar()->setValue(m_text->verticalScrollBar()->maximum());

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton* copy = buttons->addButton(QStringLiteral("Copy"), QDialogButtonBox::ActionRole);
    copy->setObjectName(QStringLiteral("Copy"));
    connect(copy, &QPushButton::clicked, this, &CPlayedTitlesDlg::CopyToClipboard);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_text);
    layout->addWidget(buttons);
    resize(720, 420);
}

void CPlayedTitlesDlg::CopyToClipboard() {
    QString selected = m_text->textCursor().selectedText();
    // A selection across lines holds paragraph separators, not line ends.
    selected.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    QApplication::clipboard()->setText(selected.isEmpty() ? m_text->toPlainText() : selected);
}
