#include "helpers/compose4/ConnectionProfile.h"

#include "helpers/system/ReplaceFile.h"
#include "names/Names.h"

#include <algorithm>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <sstream>
#include <sys/stat.h>

static const Service kServices[] = {
    {"PPTP", "Korvan-PPTP", "5a1e7d40-8c5b-4f0e-9d23-bb27c0de7001", "pptp", "network-manager-pptp"},
    {"L2TP", "Korvan-L2TP", "5a1e7d40-8c5b-4f0e-9d23-bb27c0de7002", "l2tp", "network-manager-l2tp"},
    {"SSTP", "Korvan-SSTP", "5a1e7d40-8c5b-4f0e-9d23-bb27c0de7003", nullptr, nullptr},
    {"IKEV2", "Korvan-IKEv2", "5a1e7d40-8c5b-4f0e-9d23-bb27c0de7004", "strongswan", "network-manager-strongswan"},
};

static const Service *find(const char *Service::*field, const std::string &text)
{
    const auto *found = std::find_if(std::begin(kServices), std::end(kServices),
                                     [&](const Service &service) { return text == service.*field; });
    return found == std::end(kServices) ? nullptr : found;
}

const Service *serviceOfType(const std::string &type)
{
    return find(&Service::type, type);
}

const Service *serviceNamed(const std::string &name)
{
    return find(&Service::name, name);
}

/// The plug-in's settings. A server that is silent is given up within 10 s; left alone the plug-in never asks
/// whether it lives. PAP and the other methods that give the password away to whoever answers are refused.
static std::string pluginSettings(const Service &service, const std::string &server)
{
    const std::string plugin = service.plugin;
    if (plugin == "strongswan") {
        return "address=" + server + "\nmethod=eap\nvirtual=yes\nencap=no\nipcomp=no\n";
    }
    const std::string settings = "gateway=" + server + "\nrefuse-pap=yes\nrefuse-eap=yes\n";
    return settings + (plugin == "l2tp"
                           ? "ipsec-enabled=yes\nipsec-psk-flags=0\nlcp-echo-interval=2\nlcp-echo-failure=4\n"
                           : "refuse-chap=yes\nrefuse-mschap=yes\nrequire-mppe-128=yes\n");
}

std::string profileText(const Service &service, const std::string &server, const std::string &psk)
{
    // The secrets belong to the profile (flags 0). Were they asked of nmcli instead, it would start the plug-in's
    // graphical dialog wherever one is installed, and fail.
    std::ostringstream text;
    text << "[connection]\nid=" << service.name << "\nuuid=" << service.uuid << "\ntype=vpn\nautoconnect=false\n\n"
         << "[vpn]\nservice-type=org.freedesktop.NetworkManager." << service.plugin << "\n"
         << pluginSettings(service, server) << "password-flags=0\n\n"
         << "[vpn-secrets]\n\n[ipv4]\nmethod=auto\n\n[ipv6]\nmethod=disabled\n";
    return withValue(text.str(), "vpn-secrets", "ipsec-psk", psk);
}

static std::string escaped(const std::string &value)
{
    std::string text;
    for (const char c : value) {
        switch (c) {
        case '\\':
            text += "\\\\";
            break;
        case ' ':
            text += "\\s";
            break;
        case '\t':
            text += "\\t";
            break;
        default:
            text += c;
        }
    }
    return text;
}

std::string withValue(const std::string &text, const std::string &group, const std::string &key,
                      const std::string &value)
{
    std::istringstream lines(text);
    std::string result;
    bool inGroup = false;
    for (std::string line; std::getline(lines, line);) {
        const bool heading = !line.empty() && line[0] == '[';
        if (heading) {
            inGroup = line == "[" + group + "]";
        }
        if (inGroup && line.compare(0, key.size() + 1, key + "=") == 0) {
            continue;
        }
        result += line + "\n";
        if (inGroup && heading && !value.empty()) {
            result += key + "=" + escaped(value) + "\n";
        }
    }
    return result;
}

static std::string plain(const std::string &escapedValue)
{
    std::string text;
    for (size_t i = 0; i < escapedValue.size(); ++i) {
        char c = escapedValue[i];
        if (c == '\\' && i + 1 < escapedValue.size()) {
            c = escapedValue[++i];
            c = c == 's' ? ' ' : c == 't' ? '\t' : c;
        }
        text += c;
    }
    return text;
}

std::string valueOf(const std::string &text, const std::string &group, const std::string &key)
{
    std::istringstream lines(text);
    bool inGroup = false;
    for (std::string line; std::getline(lines, line);) {
        if (!line.empty() && line[0] == '[') {
            inGroup = line == "[" + group + "]";
        } else if (inGroup && line.compare(0, key.size() + 1, key + "=") == 0) {
            return plain(line.substr(key.size() + 1));
        }
    }
    return {};
}

std::string profilePath(const Service &service)
{
    return std::string(kServiceProfiles) + "/" + service.name + ".nmconnection";
}

std::string readProfile(const Service &service)
{
    const std::ifstream file(profilePath(service));
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

bool writeProfile(const Service &service, const std::string &text)
{
    mkdir("/run/NetworkManager", 0755);
    mkdir(kServiceProfiles, 0755);
    return replaceFile(AT_FDCWD, profilePath(service), text); // NetworkManager reads no file named like its draft
}
