#include "helpers/compose/CommandLine.h"

#include "helpers/compose/Profile.h"
#include "helpers/system/Checks.h"
#include "names/Names.h"
#include "names/StateFiles.h"

#include <algorithm>

namespace {

using Values = std::vector<std::string>;

bool takeConfig(CommandLine &result, const Values &values, const Folders &folders)
{
    const std::string state = folders.state + "/";
    if (values.size() != 1 || values[0].compare(0, state.size(), state) != 0) {
        return false;
    }
    result.config = values[0].substr(state.size());
    return true;
}

bool takeHttpProxy(CommandLine &result, const Values &values, const Folders &folders)
{
    result.proxyCredentials = values.size() == 3;
    if (!result.proxy.empty() || values.size() < 2 || values.size() > 3 || !isHost(values[0]) || !isPort(values[1]) ||
        (result.proxyCredentials && values[2] != folders.state + kProxyLoginFile)) {
        return false;
    }
    result.proxy = {"--http-proxy", values[0], values[1]};
    return true;
}

bool takeSocksProxy(CommandLine &result, const Values &values, const Folders &)
{
    if (!result.proxy.empty() || values.size() != 2 || !isHost(values[0]) || !isPort(values[1])) {
        return false;
    }
    result.proxy = {"--socks-proxy", values[0], values[1]};
    return true;
}

struct Option
{
    const char *name;
    const char *form; ///< for the message when it is not met
    bool (*take)(CommandLine &result, const Values &values, const Folders &folders);
};

const Option kOptions[] = {
    {"--config", "a file of the application folder", takeConfig},
    {"--auth-user-pass", "no value",
     [](CommandLine &result, const Values &values, const Folders &) {
         result.askCredentials = true;
         return values.empty();
     }},
    {"--auth-nocache", "no value",
     [](CommandLine &result, const Values &values, const Folders &) {
         result.noCache = true;
         return values.empty();
     }},
    {"--http-proxy", "an address, a port and at most the application's own credential file, and no second proxy",
     takeHttpProxy},
    {"--socks-proxy", "an address and a port, and no second proxy", takeSocksProxy},
    {"--cd", "the configuration folder",
     [](CommandLine &result, const Values &values, const Folders &folders) {
         result.changeFolder = true;
         return values == Values{folders.state + kProfileFolder};
     }},
    {"--management", "127.0.0.1 and a port",
     [](CommandLine &result, const Values &values, const Folders &) {
         if (values.size() != 2 || values[0] != "127.0.0.1" || !isPort(values[1])) {
             return false;
         }
         result.managementPort = values[1];
         return true;
     }},
    {"--script-security", "2",
     [](CommandLine &, const Values &values, const Folders &) { return values == Values{"2"}; }},
    {"--up", "the application's own up.sh",
     [](CommandLine &result, const Values &values, const Folders &folders) {
         result.up = true;
         return values == Values{folders.bundle + "/up.sh"};
     }},
    {"--down", "the application's own down.sh",
     [](CommandLine &result, const Values &values, const Folders &folders) {
         result.down = true;
         return values == Values{folders.bundle + "/down.sh"};
     }},
};

bool isOption(const std::string &argument)
{
    return argument.compare(0, 2, "--") == 0;
}

} // namespace

std::optional<CommandLine> parseCommandLine(const std::vector<std::string> &arguments, const Folders &folders,
                                            std::string &error)
{
    CommandLine result;
    std::vector<std::string> seen;
    for (auto it = arguments.begin(); it != arguments.end();) {
        const std::string &name = *it;
        const auto end = std::find_if(it + 1, arguments.end(), isOption);
        const auto option = std::find_if(std::begin(kOptions), std::end(kOptions),
                                         [&name](const Option &known) { return name == known.name; });
        if (option == std::end(kOptions)) {
            error = "argument refused: " + name;
        } else if (std::find(seen.begin(), seen.end(), name) != seen.end()) {
            error = "argument given twice: " + name;
        } else if (!option->take(result, Values(it + 1, end), folders)) {
            error = name + " takes " + option->form;
        }
        if (!error.empty()) {
            return std::nullopt;
        }
        seen.push_back(name);
        it = end;
    }
    if (result.config.empty()) {
        error = "no profile is given";
        return std::nullopt;
    }
    return result;
}

std::vector<std::string> openVpnCommand(const std::string &openVpn, const CommandLine &commandLine,
                                        const Handover &handover, const std::string &bundle)
{
    std::vector<std::string> command = {openVpn};
    const auto add = [&command](std::initializer_list<std::string> more) { command.insert(command.end(), more); };
    // Level 3 is what the markers that the engine looks for are written at.
    add({"--verb", "3"});
    // A password that is wrong for any key: without one OpenVPN would ask for it where nobody sees the question.
    add({"--askpass", handover.keyPassword});
    // When OpenVPN starts the connection anew in itself, nobody's packets may leave past the tunnel meanwhile.
    add({"--persist-tun"});
    // Also without lock-down, which may come while the tunnel is up.
    add({"--mark", std::to_string(kTunnelMark)});
    if (handover.lockedDown) {
        add({"--pull-filter", "ignore", "redirect-gateway"});
        add({"--redirect-gateway", "def1", "local"});
    }
    command.insert(command.end(), commandLine.proxy.begin(), commandLine.proxy.end());
    if (!handover.proxyCredentials.empty()) {
        add({handover.proxyCredentials});
    }
    add({"--config", handover.config});
    if (!handover.credentials.empty()) {
        add({"--auth-user-pass", handover.credentials});
    }
    if (commandLine.noCache) {
        add({"--auth-nocache"});
    }
    if (commandLine.changeFolder) {
        add({"--cd", bundle + kProfileFolder});
    }
    if (!commandLine.managementPort.empty()) {
        add({"--management", "127.0.0.1", commandLine.managementPort});
    }
    add({"--script-security", "2"});
    // OpenVPN splits a script's command line into words.
    if (commandLine.up) {
        add({"--up", quoteWord(bundle + "/up.sh")});
        add({"--route-up", quoteWord(bundle + "/network") + " routes"});
    }
    if (commandLine.down) {
        add({"--down", quoteWord(bundle + "/down.sh")});
    }
    return command;
}
