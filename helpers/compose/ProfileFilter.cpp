#include "helpers/compose/ProfileFilter.h"

#include "helpers/compose/DirectiveRules.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::string_view kSetenv = "setenv";
constexpr std::string_view kOpt = "opt";

/// OpenVPN repeats words of a profile in its log, where the program looks for these texts.
constexpr std::string_view kLogMarkers[] = {"Auth Username:", "Auth Password:", "AUTH_FAILED",
                                            "Initialization Sequence Completed", "link remote:"};

std::string quoted(const Directive &directive)
{
    constexpr size_t kShown = 60;
    return "\"" + directive.name().substr(0, kShown) + "\"";
}

bool isProxy(std::string_view name)
{
    return name.substr(0, 10) == "http-proxy" || name.substr(0, 11) == "socks-proxy";
}

class Filter
{
public:
    Filter(Overrides overrides, FilteredProfile &result, std::string &error)
        : m_overrides(overrides), m_result(result), m_error(error)
    {}

    bool run(const std::vector<Directive> &directives, std::vector<Directive> &kept, bool insideConnection)
    {
        for (Directive directive : directives) {
            if (!take(directive, kept, insideConnection)) {
                return false;
            }
        }
        return true;
    }

private:
    bool refuse(const Directive &directive, const std::string &reason)
    {
        m_error = atLine(directive.line, quoted(directive) + " is refused: " + reason);
        return false;
    }

    bool leaveOut(const Directive &directive, std::string_view reason)
    {
        m_result.notes.push_back(atLine(directive.line, quoted(directive) + " is left out: " + std::string(reason)));
        return true;
    }

    /// False: the profile is refused. True: the directive was moved to `kept`, or left out.
    bool take(Directive &directive, std::vector<Directive> &kept, bool insideConnection)
    {
        for (const std::string &word : directive.words) {
            for (const std::string_view marker : kLogMarkers) {
                if (word.find(marker) != std::string::npos) {
                    m_error = atLine(directive.line, "a word looks like a report of OpenVPN itself");
                    return false;
                }
            }
        }
        if (directive.words.size() > 2 && directive.name() == kSetenv && directive.words[1] == kOpt) {
            directive.words.erase(directive.words.begin(), directive.words.begin() + 2);
            directive.optional = true;
        }
        const DirectiveRule rule = ruleFor(directive.name());
        switch (rule.action) {
        case Action::Refuse:
            return refuse(directive, std::string(rule.reason));
        case Action::LeaveOut:
            return leaveOut(directive, rule.reason);
        case Action::Replace:
            return true;
        case Action::Unknown:
            if (directive.optional || mayBeUnknown(directive.name())) {
                return leaveOut(directive, "it is unknown, and the profile allows for that");
            }
            return refuse(directive, "it is no directive that a profile may hold");
        case Action::Pass:
            break;
        }
        if (directive.isBlock() && !rule.block) {
            return refuse(directive, "it can not be given as a block");
        }
        if (directive.name() == "connection") {
            return takeConnection(directive, kept, insideConnection);
        }
        return takeAllowed(directive, rule, kept);
    }

    bool takeConnection(Directive &directive, std::vector<Directive> &kept, bool insideConnection)
    {
        if (insideConnection || !directive.isBlock()) {
            return refuse(directive, "it must be a block of its own");
        }
        const std::vector<Directive> inner = std::exchange(directive.inner, {});
        if (!run(inner, directive.inner, true)) {
            return false;
        }
        if (directive.inner.empty()) {
            return refuse(directive, "nothing of it is left");
        }
        kept.push_back(std::move(directive));
        return true;
    }

    bool takeAllowed(Directive &directive, const DirectiveRule &rule, std::vector<Directive> &kept)
    {
        const std::string &name = directive.name();
        const size_t count = directive.words.size();
        if (m_overrides.proxy && isProxy(name)) {
            return leaveOut(directive, "Korvan's own proxy setting takes its place");
        }
        if (name == "auth-user-pass" && !directive.isBlock()) {
            if (m_overrides.credentials) {
                return leaveOut(directive, "Korvan's own user name and password take its place");
            }
            if (count == 1 || directive.words[1] == "stdin") {
                m_result.asksCredentials = true;
                return true;
            }
        }
        if (name == "askpass" && (count == 1 || directive.words[1] == "stdin")) {
            return leaveOut(directive, "the password of a private key can not be asked for here");
        }
        if (name == "ignore-unknown-option") {
            m_mayBeUnknown.insert(m_mayBeUnknown.end(), directive.words.begin() + 1, directive.words.end());
        }
        if (name == "mode" && (count != 2 || directive.words[1] != "p2p")) {
            return refuse(directive, "a profile makes no server");
        }
        if (name == "tls-remote" && !translateTlsRemote(directive)) {
            return false;
        }
        if (!checkFile(directive, rule)) {
            return false;
        }
        kept.push_back(std::move(directive));
        return true;
    }

    /// OpenVPN gave up "tls-remote" in 2.4. It compared the start of the server's common name, or its whole subject
    /// in a notation of its own; the first has an exact successor.
    bool translateTlsRemote(Directive &directive)
    {
        if (directive.words.size() != 2 || directive.words[1].find_first_of("/=") != std::string::npos) {
            return refuse(directive, "write \"verify-x509-name\" with the server's subject instead");
        }
        m_result.notes.push_back(atLine(directive.line, "\"tls-remote\" is read as \"verify-x509-name\""));
        directive.words = {"verify-x509-name", directive.words[1], "name-prefix"};
        return true;
    }

    bool checkFile(const Directive &directive, const DirectiveRule &rule)
    {
        if (directive.block) {
            if (rule.fileKind == FileKind::Credentials && !holdsCredentials(*directive.block)) {
                return refuse(directive, "the block holds no user name and password");
            }
            return true;
        }
        if (rule.fileKind == FileKind::None || directive.words.size() <= rule.fileWord) {
            return true;
        }
        const std::string &file = directive.words[rule.fileWord];
        if (file.empty() || file.front() == '/') {
            return refuse(directive, "its file must be named relative to the configuration folder");
        }
        if (("/" + file + "/").find("/../") != std::string::npos) {
            return refuse(directive, "its file lies outside the configuration folder");
        }
        if (rule.fileKind == FileKind::Credentials && file == "stdin") {
            return refuse(directive, "nobody can be asked for its password here");
        }
        return true;
    }

    bool mayBeUnknown(const std::string &name) const
    {
        return std::find(m_mayBeUnknown.begin(), m_mayBeUnknown.end(), name) != m_mayBeUnknown.end();
    }

    const Overrides m_overrides;
    FilteredProfile &m_result;
    std::string &m_error;
    std::vector<std::string> m_mayBeUnknown;
};

} // namespace

std::optional<FilteredProfile> filterProfile(const std::vector<Directive> &directives, Overrides overrides,
                                             std::string &error)
{
    FilteredProfile result;
    if (!Filter(overrides, result, error).run(directives, result.directives, false)) {
        return std::nullopt;
    }
    return result;
}

bool holdsCredentials(std::string_view text)
{
    for (int i = 0; i < 2; ++i) {
        const size_t end = std::min(text.find('\n'), text.size());
        if (text.substr(0, end).find_first_not_of('\r') == std::string_view::npos) {
            return false;
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return true;
}
