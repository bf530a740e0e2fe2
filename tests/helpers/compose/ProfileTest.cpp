#include "helpers/compose/CommandLine.h"
#include "helpers/compose/LockedDown.h"
#include "helpers/compose/ProfileFilter.h"
#include "tests/support/Cases.h"

#include <QMap>
#include <QRegularExpression>

#include <algorithm>
#include <iterator>
#include <random>
#include <sstream>

namespace {

/// What OpenVPN gets of a profile, then what was logged, each line after "; "; or "! " and why it is refused. Both
/// name the profile's line by its number alone.
QByteArray outcome(const QByteArray &profile, Overrides overrides = {})
{
    std::string error, result;
    const auto directives = parseProfile({profile.constData(), static_cast<size_t>(profile.size())}, error);
    const auto filtered = directives ? filterProfile(*directives, overrides, error) : std::nullopt;
    const auto text = filtered ? renderProfile(filtered->directives, error) : std::nullopt;
    if (!text) {
        return QByteArray::fromStdString("! " + error).replace("profile line ", "");
    }
    for (const std::string &note : filtered->notes) {
        result += "; " + note + "\n";
    }
    result = *text + result + (filtered->asksCredentials ? "; asks\n" : "");
    return QByteArray::fromStdString(result).replace("profile line ", "");
}

/// Whether the profile, which has a directive of this name, meets with the verdict.
bool meets(const QByteArray &profile, const QByteArray &name, const QByteArray &verdict)
{
    const QByteArray result = outcome(profile);
    if (verdict == "refuse") {
        return result.startsWith("! ") && (result.toLower().contains('"' + name) || result.contains("--" + name));
    }
    const QRegularExpression given("(?m)^(setenv opt )?" + name + "( |$)");
    return !result.startsWith('!') && result.contains('"' + name + "\" is left out") == (verdict == "leave out") &&
           given.match(result).hasMatch() == (verdict == "pass");
}

/// Ways to write a directive that OpenVPN takes for the same, with NAME and REST for its parts.
const QByteArrayList kForms = QByteArray("NAME REST\n|\tNAME\tREST\t\n|NAME\vREST\f\n|\"NAME\" REST\n|'NAME' REST\n|"
                                         "'NAME'REST\n|--NAME REST\n|\"--NAME\" REST\n|NAME REST\r\n|NAME REST|"
                                         "\xEF\xBB\xBFNAME REST\n|NAME REST #x\n|# \\ \"\n;'\nNAME REST\n|"
                                         "<connection>\nremote a\n --NAME REST\n</connection>\n|"
                                         "setenv opt NAME REST\n|'setenv' \"opt\" 'NAME' REST\n|"
                                         "<ca>\nx\n  </ca>NAME up\nNAME REST\n")
                                  .split('|');

} // namespace

class ProfileTest : public QObject
{
    Q_OBJECT

private slots:
    void everyFormOfADirective()
    {
        const QMap<QByteArray, QByteArray> verdicts = {
            {"pass", "persist-tun|remote a 1|ca ca.crt|comp-lzo no"},
            {"leave out",
             "up /x|down /x|route-up x|route-pre-down x|ipchange x|tls-verify x|auth-user-pass-verify x via-env|"
             "client-connect x|learn-address x|script-security 3|setenv A b|setenv-safe A b|user nobody|"
             "group x|block-outside-dns|ip-win32 dynamic|keysize 256|echo x|mark 1"},
            {"refuse",
             "plugin x.so|engine x|providers x|pkcs11-providers x|log x|log-append x|status x|writepid x|config x|"
             "tls-export-cert x|cd x|chroot x|daemon|management 127.0.0.1 1|management-client|iproute x|"
             "dev-node x|static-challenge a 1|ca /etc/shadow|key ../x|cert a/../../x|http-proxy a 1 /x"},
        };
        for (auto verdict = verdicts.begin(); verdict != verdicts.end(); ++verdict) {
            for (const QByteArray &directive : verdict->split('|')) {
                const QByteArray name = directive.split(' ').constFirst();
                const QByteArray rest = directive.mid(name.size()).trimmed();
                for (QByteArray form : kForms) {
                    form.replace("NAME", name).replace("REST", rest);
                    QVERIFY2(meets(form, name, verdict.key()), form.constData());
                }
                QVERIFY2(meets("----" + directive, name, "refuse"), directive.constData());
                QVERIFY2(meets(name.toUpper() + " " + rest, name, "refuse"), directive.constData());
            }
        }
    }

