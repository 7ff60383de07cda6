// Speed of the radio search dialog on a made-up directory of 55,000
// stations, measured on the real dialog as a user works it: the Enter key in
// the name box until the result list has painted its rows, and a click on a
// heading over 50,000 results until the list has painted again.
//   radio_dialog_bench [STATIONS]
#include <unistd.h>

#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <vector>

#include "app/OrvexDoc.h"
#include "bench/BenchTiming.h"
#include "bench/StationDirectoryWriter.h"
#include "platform/qt/QtGlue.h"
#include "ui/dialogs/RbSearchDlg.h"
#include "ui/dialogs/StationTableModel.h"

namespace {

int g_failures = 0;

void Report(const char* what, const Figures& f, double target) {
    const bool ok = f.worst < target;
    g_failures += !ok;
    const QByteArray padded = QString::fromUtf8(what).leftJustified(52).toUtf8();
    printf("%s median %7.2f ms, worst %7.2f ms (target < %.0f) %s\n", padded.constData(), f.median,
           f.worst, target, ok ? "ok" : "MISSED");
}

template <typename Control>
Control* Child(QWidget* dialog, int id) {
    return dialog->findChild<Control*>(QString::number(id));
}

} // namespace

int main(int argc, char** argv) {
    const int stations = argc > 1 ? atoi(argv[1]) : 55000;
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    // The name files are read from the start directory, the staged one here.
    if (chdir(ORVEX_STAGE_DIR) != 0)
        return 2;
    const std::filesystem::path xml = std::filesystem::temp_directory_path() /
                                      ("orvex-dialog-bench-" + std::to_string(getpid()) + ".xml");
    if (!StationDirectoryWriter().WriteFile(xml.string(), stations))
        return 2;

    QApplication application(argc, argv);
    InstallQtPlatformGlue();
    // The database comes from its file, as the program loads it at start-up.
    COrvexDoc doc;
    CRadioBrowseDb& db = doc.m_radioDb;
    {
        CRadioBrowseDb built;
        CString error;
        const int parsed = built.ParseStationFile(CString(xml.string()), &error);
        std::filesystem::remove(xml);
        if (!parsed || !built.BuildLookupLists(parsed, &error)) {
            fprintf(stderr, "radio_dialog_bench: %s\n", error.ToUtf8().c_str());
            return 2;
        }
        const CString file(xml.string() + ".dat");
        if (!SaveRadioBrowseFile(built, file) || !LoadRadioBrowseFile(db, file))
            return 2;
        std::filesystem::remove(file.ToUtf8());
    }
    printf("database: %d stations, %d tags, %d states\n", db.m_stations.GetSize(),
           db.m_tags.GetSize(), db.m_states.GetSize());

    CRbSearchDlg dialog(nullptr, &doc);
    dialog.resize(900, 700);
    QTimer::singleShot(0, &dialog, [&] {
        auto* name = Child<QLineEdit>(&dialog, 1057);
        auto* table = Child<QTableView>(&dialog, 1077);
        auto* line = Child<QLabel>(&dialog, 1071);
        // Results shown: the list has painted its visible rows.
        auto shown = [&] { table->viewport()->repaint(); };
        for (const char* words : {"Radio", "FM", "a", "Classic Hits", "Zürich", "radio nova"}) {
            name->setText(QString::fromUtf8(words));
            name->setFocus();
            QApplication::processEvents();
            const Figures f = Measure(
                15, [] {},
                [&] {
                    QTest::keyClick(name, Qt::Key_Return);
                    shown();
                });
            char what[96];
            snprintf(what, sizeof what, "Enter in the name box \"%s\" (%d rows)", words,
                     table->model()->rowCount());
            Report(what, f, 30);
        }
        fprintf(stderr, "last result line: %s\n", line->text().toUtf8().constData());

        // Many results: nearly every station has been clicked at least once.
        name->clear();
        Child<QLineEdit>(&dialog, 1062)->setText(QStringLiteral("1"));
        QTest::keyClick(name, Qt::Key_Return);
        const int rows = table->model()->rowCount();
        QHeaderView* header = table->horizontalHeader();
        for (int column :
             {CStationTableModel::NAME, CStationTableModel::VOTES, CStationTableModel::CLICKS}) {
            const Figures f = Measure(
                10, [] {},
                [&] {
                    emit header->sectionClicked(column);
                    shown();
                });
            char what[96];
            snprintf(
                what, sizeof what, "heading \"%s\" over %d rows",
                header->model()->headerData(column, Qt::Horizontal).toString().toUtf8().constData(),
                rows);
            Report(what, f, 60);
        }
        if (rows < 50000) {
            printf("only %d rows for the sort (50,000 wanted)\n", rows);
            ++g_failures;
        }
        dialog.reject();
    });
    dialog.DoModal();
    return g_failures ? 1 : 0;
}
