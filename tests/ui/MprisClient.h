// A client of the MPRIS player on the session bus, as a desktop's sound
// menu is: on a connection of its own, calling without blocking the event
// loop that the player answers on, and keeping every change it is told of.
#pragma once
#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QObject>
#include <QStringList>
#include <QVariant>
#include <QVariantMap>
#include <vector>

class MprisClient : public QObject {
    Q_OBJECT
public:
    explicit MprisClient(const QString& service);
    ~MprisClient() override;

    // A property of the player interface; invalid when the call failed.
    QVariant Property(const QString& name);
    QVariantMap Metadata();
    // Calls a method of the player interface (or of the root one) and
    // waits for its answer; false when it failed.
    bool Call(const QString& method, const QVariantList& arguments = {});
    bool CallRoot(const QString& method);
    bool SetProperty(const QString& name, const QVariant& value);

    // Everything the player said, in order.
    std::vector<QVariantMap> m_changes;
    std::vector<qlonglong> m_seeks;
    // The titles of the metadata changes, in order, repeats left out.
    QStringList Titles() const;

public slots:
    void OnPropertiesChanged(const QString& interface, const QVariantMap& changed,
                             const QStringList& invalidated);
    void OnSeeked(qlonglong position);

private:
    bool Send(const QString& interface, const QString& method, const QVariantList& arguments,
              QVariant* result);

    QString m_service;
    QDBusConnection m_bus;
};