    void profiles()
    {
        const std::tuple<const char *, QByteArray, QByteArray> cases[] = {
            {"a block, CRLF", "<ca>\r\nA\r\n# no comment\r\n</ca>\r\nclient\r\n",
             "<ca>\nA\n# no comment\n</ca>\nclient\n"},
            {"unknown but announced", "ignore-unknown-option new\nnew 1\n",
             "ignore-unknown-option new\n; 2: \"new\" is left out: it is unknown, and the profile allows for that\n"},
            {"announced but refused", "ignore-unknown-option plugin\nplugin x.so\n", "! 2: \"plugin\" is refused"},
            {"a closing tag inside a line", "<ca>\n" + QByteArray(300, 'A') + "</ca>\nup x\n</ca>\n",
             "! 2: </ca> stands"},
            {"a false success", "remote \"Initialization Sequence Completed\"\n", "! 1: a word looks like a report"},
            {"backslash", "ca a\\b\n", "! 1: a backslash may stand only"},
            {"too long a line", "cipher " + QByteArray(248, 'A'), "! 1: longer than the 254 characters"},
            {"only a question", "#" + QByteArray(5000, 'A') + "\nverb 11\nauth-user-pass stdin\n", "; asks\n"},
            {"zero byte", QByteArray("client\nde\0v tun\n", 15), "! the profile is not a text file"},
        };
        for (const auto &[name, profile, expected] : cases) {
            const QByteArray all = outcome(profile);
            COMPARE_CASE(name, all.startsWith('!') ? all.left(expected.size()) : all, expected);
        }
        const QByteArray proxied = "http-proxy a 1\nsocks-proxy b\nauth-user-pass\n";
        QCOMPARE(outcome(proxied, {true, true}).count("left out: Korvan's own"), 3);
    }

    void whatOpenVpnReadsIsWhatWasChecked()
    {
        std::mt19937 random(20240);
        const std::string alphabet = "\"'\\ \t#;ab-<>/\v\xC3\xA4";
        const auto anyText = [&](unsigned longest) {
            std::string text(random() % longest, '\0');
            std::generate(text.begin(), text.end(), [&] { return alphabet[random() % alphabet.size()]; });
            return text;
        };
        for (int i = 0; i < 20000; ++i) {
            Directive directive;
            directive.words = {"remote", anyText(8), anyText(8)};
            std::string error;
            const auto again = parseProfile(renderProfile({directive}, error).value_or(""), error);
            QVERIFY2(again && again->size() == 1 && again->front().words == directive.words, error.c_str());

            // A profile that was passed once passes unchanged: nothing in it is read in a second way.
            const std::string profile = "remote " + anyText(20) + "\n<ca>\n" + anyText(8) + "\n</ca>\n";
            const QByteArray passed = outcome(QByteArray::fromStdString(profile));
            QVERIFY2(passed.startsWith('!') || outcome(passed) == passed, profile.c_str());
        }
    }

    void commandLines()
    {
        const auto accepts = [](const std::string &line) {
            std::istringstream words(line);
            std::string error;
            return parseCommandLine({std::istream_iterator<std::string>(words), {}}, {"/app", "/app"}, error)
                .has_value();
        };
        QVERIFY(accepts("--config /app/cfg/OpenVPN/temp --socks-proxy ::1 1080"));
        QVERIFY(!accepts("--config /etc/passwd") && !accepts("--config /app/x --config /app/y"));
        for (const char *more :
             {"--plugin x.so", "--http-proxy a 1 --plugin x.so", "--http-proxy a 1 /etc/shadow", "--http-proxy -x 1",
              "--auth-user-pass /app/cfg/proxy", "--script-security 3", "--up /tmp/up.sh", "--cd /app"}) {
            QVERIFY2(!accepts(std::string("--config /app/x ") + more), more);
        }
    }

    /// In lock-down, names that can not be resolved.
    void lastAddressesReplaceNames()
    {
        std::string error;
        auto profile = *parseProfile("remote gone 1\nremote alive\nremote bad\nverify-x509-name gone name\n", error);
        replaceNames(profile, parseAddresses("gone 192.0.2.1\nalive 192.0.2.2\nbad 192.0.2.300\nhalf\n"),
                     [](const std::string &name) { return name == "alive"; });
        QCOMPARE(QByteArray::fromStdString(*renderProfile(profile, error)),
                 "remote 192.0.2.1 1\nremote alive\nremote bad\nverify-x509-name gone name\n");
    }
};

QTEST_GUILESS_MAIN(ProfileTest)
#include "ProfileTest.moc"
