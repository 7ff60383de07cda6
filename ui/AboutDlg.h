// The About box: the program's version and the projects it is built on.
#pragma once
#include <QDialog>

class CAboutDlg : public QDialog {
public:
    explicit CAboutDlg(QWidget* parent = nullptr);
};
