#include "tests/ui/MprisClient.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include "tests/ui/FrameFixture.h"

namespace {

const QString kPath = QStringLiteral("/org/mpris/MediaPlayer2");
const QString kPlayer = QStringLiteral("org.mpris.MediaPlayer2.Player");
const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");

// Nested maps arrive as marshalled arguments.
QVariantMap AsMap(const QVariant& value) {
    if (value.canConvert<QDBusArgument>())
        return qdbus_cast<QVariantMap>(value.value<QDBusArgument>());
    return value.toMap();
}

} // namespace

MprisClient::MprisClient(const QString& service)
    : m_service(service), m_bus(QDBusConnection::connectToBus(
                              QDBusConnection::SessionBus, QStringLiteral("mpris-test-client"))) {
    m_bus.connect(m_service, kPath, kProperties, QStringLiteral("PropertiesChanged"), this,
                  SLOT(OnPropertiesChanged(QString, QVariantMap, QStringList)));
    m_bus.connect(m_service, kPath, kPlayer, QStringLiteral("Seeked"), this,
                  SLOT(OnSeeked(qlonglong)));
}

MprisClient::~MprisClient() {
    QDBusConnection::disconnectFromBus(QStringLiteral("mpris-test-client"));
}

bool MprisClient::Send(const QString& interface, const QString& method,
                       const QVariantList& arguments, QVariant* result) {
    QDBusMessage message = QDBusMessage::createMethodCall(m_service, kPath, interface, method);
    message.setArguments(arguments);
    QDBusPendingCall call = m_bus.asyncCall(message, 10000);
    if (!WaitFor([&] { return call.isFinished(); }, 12000))
        return false;
    QDBusMessage reply = call.reply();
    if (reply.type() != QDBusMessage::ReplyMessage)
        return false;
    if (result && !reply.arguments().isEmpty())
        *result = reply.arguments().first();
    return true;
}

QVariant MprisClient::Property(const QString& name) {
    QVariant value;
    if (!Send(kProperties, QStringLiteral("Get"), {kPlayer, name}, &value))
        return QVariant();
    return value.value<QDBusVariant>().variant();
}

QVariantMap MprisClient::Metadata() {
    return AsMap(Property(QStringLiteral("Metadata")));
}

bool MprisClient::Call(const QString& method, const QVariantList& arguments) {
    return Send(kPlayer, method, arguments, nullptr);
}

bool MprisClient::CallRoot(const QString& method) {
    return Send(QStringLiteral("org.mpris.MediaPlayer2"), method, {}, nullptr);
}

bool MprisClient::SetProperty(const QString& name, const QVariant& value) {
    return Send(kProperties, QStringLiteral("Set"),
                {kPlayer, name, QVariant::fromValue(QDBusVariant(value))}, nullptr);
}

QStringList MprisClient::Titles() const {
    QStringList titles;
    for (const QVariantMap& change : m_changes) {
        auto it = change.find(QStringLiteral("Metadata"));
        if (it == change.end())
            continue;
        QString title = AsMap(*it).value(QStringLiteral("xesam:title")).toString();
        if (!title.isEmpty() && (titles.isEmpty() || titles.last() != title))
            titles << title;
    }
    return titles;
}

void MprisClient::OnPropertiesChanged(const QString& interface, const QVariantMap& changed,
                                      const QStringList&) {
    if (interface == kPlayer)
        m_changes.push_back(changed);
}

void MprisClient::OnSeeked(qlonglong position) {
    m_seeks.push_back(position);
}
