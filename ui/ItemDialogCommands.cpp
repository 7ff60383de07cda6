// The menu commands that run the document's dialogs, and the dialogs themselves
// handed to the document.
#include <QAction>

#include "app/OrvexDoc.h"
#include "ui/Commands.h"
#include "ui/MainFrame.h"
#include "ui/dialogs/DocDialogs.h"

namespace {

template <typename Handler>
void Connect(CMainFrame& frame, int id, Handler handler) {
    QAction* action = frame.CommandAction(id);
    if (!action)
        return;
    action->setEnabled(true);
    QObject::connect(action, &QAction::triggered, &frame, handler);
}

} // namespace

void ConnectItemDialogCommands(CMainFrame& frame, COrvexDoc& doc) {
    new CDocDialogs(&frame, doc);
    Connect(frame, ID_FOLDER_LOCATIONS, [&doc] { doc.OnFolderLocations(); });
    Connect(frame, ID_LAV_SETUP, [&doc] { doc.OnLavSetup(); });
    Connect(frame, ID_EXPORT, [&doc] { doc.OnExport(); });
    Connect(frame, ID_IMPORT, [&doc] { doc.OnImport(); });
    Connect(frame, ID_RADIO_SEARCH, [&doc] { doc.OnSearchRadio(); });
    Connect(frame, ID_RADIO_UPDATE, [&doc] { doc.OnUpdateRadioDb(); });
    Connect(frame, ID_HELP_CONTENTS, [&doc] { doc.OnHelp(); });
}
