// The common ground of the program's modal dialogs: the caller fills the
// fields, calls DoModal, and reads the fields after OK. OK runs OnOK, which
// checks what the user entered and stays open on a refusal; Cancel, Escape
// and closing the window leave the fields as they were.
#pragma once
#include <QDialog>
#include <initializer_list>

#include "platform/base/CString.h"

class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QLineEdit;
class QPushButton;

class COrvexDialog : public QDialog {
public:
    // IDOK after OK, IDCANCEL otherwise.
    int DoModal();

protected:
    // `name` becomes the dialog's objectName, so tests find it.
    COrvexDialog(QWidget* parent, const QString& name);

    // Fills the controls from the fields, before the dialog shows.
    virtual void OnInitDialog() {}
    // Checks and takes the controls; EndOK closes the dialog with OK.
    virtual void OnOK() { EndOK(); }
    void EndOK() { accept(); }

    // OK (id 1, with its own text where the dialog names it) and Cancel (id 2).
    QDialogButtonBox* MakeOkCancel(const QString& okText = QStringLiteral("OK"));
    // A refusal in OnOK or a handler: one plain box with the exact text.
    static void ShowBox(const char16_t* text);
};

// The data exchange of a dialog: controls to fields (save) or fields to
// controls.
struct CheckField {
    QCheckBox* control;
    BOOL* field;
};
void ExchangeChecks(std::initializer_list<CheckField> boxes, bool save);
void ExchangeText(QLineEdit* edit, CString& field, bool save);

// Control ids become object names, as the numbers of the menu commands do.
void SetControlId(QObject* control, int id);
QCheckBox* MakeCheck(QWidget* parent, int id, const QString& text);
QPushButton* MakeButton(QWidget* parent, int id, const QString& text);

// Fills a plain list with the five type names, in type order, widened to show
// the longest; the text that is chosen reads back as a type, 0 for any other.
void FillMediaTypeList(QComboBox* box);
int32_t MediaTypeFromName(const QString& name);
QString MediaTypeName(int32_t type);
// Makes the drop-down as wide as its widest entry, a scroll bar and two edges.
void WidenDropDown(QComboBox* box);

// The characters that a local file path of an import or export may not hold:
// the seven of the classic file dialogs, with the path separator turned round
// as everywhere on this platform ("/" separates, "\" is refused).
BOOL HasInvalidPathCharacters(const CString& path);
