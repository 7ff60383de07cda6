#include "ui/dialogs/DvdNavDlg.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/OrvexApp.h"
#include "platform/base/UserMessages.h"
#include "platform/qt/QtGlue.h"
#include "player/MediaPlayer.h"

namespace {

QLabel* MakeStatic(QWidget* parent, int id) {
    auto* label = new QLabel(parent);
    SetControlId(label, id);
    return label;
}

} // namespace

CDvdNavDlg::CDvdNavDlg(QWidget* parent) : COrvexDialog(parent, QStringLiteral("151")) {
    setWindowTitle(QStringLiteral("DVD Navigation"));
    auto* information = new QGroupBox(QStringLiteral("Information"), this);
    m_title = MakeStatic(information, 1045);
    m_chapter = MakeStatic(information, 1046);
    m_domain = MakeStatic(information, 1047);
    m_duration = MakeStatic(information, 1005);
    auto* facts = new QVBoxLayout(information);
    for (QLabel* label : {m_title, m_chapter, m_duration, m_domain})
        facts->addWidget(label);

    m_titles = new QComboBox(this);
    SetControlId(m_titles, 1049);
    m_chapters = new QComboBox(this);
    SetControlId(m_chapters, 1050);
    auto* choices = new QFormLayout;
    choices->addRow(QStringLiteral("Title"), m_titles);
    choices->addRow(QStringLiteral("Chapter"), m_chapters);

    QPushButton* goTo = MakeButton(this, 1048, QStringLiteral("Go To"));
    QPushButton* titleMenu = MakeButton(this, 1051, QStringLiteral("Show Title Menu"));
    QPushButton* rootMenu = MakeButton(this, 1052, QStringLiteral("Show Root Menu"));
    QPushButton* close = MakeButton(this, 1, QStringLiteral("Close"));
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {goTo, titleMenu, rootMenu, close})
        buttons->addWidget(button);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(information);
    layout->addLayout(choices);
    layout->addLayout(buttons);

    connect(goTo, &QPushButton::clicked, this, &CDvdNavDlg::OnGoTo);
    connect(titleMenu, &QPushButton::clicked, this, [this] {
        if (IsDvd())
            m_pPlayer->ShowDvdMenu(DVD_MENU_Title);
    });
    connect(rootMenu, &QPushButton::clicked, this, [this] {
        if (IsDvd())
            m_pPlayer->ShowDvdMenu(DVD_MENU_Root);
    });
    connect(close, &QPushButton::clicked, this, [this] { accept(); });
    connect(m_titles, qOverload<int>(&QComboBox::activated), this, &CDvdNavDlg::OnTitleCloseUp);
}

CDvdNavDlg::~CDvdNavDlg() {
    COrvexApp* app = AfxGetOrvexApp();
    if (app && app->m_hwndDvdNav == GetSafeHwnd())
        app->m_hwndDvdNav = nullptr;
}

BOOL CDvdNavDlg::IsDvd() const {
    return m_pPlayer && m_pPlayer->m_bDvd;
}

void CDvdNavDlg::OnInitDialog() {
    if (!m_pPlayer)
        return;
    if (COrvexApp* app = AfxGetOrvexApp())
        app->m_hwndDvdNav = GetSafeHwnd();
    Refresh();
}

void CDvdNavDlg::done(int result) {
    // However it closes, the player no longer tells it of new chapters.
    COrvexApp* app = AfxGetOrvexApp();
    if (app && app->m_hwndDvdNav == GetSafeHwnd())
        app->m_hwndDvdNav = nullptr;
    COrvexDialog::done(result);
}

LRESULT CDvdNavDlg::OnWindowMessage(UINT message, WPARAM, LPARAM) {
    if (message == UM_DVD_INFO)
        Refresh();
    return 0;
}

int CDvdNavDlg::FillNumbers(QComboBox* box, uint32_t count, uint32_t current) {
    box->clear();
    for (uint32_t n = 1; n <= count; ++n)
        box->addItem(QString::number(n));
    const int index = box->findText(QString::number(current));
    box->setCurrentIndex(index);
    return index;
}

void CDvdNavDlg::Refresh() {
    if (!IsDvd())
        return;
    m_titleText.Format(u"Current Title: %u", m_pPlayer->m_dvdTitle);
    m_chapterText.Format(u"Current Chapter: %u", m_pPlayer->m_dvdChapter);
    m_durationText.Format(u"Title Duration: %s", m_pPlayer->GetTitleDurationText());
    m_domainText.Format(u"Current Domain: %s", m_pPlayer->GetDomainName());
    m_titleIndex = FillNumbers(m_titles, m_pPlayer->m_dvdTitleCount, m_pPlayer->m_dvdTitle);
    m_chapterIndex = FillNumbers(m_chapters, m_pPlayer->m_dvdChapterCount, m_pPlayer->m_dvdChapter);
    m_title->setText(ToQString(m_titleText));
    m_chapter->setText(ToQString(m_chapterText));
    m_duration->setText(ToQString(m_durationText));
    m_domain->setText(ToQString(m_domainText));
}

void CDvdNavDlg::OnGoTo() {
    m_titleIndex = m_titles->currentIndex();
    m_chapterIndex = m_chapters->currentIndex();
    if (IsDvd())
        m_pPlayer->PlayChapterInTitle(static_cast<uint32_t>(m_titleIndex + 1),
                                      static_cast<uint32_t>(m_chapterIndex + 1));
}

void CDvdNavDlg::OnTitleCloseUp(int index) {
    if (index == m_titleIndex)
        return;
    m_titleIndex = index;
    m_chapters->clear();
    m_chapters->addItem(QStringLiteral("1"));
    m_chapters->setCurrentIndex(0);
    m_chapterIndex = 0;
    if (!IsDvd())
        return;
    const uint32_t count = m_pPlayer->GetChapterCount(static_cast<uint32_t>(index + 1));
    if (count != 0)
        m_chapterIndex = FillNumbers(m_chapters, count, 1);
}
