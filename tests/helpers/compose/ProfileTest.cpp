#include "helpers/compose/CommandLine.h"
#include "helpers/compose/LockedDown.h"
#include "helpers/compose/ProfileFilter.h"

#include <QtTest>

#include <random>

namespace {

/// What OpenVPN gets of a profile, then what was logged, each line after "; "; or the reason why it is refused.
QByteArray outcome(const QByteArray &profile, Overrides overrides = {})
{
    std::string error;
    const auto directives = parseProfile({profile.constData(), static_cast<size_t>(profile.size())}, error);
    const auto filtered = directives ? filterProfile(*directives, overrides, error) : std::nullopt;
    const auto text = filtered ? renderProfile(filtered->directives, error) : std::nullopt;
    if (!text)
        return "! " + QByteArray::fromStdString(error);
    QByteArray result;
    for (const QByteArray &line : QByteArray::fromStdString(*text).split('\n'))
        result += line.isEmpty() ? line : line + '\n';
    for (const std::string &note : filtered->notes)
        result += "; " + QByteArray::fromStdString(note) + "\n";
    return result + (filtered->asksCredentials ? "; asks\n" : "");
}

/// Ways to write a directive that OpenVPN takes for the same, with NAME and REST for its parts.
const QByteArrayList kForms = {
    "NAME REST\n",
    "\tNAME\tREST\t\n",
    "NAME\vREST\f\n",
    "\"NAME\" REST\n",
    "'NAME' REST\n",
    "'NAME'REST\n",
    "--NAME REST\n",
    "\"--NAME\" REST\n",
    "NAME REST\r\n",
    "NAME REST",
    "\xEF\xBB\xBFNAME REST\n",
    "NAME REST #x\n",
    "# \\ \"\n;'\nNAME REST\n",
    "<connection>\nremote a\n --NAME REST\n</connection>\n",
    "setenv opt NAME REST\n",
    "'setenv' \"opt\" 'NAME' REST\n",
    "<ca>\nx\n  </ca>NAME up\nNAME REST\n",
};

} // namespace

class ProfileTest : public QObject
{
    Q_OBJECT

private slots:
    void everyFormOfADirective_data();
    void everyFormOfADirective();
    void profiles_data();
    void profiles();
    void whatOpenVpnReadsIsWhatWasChecked();
    void overridesTakeTheProfilesPlace();
    void commandLines_data();
    void commandLines();
    void openVpnArgumentsInOrder();
    void lastAddressesReplaceNames();
};

void ProfileTest::everyFormOfADirective_data()
{
    QTest::addColumn<QByteArray>("profile");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("verdict");
    const QList<QPair<QByteArray, QByteArray>> verdicts = {
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
    for (const auto &[verdict, directives] : verdicts) {
        for (const QByteArray &directive : directives.split('|')) {
            QByteArray name = directive.split(' ').constFirst();
            const QByteArray rest = directive.mid(name.size()).trimmed();
            const auto row = [&](QByteArray form, const QByteArray &expected) {
                form.replace("NAME", name).replace("REST", rest);
                QTest::newRow(form.constData()) << form << name.toLower() << expected;
            };
            for (const QByteArray &form : kForms)
                row(form, verdict);
            row("----NAME REST\n", "refuse");
            name = name.toUpper();
            row("NAME REST\n", "refuse");
        }
    }
}

void ProfileTest::everyFormOfADirective()
{
    QFETCH(QByteArray, profile);
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, verdict);
    const QByteArray result = outcome(profile);
    if (verdict == "refuse") {
        QVERIFY2(result.startsWith("! profile line "), result.constData());
        QVERIFY2(result.toLower().contains("\"" + name) || result.contains("--" + name), result.constData());
        return;
    }
    QVERIFY2(!result.startsWith('!'), result.constData());
    bool given = false;
    for (const QByteArray &line : result.split('\n'))
        given = given || line == name || line.startsWith(name + " ") || line.startsWith("setenv opt " + name);
    QCOMPARE(given, verdict == "pass");
    QCOMPARE(result.contains("\"" + name + "\" is left out"), verdict == "leave out");
}

