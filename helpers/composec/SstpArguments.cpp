#include "helpers/composec/SstpArguments.h"

#include "helpers/system/Checks.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array<const char *, 5> kFlags = {"usepeerdns", "defaultroute", "refuse-pap", "refuse-eap", "noauth"};

/// pppd takes at most this many bytes of a password.
constexpr size_t kLongestPassword = 255;

/// Takes the arguments one by one.
class Arguments
{
public:
    explicit Arguments(const std::vector<std::string> &words) : m_words(words) {}

    bool atEnd() const { return m_next == m_words.size(); }
    std::string take() { return atEnd() ? std::string() : m_words[m_next++]; }

private:
    const std::vector<std::string> &m_words;
    size_t m_next = 0;
};

/// Handles one word that is no option of sstpc; false when it is not known.
bool takeLinkOption(const std::string &word, Arguments &arguments, SstpRequest &request)
{
    if (std::find(kFlags.begin(), kFlags.end(), word) != kFlags.end()) {
        request.linkOptions.push_back(word);
        return true;
    }
    // Twice, and the second log file would be one that nobody has looked at.
    const bool isKnown = word == "mtu" || word == "logfile";
    if (!isKnown || std::count(request.linkOptions.begin(), request.linkOptions.end(), word) > 0) {
        return false;
    }
    const std::string value = arguments.take();
    request.linkOptions.insert(request.linkOptions.end(), {word, value});
    return word == "mtu" ? isNumber(value) : !value.empty();
}

std::string problemOf(const SstpRequest &request)
{
    if (!isHost(request.server)) {
        return "\"" + request.server + "\" is no server";
    }
    if (!isNumber(request.logLevel)) {
        return "\"" + request.logLevel + "\" is no log level";
    }
    if (request.password.size() > kLongestPassword) {
        return "the password is longer than " + std::to_string(kLongestPassword) + " bytes";
    }
    return {};
}

} // namespace

SstpRequest parseSstpArguments(const std::vector<std::string> &words)
{
    SstpRequest request;
    Arguments arguments(words);
    while (!arguments.atEnd()) {
        const std::string word = arguments.take();
        if (word == "--user") {
            request.user = arguments.take();
        } else if (word == "--password") {
            request.password = arguments.take();
        } else if (word == "--log-level") {
            request.logLevel = arguments.take();
        } else if (word == "--debug") {
            request.linkOptions.emplace_back("debug");
        } else if (request.server.empty()) {
            request.server = word;
        } else if (!takeLinkOption(word, arguments, request)) {
            request.problem = "can not use the argument \"" + word + "\"";
            return request;
        }
    }
    request.problem = problemOf(request);
    return request;
}

std::vector<std::string> sstpcCommand(const SstpRequest &request, int passwordFd)
{
    // The way to the server must not lead into the tunnel that is built to it.
    std::vector<std::string> command = {"/usr/sbin/sstpc",
                                        "--log-stderr",
                                        "--log-level",
                                        request.logLevel,
                                        "--save-server-route",
                                        request.server,
                                        "--",
                                        "user",
                                        request.user,
                                        "plugin",
                                        "passwordfd.so",
                                        "passwordfd",
                                        std::to_string(passwordFd)};
    for (const std::string &option : request.linkOptions) {
        command.push_back(option);
        if (option == "defaultroute") {
            // Debian's pppd leaves a default route that is there already alone unless it is told otherwise.
            command.emplace_back("replacedefaultroute");
        }
    }
    return command;
}
