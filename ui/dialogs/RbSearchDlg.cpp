#include "ui/dialogs/RbSearchDlg.h"

#include <QComboBox>
#include <QFocusEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QResizeEvent>
#include <QScrollBar>
#include <QTableView>
#include <QVBoxLayout>

#include "app/OrvexDoc.h"
#include "platform/base/MessageBox.h"
#include "platform/qt/QtGlue.h"
#include "radio/StationText.h"
#include "ui/dialogs/DialogScroller.h"
#include "ui/dialogs/RbSearchLists.h"
#include "ui/dialogs/StationTableModel.h"

namespace {

constexpr int32_t kMaxNumber = 2000000000;

QComboBox* MakeCombo(QWidget* parent, int id, bool editable) {
    auto* box = new QComboBox(parent);
    SetControlId(box, id);
    box->setEditable(editable);
    if (editable)
        box->setInsertPolicy(QComboBox::NoInsert);
    box->setMaxVisibleItems(20);
    box->setMinimumWidth(240);
    return box;
}

QLineEdit* MakeEdit(QWidget* parent, int id) {
    auto* edit = new QLineEdit(parent);
    SetControlId(edit, id);
    return edit;
}

// A whole number in its edit, as the classic data exchange reads it: blanks
// around it and a sign are allowed, nothing else.
bool ReadInteger(const QString& text, int32_t& value) {
    bool ok = false;
    const qlonglong number = text.trimmed().toLongLong(&ok);
    if (!ok || number < INT32_MIN || number > INT32_MAX)
        return false;
    value = static_cast<int32_t>(number);
    return true;
}

} // namespace

// The list of chosen tags. A right click opens the dialog's menu without
// choosing the line under the pointer, and the selection goes whenever the
// focus does, but not for the menu itself.
class CTagListBox : public QListWidget {
public:
    CTagListBox(CRbSearchDlg* dialog, QWidget* parent) : QListWidget(parent), m_dialog(dialog) {
        SetControlId(this, 1074);
        setSelectionMode(QAbstractItemView::SingleSelection);
    }

protected:
    void mousePressEvent(QMouseEvent* event) override {
        if (event->button() == Qt::RightButton) {
            event->accept();
            return;
        }
        QListWidget::mousePressEvent(event);
    }
    void contextMenuEvent(QContextMenuEvent* event) override {
        if (event->reason() == QContextMenuEvent::Mouse)
            m_dialog->OnTagMenu(event->pos());
    }
    void focusOutEvent(QFocusEvent* event) override {
        QListWidget::focusOutEvent(event);
        if (event->reason() != Qt::PopupFocusReason)
            setCurrentRow(-1, QItemSelectionModel::Clear);
    }

private:
    CRbSearchDlg* m_dialog;
};

