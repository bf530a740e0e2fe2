#include "tests/support/TestFiles.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVirtualObject>

#include <arpa/inet.h>

using Settings = QMap<QString, QVariantMap>;
using Texts = QMap<QString, QString>;

static const QString kName = "org.freedesktop.NetworkManager";
static const QString kPath = "/org/freedesktop/NetworkManager/VPN/Plugin";

/// Stands in for NetworkManager's VPN plug-ins (org.freedesktop.NetworkManager.VPN.Plugin) on a machine without PPP.
/// What it does is told by the server's name: "up..." connects over the interface "tunnel", "reject..." rejects the
/// password, anything else is never heard of. Writes what it was given to /run/given.
class VpnPlugin : public QDBusVirtualObject
{
public:
    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &bus) override
    {
        const QMap<QString, QVariant> answers = {{"NeedSecrets", ""}, {"GetAll", QVariantMap{{"State", 1u}}}};
        const QVariant answer = answers.value(message.member());
        bus.send(answer.isValid() ? message.createReply(answer) : message.createReply());
        if (message.member().startsWith("Connect")) {
            connect(qdbus_cast<Settings>(message.arguments().value(0)).value("vpn"));
        } else if (message.member() == "Disconnect") {
            emitSignal("StateChanged", 6u);
        }
        return true;
    }

private:
    static void emitSignal(const QString &name, const QVariant &value)
    {
        QDBusMessage signal = QDBusMessage::createSignal(kPath, kName + ".VPN.Plugin", name);
        QDBusConnection::systemBus().send(signal << value);
    }

    static void connect(const QVariantMap &vpn)
    {
        const auto data = qdbus_cast<Texts>(vpn.value("data"));
        const auto secrets = qdbus_cast<Texts>(vpn.value("secrets"));
        const QString server = data.value("gateway");
        const QStringList given = {data.value("user"), secrets.value("password"), secrets.value("ipsec-psk"),
                                   data.value("ipsec-enabled")};
        putFile("/run/given", given.join('\n').toUtf8());
        if (server.startsWith("reject")) {
            emitSignal("Failure", 0u);
            emitSignal("StateChanged", 6u);
        } else if (server.startsWith("up")) {
            emitSignal("Config", QVariantMap{{"tundev", "tunnel"},
                                             {"gateway", inet_addr("198.51.100.1")},
                                             {"has-ip4", true},
                                             {"has-ip6", false}});
            emitSignal("Ip4Config", QVariantMap{{"address", inet_addr("198.18.7.2")}, {"prefix", 32u}});
            emitSignal("StateChanged", 4u);
        }
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    qDBusRegisterMetaType<Settings>();
    qDBusRegisterMetaType<Texts>();
    VpnPlugin plugin;
    QDBusConnection bus = QDBusConnection::systemBus();
    bus.registerVirtualObject(kPath, &plugin);
    return bus.registerService(kName + ".l2tp") ? QCoreApplication::exec() : 1;
}