void ProfileTest::profiles_data()
{
    QTest::addColumn<QByteArray>("profile");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const QByteArray &profile, const QByteArray &expected) {
        QTest::newRow(name) << profile << expected;
    };
    row("a block, CRLF", "<ca>\r\nA\r\n# not a comment\r\n</ca>\r\nclient\r\n",
        "<ca>\nA\n# not a comment\n</ca>\nclient\n");
    row("a block within a block", "<connection>\nremote a\n<tls-auth>\nK\n</tls-auth>\n</connection>\n",
        "<connection>\nremote a\n<tls-auth>\nK\n</tls-auth>\n</connection>\n");
    row("unknown but announced", "ignore-unknown-option new-thing\nnew-thing 1\n",
        "ignore-unknown-option new-thing\n; profile line 2: \"new-thing\" is left out: it is unknown, and the "
        "profile allows for that\n");
    row("announcing lets nothing refused pass", "ignore-unknown-option plugin\nplugin x.so\n",
        "! profile line 2: \"plugin\" is refused: it loads code");
    row("a server's old name check", "tls-remote vpn\n",
        "verify-x509-name vpn name-prefix\n; profile line 1: \"tls-remote\" is read as \"verify-x509-name\"\n");
    row("half of the credentials", "<auth-user-pass>\nu\n</auth-user-pass>\n",
        "! profile line 1: \"auth-user-pass\" is refused: the block holds no user name and password");
    row("a closing tag inside a line", "<ca>\n" + QByteArray(300, 'A') + "</ca>\nup x\n</ca>\n",
        "! profile line 2: </ca> stands inside a line");
    row("an option as a block", "<verify-x509-name>\nx\n</verify-x509-name>\n",
        "! profile line 1: \"verify-x509-name\" is refused: it can not be given as a block");
    row("a false success", "remote \"Initialization Sequence Completed\"\n",
        "! profile line 1: a word looks like a report of OpenVPN itself");
    row("backslash", "ca a\\b\n",
        "! profile line 1: a backslash may stand only before a blank, a double quote or another backslash");
    row("too many words", "remote 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 # c\n",
        "! profile line 1: has more than 16 words");
    row("longest line", "tls-cipher " + QByteArray(243, 'A') + "\n", "tls-cipher " + QByteArray(243, 'A') + "\n");
    row("longer line", "tls-cipher " + QByteArray(244, 'A') + "\n",
        "! profile line 1: longer than the 254 characters that OpenVPN reads");
    row("nothing left but a question", "#" + QByteArray(5000, 'A') + "\nverb 11\nauth-user-pass stdin\n", "; asks\n");
    row("empty", "", "! the profile is empty");
    row("binary", "\177ELF\2\1\n", "! profile line 1: holds a control character, so it is not a line of a profile");
    row("zero byte", QByteArray("client\nde\0v tun\n", 15), "! the profile is not a text file");
}

void ProfileTest::profiles()
{
    QFETCH(QByteArray, profile);
    QTEST(outcome(profile), "expected");
}

void ProfileTest::whatOpenVpnReadsIsWhatWasChecked()
{
    std::mt19937 random(20240);
    const QByteArray alphabet = "\"'\\ \t#;ab-<>/\v\xC3\xA4";
    const auto anyText = [&](int longest) {
        QByteArray text;
        for (int length = static_cast<int>(random() % static_cast<unsigned>(longest)); length > 0; --length)
            text += alphabet[static_cast<int>(random() % static_cast<unsigned>(alphabet.size()))];
        return text;
    };
    for (int i = 0; i < 20000; ++i) {
        Directive directive;
        directive.words = {"remote"};
        for (unsigned words = random() % 4; words > 0; --words)
            directive.words.push_back(anyText(8).toStdString());
        std::string error;
        const auto text = renderProfile({directive}, error);
        QVERIFY2(text, error.c_str());
        const auto again = parseProfile(*text, error);
        QVERIFY2(again && again->size() == 1 && again->front().words == directive.words, text->c_str());

        // A profile that was passed once passes unchanged: nothing in it is read in a second way.
        const QByteArray passed = outcome("remote " + anyText(20) + "\n<ca>\n" + anyText(8) + "\n</ca>\n");
        if (!passed.startsWith('!'))
            QCOMPARE(outcome(passed), passed);
    }
}

void ProfileTest::overridesTakeTheProfilesPlace()
{
    const QByteArray profile = "http-proxy a 1\nsocks-proxy b\nauth-user-pass\n";
    QVERIFY(outcome(profile, {true, true}).startsWith("; profile line 1: \"http-proxy\" is left out"));
    QVERIFY(!outcome(profile, {true, false}).contains("asks"));
    QVERIFY(outcome(profile).startsWith("http-proxy a 1\nsocks-proxy b\n; asks"));
}

