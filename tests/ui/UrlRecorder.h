// Takes the place of the desktop's browser for local files: every file
// address the program hands to QDesktopServices is recorded, and nothing is
// launched.
#pragma once
#include <QDesktopServices>
#include <QObject>
#include <QUrl>
#include <vector>

class UrlRecorder : public QObject {
    Q_OBJECT
public:
    UrlRecorder() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "Open"); }
    ~UrlRecorder() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }

    std::vector<QUrl> urls;

public slots:
    void Open(const QUrl& url) { urls.push_back(url); }
};
