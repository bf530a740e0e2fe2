#include "helpers/compose4/Profile.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>

#include <algorithm>
#include <iterator>

static const char *const kFolder = "/run/NetworkManager/system-connections";

static const Service kServices[] = {
    {"PPTP", "Korvan-PPTP", "5a1e7d40-8c5b-4f0e-9d23-bb27c0de7001", "pptp", "network-manager-pptp"},
    {"L2TP", "Korvan-L2TP", "5a1e7d40-8c5b-4f0e-9d23-bb27c0de7002", "l2tp", "network-manager-l2tp"},
    {"SSTP", "Korvan-SSTP", "5a1e7d40-8c5b-4f0e-9d23-bb27c0de7003", nullptr, nullptr},
    {"IKEV2", "Korvan-IKEv2", "5a1e7d40-8c5b-4f0e-9d23-bb27c0de7004", "strongswan", "network-manager-strongswan"},
};

static const Service *find(const char *Service::*field, const QByteArray &text)
{
    const auto *found = std::find_if(std::begin(kServices), std::end(kServices),
                                     [&](const Service &service) { return text == service.*field; });
    return found == std::end(kServices) ? nullptr : found;
}

const Service *serviceOfType(const QByteArray &type)
{
    return find(&Service::type, type);
}

const Service *serviceNamed(const QByteArray &name)
{
    return find(&Service::name, name);
}

/// The plug-in's settings. PAP and the other methods that give the password away to whoever answers are refused.
static QByteArray pluginSettings(const Service &service, const QByteArray &server)
{
    const QByteArray plugin = service.plugin;
    if (plugin == "strongswan") {
        return "address=" + server + "\nmethod=eap\nvirtual=yes\nencap=no\nipcomp=no\n";
    }
    QByteArray settings = "gateway=" + server + "\nrefuse-pap=yes\nrefuse-eap=yes\n";
    settings += plugin == "l2tp" ? "ipsec-enabled=yes\nipsec-psk-flags=0\n"
                                 : "refuse-chap=yes\nrefuse-mschap=yes\nrequire-mppe-128=yes\n";
    return settings;
}

QByteArray profileText(const Service &service, const QByteArray &server, const QByteArray &psk)
{
    // The secrets belong to the profile (flags 0). Were they asked of nmcli instead, it would start the plug-in's
    // graphical dialog wherever one is installed, and fail.
    const QByteArray text = "[connection]\nid=" + QByteArray(service.name) + "\nuuid=" + service.uuid +
                            "\ntype=vpn\nautoconnect=false\n\n[vpn]\nservice-type=org.freedesktop.NetworkManager." +
                            service.plugin + "\n" + pluginSettings(service, server) +
                            "password-flags=0\n\n[vpn-secrets]\n\n[ipv4]\nmethod=auto\n\n[ipv6]\nmethod=disabled\n";
    return psk.isEmpty() ? text : withValue(text, "vpn-secrets", "ipsec-psk", psk);
}

QByteArray withValue(const QByteArray &text, const QByteArray &group, const QByteArray &key, const QByteArray &value)
{
    QByteArray escaped = value;
    escaped.replace('\\', "\\\\").replace(' ', "\\s").replace('\t', "\\t");
    QByteArray result;
    bool inGroup = false;
    for (const QByteArray &line : text.trimmed().split('\n')) {
        if (line.startsWith('[')) {
            inGroup = line == "[" + group + "]";
        }
        if (inGroup && line.startsWith(key + "=")) {
            continue;
        }
        result += line + "\n";
        if (inGroup && line.startsWith('[')) {
            result += key + "=" + escaped + "\n";
        }
    }
    return result;
}

QByteArray profilePath(const Service &service)
{
    return QByteArray(kFolder) + "/" + service.name + ".nmconnection";
}

QByteArray readProfile(const Service &service)
{
    QFile file(QString::fromLatin1(profilePath(service)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeProfile(const Service &service, const QByteArray &text)
{
    QDir().mkpath(QString::fromLatin1(kFolder));
    QSaveFile file(QString::fromLatin1(profilePath(service)));
    return file.open(QIODevice::WriteOnly) && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) &&
           file.write(text) == text.size() && file.commit();
}