CRbSearchDlg::CRbSearchDlg(QWidget* parent, COrvexDoc* doc)
    : COrvexDialog(parent, QStringLiteral("152")), m_pDoc(doc) {
    setWindowTitle(QStringLiteral("Search Radio Stations"));
    setSizeGripEnabled(true);
    auto* body = new QWidget;

    m_countryBox = MakeCombo(body, 1059, true);
    m_stateBox = MakeCombo(body, 1061, true);
    m_languageBox = MakeCombo(body, 1080, true);
    m_nameEdit = MakeEdit(body, 1057);
    m_tagBox = new CTagListBox(this, body);
    m_tagBox->setFixedHeight(96);
    m_tagChoice = MakeCombo(body, 1060, false);
    m_votesEdit = MakeEdit(body, 1058);
    m_clicksEdit = MakeEdit(body, 1062);
    m_maxEdit = MakeEdit(body, 1072);
    for (QLineEdit* edit : {m_votesEdit, m_clicksEdit, m_maxEdit}) {
        edit->setMaximumWidth(120);
        edit->installEventFilter(this);
    }
    QPushButton* clearCriteria = MakeButton(body, 1069, QStringLiteral("Clear all Criterea"));
    m_resultLine = new QLabel(QStringLiteral("Search Results"), body);
    SetControlId(m_resultLine, 1071);

    m_model = new CStationTableModel(doc->m_radioDb.m_stations, this);
    m_table = new QTableView(body);
    SetControlId(m_table, 1077);
    m_table->setModel(m_model);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setWordWrap(false);
    m_table->setShowGrid(false);
    m_table->setMinimumSize(680, 300);
    m_table->verticalHeader()->hide();
    // Rows of one height need no measuring, however many there are.
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + 6);
    m_table->horizontalHeader()->setSectionsClickable(true);
    m_table->horizontalHeader()->setHighlightSections(false);

    QPushButton* search = MakeButton(body, 1066, QStringLiteral("Search Database"));
    search->setDefault(true);
    QPushButton* clearResults = MakeButton(body, 1070, QStringLiteral("Clear Search Results"));
    m_topicEdit = MakeEdit(body, 1078);
    QPushButton* import = MakeButton(body, 1067, QStringLiteral("Import Results to Topic:"));
    QPushButton* ok = MakeButton(body, IDOK, QStringLiteral("Ok"));
    ok->hide();
    QPushButton* help = MakeButton(body, 9, QStringLiteral("Help"));
    QPushButton* done = MakeButton(body, IDCANCEL, QStringLiteral("Done"));

    auto* criteria = new QGridLayout;
    criteria->addWidget(new QLabel(QStringLiteral("Within in a Country"), body), 0, 0);
    criteria->addWidget(m_countryBox, 1, 0);
    criteria->addWidget(new QLabel(QStringLiteral("Within a State or Area"), body), 2, 0);
    criteria->addWidget(m_stateBox, 3, 0);
    criteria->addWidget(new QLabel(QStringLiteral("Station Language"), body), 4, 0);
    criteria->addWidget(m_languageBox, 5, 0);
    criteria->addWidget(new QLabel(QStringLiteral("Words in Station Name"), body), 6, 0);
    criteria->addWidget(m_nameEdit, 7, 0);
    criteria->addWidget(new QLabel(QStringLiteral("Station Tags"), body), 0, 1);
    criteria->addWidget(m_tagBox, 1, 1, 4, 1);
    criteria->addWidget(m_tagChoice, 5, 1);
    auto* numbers = new QGridLayout;
    numbers->addWidget(new QLabel(QStringLiteral("Min. Votes"), body), 0, 0);
    numbers->addWidget(m_votesEdit, 1, 0);
    numbers->addWidget(new QLabel(QStringLiteral("Min Clicks"), body), 0, 1);
    numbers->addWidget(m_clicksEdit, 1, 1);
    numbers->addWidget(new QLabel(QStringLiteral("Max. Results"), body), 0, 2);
    numbers->addWidget(m_maxEdit, 1, 2);
    criteria->addLayout(numbers, 6, 1, 2, 1);
    criteria->addWidget(clearCriteria, 7, 2, Qt::AlignBottom);
    criteria->setColumnStretch(1, 1);

    auto* importRow = new QHBoxLayout;
    importRow->addWidget(search);
    importRow->addWidget(clearResults);
    importRow->addSpacing(24);
    importRow->addWidget(import);
    importRow->addWidget(m_topicEdit, 1);
    importRow->addSpacing(24);
    importRow->addWidget(ok);
    importRow->addWidget(help);
    importRow->addWidget(done);

    auto* bodyLayout = new QVBoxLayout(body);
    bodyLayout->addWidget(new QLabel(
        QStringLiteral("All Criteria entered below will be searched for and must be found."),
        body));
    bodyLayout->addLayout(criteria);
    bodyLayout->addSpacing(8);
    bodyLayout->addWidget(m_resultLine);
    bodyLayout->addWidget(m_table, 1);
    bodyLayout->addLayout(importRow);

    m_scroller = MakeScrollingBody(this, body);
    m_scroller->m_lineDivisor = 10;
    m_scroller->m_topWhenHigh = true;

    connect(m_countryBox, &QComboBox::activated, this, [this] { OnCountryChange(); });
    connect(m_tagChoice, &QComboBox::activated, this, &CRbSearchDlg::OnTagChosen);
    connect(clearCriteria, &QPushButton::clicked, this, &CRbSearchDlg::OnClearCriteria);
    connect(search, &QPushButton::clicked, this, &CRbSearchDlg::OnSearch);
    connect(clearResults, &QPushButton::clicked, this, &CRbSearchDlg::OnClearResults);
    connect(import, &QPushButton::clicked, this, &CRbSearchDlg::OnImport);
    connect(ok, &QPushButton::clicked, this, [this] { OnOK(); });
    connect(help, &QPushButton::clicked, this, &CRbSearchDlg::OnHelp);
    connect(done, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_table->horizontalHeader(), &QHeaderView::sectionClicked, this,
            &CRbSearchDlg::OnColumnClick);
}

CRbSearchDlg::~CRbSearchDlg() = default;

