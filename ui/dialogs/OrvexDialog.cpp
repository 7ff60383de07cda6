#include "ui/dialogs/OrvexDialog.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>

#include "contents/MediaItem.h"
#include "platform/base/MessageBox.h"
#include "platform/qt/QtGlue.h"

COrvexDialog::COrvexDialog(QWidget* parent, const QString& name) : QDialog(parent) {
    setObjectName(name);
}

int COrvexDialog::DoModal() {
    OnInitDialog();
    return exec() == QDialog::Accepted ? IDOK : IDCANCEL;
}

QDialogButtonBox* COrvexDialog::MakeOkCancel(const QString& okText) {
    auto* buttons = new QDialogButtonBox(this);
    QPushButton* ok = buttons->addButton(okText, QDialogButtonBox::AcceptRole);
    QPushButton* cancel = buttons->addButton(QDialogButtonBox::Cancel);
    SetControlId(ok, IDOK);
    SetControlId(cancel, IDCANCEL);
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, [this] { OnOK(); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    return buttons;
}

void COrvexDialog::ShowBox(const char16_t* text) {
    AfxMessageBox(CString(text), MB_OK);
}

void ExchangeChecks(std::initializer_list<CheckField> boxes, bool save) {
    for (const CheckField& box : boxes) {
        if (save)
            *box.field = box.control->isChecked();
        else
            box.control->setChecked(*box.field != FALSE);
    }
}

void ExchangeText(QLineEdit* edit, CString& field, bool save) {
    if (save)
        field = FromQString(edit->text());
    else
        edit->setText(ToQString(field));
}

void SetControlId(QObject* control, int id) {
    control->setObjectName(QString::number(id));
}

QCheckBox* MakeCheck(QWidget* parent, int id, const QString& text) {
    auto* box = new QCheckBox(text, parent);
    SetControlId(box, id);
    return box;
}

QPushButton* MakeButton(QWidget* parent, int id, const QString& text) {
    auto* button = new QPushButton(text, parent);
    SetControlId(button, id);
    button->setAutoDefault(false);
    return button;
}

QString MediaTypeName(int32_t type) {
    CMediaItem item;
    item.m_type = static_cast<MediaType>(type);
    return ToQString(item.GetTypeName());
}

void FillMediaTypeList(QComboBox* box) {
    for (int32_t type = 0; type <= static_cast<int32_t>(MEDIA_AUDIO_FILE); ++type)
        box->addItem(MediaTypeName(type));
    WidenDropDown(box);
}

int32_t MediaTypeFromName(const QString& name) {
    for (int32_t type = 0; type <= static_cast<int32_t>(MEDIA_AUDIO_FILE); ++type) {
        if (name == MediaTypeName(type))
            return type;
    }
    return MEDIA_NONE;
}

void WidenDropDown(QComboBox* box) {
    const QFontMetrics metrics(box->view()->font());
    int widest = 0;
    for (int i = 0; i < box->count(); ++i)
        widest = std::max(widest, metrics.horizontalAdvance(box->itemText(i)));
    const int scrollBar = box->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, box);
    const int edge = box->view()->frameWidth();
    box->view()->setMinimumWidth(widest + scrollBar + 2 * edge);
}

BOOL HasInvalidPathCharacters(const CString& path) {
    return path.FindOneOf(CString(u"\\*?\"<>|")) >= 0;
}