void ProfileTest::commandLines_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *arguments, const char *expected) {
        QTest::newRow(arguments) << QString::fromLatin1(arguments) << QString::fromLatin1(expected);
    };
    row("--config|/app/cfg/OpenVPN/temp", "");
    row("--config|/app/cfg/OpenVPN/temp|--auth-user-pass|--auth-nocache|--http-proxy|proxy|8080|/app/cfg/proxy|--cd|"
        "/app/cfg/OpenVPN/|--management|127.0.0.1|44358|--script-security|2|--up|/app/up.sh|--down|/app/down.sh",
        "");
    row("--config|/app/cfg/OpenVPN/temp|--socks-proxy|::1|1080", "");
    row("--cd|/app/cfg/OpenVPN/", "no profile is given");
    row("--config|/etc/passwd", "--config takes a file of the application folder");
    row("x|--config|/app/x", "argument refused: x");
    row("--config|/app/x|--http-proxy|a|--plugin|x.so|1", "--http-proxy takes an address, a port");
    row("--config|/app/x|--http-proxy|a|1|--plugin|x.so", "argument refused: --plugin");
    row("--config|/app/x|--http-proxy|a|1|/etc/shadow", "--http-proxy takes");
    row("--config|/app/x|--http-proxy|a|1|/app/cfg/proxy|basic", "--http-proxy takes");
    row("--config|/app/x|--http-proxy|-x|1", "--http-proxy takes");
    row("--config|/app/x|--http-proxy|a|1|--socks-proxy|b|2", "--socks-proxy takes");
    row("--config|/app/x|--socks-proxy|a|1|--cd|/", "--cd takes the configuration folder");
    row("--config|/app/x|--auth-user-pass|/app/cfg/proxy", "--auth-user-pass takes no value");
    row("--config|/app/x|--script-security|3", "--script-security takes 2");
    row("--config|/app/x|--up|/tmp/up.sh", "--up takes the application's own up.sh");
    row("--config|/app/x|--config|/app/y", "argument given twice: --config");
    row("--config=/app/x", "argument refused: --config=/app/x");
}

void ProfileTest::commandLines()
{
    QFETCH(QString, arguments);
    QFETCH(QString, expected);
    std::vector<std::string> list;
    for (const QString &argument : arguments.split('|'))
        list.push_back(argument.toStdString());
    std::string error;
    const bool accepted = parseCommandLine(list, "/app", error).has_value();
    QCOMPARE(accepted, expected.isEmpty());
    QVERIFY2(QString::fromStdString(error).startsWith(expected), error.c_str());
}

void ProfileTest::openVpnArgumentsInOrder()
{
    CommandLine commandLine;
    commandLine.proxy = {"--http-proxy", "proxy", "8080"};
    commandLine.changeFolder = commandLine.up = commandLine.down = commandLine.noCache = true;
    commandLine.managementPort = "44358";
    const Handover handover = {"CONFIG", "KEY", "ANSWERS", "PROXY", true};
    QStringList arguments;
    for (const std::string &argument : openVpnArguments(commandLine, handover, "/a \"b\""))
        arguments += QString::fromStdString(argument);
    QCOMPARE(
        arguments.join('|'),
        QStringLiteral("openvpn|--verb|3|--askpass|KEY|--mark|19311|--pull-filter|ignore|redirect-gateway|"
                       "--redirect-gateway|def1|local|--http-proxy|proxy|8080|PROXY|--config|CONFIG|"
                       "--auth-user-pass|ANSWERS|--auth-nocache|--cd|/a \"b\"/cfg/OpenVPN/|--management|127.0.0.1|"
                       "44358|--script-security|2|--up|\"/a \\\"b\\\"/up.sh\"|--down|\"/a \\\"b\\\"/down.sh\""));
}

void ProfileTest::lastAddressesReplaceNames()
{
    const Addresses addresses = parseAddresses("gone 192.0.2.1\nalive 192.0.2.2\nbad 192.0.2.300\nhalf\nsix ::1\n");
    std::string error;
    auto directives = parseProfile("remote gone 1194 udp\nremote alive\nremote bad\n<connection>\nremote six\n"
                                   "</connection>\nverify-x509-name gone name\n",
                                   error);
    const auto notes = replaceNames(*directives, addresses, [](const std::string &name) { return name == "alive"; });
    QCOMPARE(notes.size(), size_t(2));
    QCOMPARE(QByteArray::fromStdString(*renderProfile(*directives, error)),
             QByteArray("remote 192.0.2.1 1194 udp\nremote alive\nremote bad\n<connection>\nremote ::1\n"
                        "</connection>\nverify-x509-name gone name\n"));
}

QTEST_GUILESS_MAIN(ProfileTest)
#include "ProfileTest.moc"