void CRbSearchDlg::OnInitDialog() {
    UpdateData(false);
    const CRadioBrowseDb& db = m_pDoc->m_radioDb;
    m_tagChoice->clear();
    for (const CTag& tag : db.m_tags)
        m_tagChoice->addItem(ToQString(StationText(tag.m_name)));
    m_tagChoice->setCurrentIndex(-1);
    m_lastTagChoice = -1;

    m_countryBox->clear();
    m_countryBox->addItem(QStringLiteral("No Country"));
    for (const CCountryCode& country : db.m_countries)
        m_countryBox->addItem(ToQString(StationText(country.m_name)));
    m_countryBox->setCurrentIndex(0);
    m_countryName = FromQString(m_countryBox->currentText());
    FillStateList();

    m_languageBox->clear();
    m_languageBox->addItem(QStringLiteral("No Language"));
    for (const CLanguageCode& language : db.m_languages) {
        if (language.m_used)
            m_languageBox->addItem(ToQString(StationText(language.m_name)));
    }
    m_languageBox->setCurrentIndex(0);
    SetResultLine(CString(u"Search Results"));
}

void CRbSearchDlg::showEvent(QShowEvent* event) {
    COrvexDialog::showEvent(event);
    if (!m_opened) {
        m_opened = true;
        SizeColumns();
        m_scroller->OnOpen();
    }
}

void CRbSearchDlg::resizeEvent(QResizeEvent* event) {
    COrvexDialog::resizeEvent(event);
    m_scroller->OnSize(event->size().height());
}

void CRbSearchDlg::SizeColumns() {
    const int w = m_table->viewport()->width() / 6;
    m_table->setColumnWidth(CStationTableModel::NAME, 2 * w);
    m_table->setColumnWidth(CStationTableModel::VOTES, w);
    m_table->setColumnWidth(CStationTableModel::CLICKS, w);
    m_table->setColumnWidth(CStationTableModel::URL, 2 * w);
}

void CRbSearchDlg::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1) {
        OnHelp();
        return;
    }
    COrvexDialog::keyPressEvent(event);
}

bool CRbSearchDlg::eventFilter(QObject* watched, QEvent* event) {
    // A number box left empty reads 0.
    if (event->type() == QEvent::FocusOut) {
        if (auto* edit = qobject_cast<QLineEdit*>(watched); edit && edit->text().isEmpty())
            edit->setText(QStringLiteral("0"));
    }
    return COrvexDialog::eventFilter(watched, event);
}

bool CRbSearchDlg::UpdateData(bool save) {
    if (!save) {
        m_countryBox->setEditText(ToQString(m_countryName));
        m_languageBox->setEditText(ToQString(m_languageName));
        m_stateBox->setEditText(ToQString(m_stateName));
        ExchangeText(m_nameEdit, m_nameWords, false);
        ExchangeText(m_topicEdit, m_topicName, false);
        m_clicksEdit->setText(QString::number(m_minClicks));
        m_votesEdit->setText(QString::number(m_minVotes));
        m_maxEdit->setText(QString::number(m_maxResults));
        return true;
    }
    m_countryName = FromQString(m_countryBox->currentText());
    m_languageName = FromQString(m_languageBox->currentText());
    m_stateName = FromQString(m_stateBox->currentText());
    ExchangeText(m_nameEdit, m_nameWords, true);
    ExchangeText(m_topicEdit, m_topicName, true);
    for (auto [edit, field] :
         {std::pair{m_clicksEdit, &m_minClicks}, std::pair{m_votesEdit, &m_minVotes},
          std::pair{m_maxEdit, &m_maxResults}}) {
        int32_t value = 0;
        const char16_t* refusal = nullptr;
        if (!ReadInteger(edit->text(), value))
            refusal = u"Please enter an integer.";
        else if (value < 0 || value > kMaxNumber)
            refusal = u"Please enter an integer between 0 and 2000000000.";
        if (refusal) {
            AfxMessageBox(CString(refusal), MB_OK | MB_ICONEXCLAMATION);
            edit->setFocus();
            edit->selectAll();
            return false;
        }
        *field = value;
    }
    return true;
}

void CRbSearchDlg::FillStateList() {
    m_stateBox->clear();
    if (m_countryName == u"No Country" || m_countryName.IsEmpty()) {
        m_stateBox->addItem(QStringLiteral("No State"));
        m_stateBox->setCurrentIndex(0);
        return;
    }
    const CRadioBrowseDb& db = m_pDoc->m_radioDb;
    CString code;
    if (!CountryNameToCode(db, m_countryName, code))
        return;
    m_stateBox->addItem(QStringLiteral("No State"));
    for (const CState& state : db.m_states) {
        if (state.m_countryCode != code || state.m_name.IsEmpty())
            continue;
        if (code == u"US" && state.m_name == u" ")
            continue;
        m_stateBox->addItem(ToQString(StationText(state.m_name)));
    }
    m_stateBox->setCurrentIndex(0);
}

void CRbSearchDlg::OnCountryChange() {
    m_countryName = FromQString(m_countryBox->currentText());
    FillStateList();
}

void CRbSearchDlg::SetResultLine(const CString& text) {
    m_resultLine->setText(ToQString(text));
}
