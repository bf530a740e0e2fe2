#include "tests/lab/ClientLab.h"

#include "common/AppPath.h"
#include "ui/KvRetinaTabBar.h"

#include <csignal>
#include <cstdio>

static constexpr int kLimitMs = 60000;

ClientLab::ClientLab()
{
    // Not the state of the bundle's own runs.
    inHome("cp -a " KORVAN_BUNDLE "/{Korvan,compose,compose4,up.sh,down.sh,options,snd} '" + appPath("/").toUtf8() +
           "'");
}

void ClientLab::startLoggedIn(const QString &server)
{
    start();
    tick("cbNoSound");
    login("alice", "wonderland-7");
    find<QComboBox>("cmServer")->setCurrentText(server);
    QCOMPARE(find<QComboBox>("cmServer")->currentText(), server);
}

void ClientLab::openPage(const QString &name) const
{
    auto *tab = find<KvRetinaTabBar>("tab");
    int index = 0;
    while (index < tab->count() && tab->tabText(index) != name) {
        ++index;
    }
    tab->setCurrentIndex(index);
}

void ClientLab::tick(const char *box, bool on) const
{
    auto *widget = find<QAbstractButton>(box);
    if (widget->isChecked() != on) {
        widget->click();
    }
}

QString ClientLab::label(const char *name) const
{
    return find<QLabel>(name)->text();
}

bool ClientLab::shows(const char *name, const QString &text) const
{
    return QTest::qWaitFor([&] { return label(name) == text; }, kLimitMs);
}

bool ClientLab::isDisconnected() const
{
    return QTest::qWaitFor([&] { return find<QWidget>("cmServer")->isEnabled(); }, kLimitMs) &&
           label("lbStatusT") == "NOT CONNECTED";
}

void ClientLab::expectKillSwitch()
{
    boxes.expect("Error", "Internet connection has been terminated for your security.\nPlease press OK to resume "
                          "your regular internet connection and reconnect to the VPN if needed.");
}

bool ClientLab::breakTunnel()
{
    find<QAbstractButton>("cbAutoReconn")->setChecked(false);
    expectKillSwitch();
    kill(openVPN(), SIGTERM);
    return QTest::qWaitFor([&] { return boxes.left() == 0; }, kLimitMs) && isDisconnected();
}

QByteArray inHome(const QByteArray &command)
{
    QProcess shell;
    shell.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    shell.start("bash", {"-c", command});
    if (!shell.waitForFinished(kLimitMs)) {
        qFatal("no end of: %s", command.constData());
    }
    return shell.readAllStandardOutput().trimmed();
}

QByteArray whereabouts(const QByteArray &curlOptions)
{
    return inHome(
        "curl -s -m 2 " + curlOptions +
        " http://ip.korvan.example/testip.php | sed -n 's/.*in \\(.*\\)? .*: \\([0-9a-f.:]*\\)<.*/\\2, \\1/p'");
}

QByteArray networkState()
{
    return inHome("ip route; ip -6 route | grep -v ' expires '; ip rule; ip route show table 19311 2>/dev/null; "
                  "nft list ruleset; cat /etc/resolv.conf; ls /sys/class/net; ls -A /run/korvan 2>/dev/null | "
                  "grep -vE '^(last-remote|.*lock)$'");
}

bool networkReturnsTo(const QByteArray &state)
{
    if (QTest::qWaitFor([&] { return networkState() == state; }, kLimitMs)) {
        return true;
    }
    std::printf("the network is now\n%s\nand was\n%s\n", networkState().constData(), state.constData());
    return false;
}

pid_t openVPN()
{
    // The servers' machines have network namespaces of their own.
    return inHome("for p in $(pgrep -x openvpn); do [ \"$(readlink /proc/$p/ns/net)\" = \"$(readlink "
                  "/proc/self/ns/net)\" ] && echo $p; done")
        .toInt();
}

LeakWatch::LeakWatch()
{
    inHome("ip netns exec world nft -f - <<'END'\n"
           "table inet leaks {\n"
           " counter outside {}\n"
           " chain input { type filter hook input priority 0;\n"
           "  iifname home ip daddr { 203.0.113.10, 203.0.113.30 } counter name outside\n"
           "  iifname home ip6 daddr 2001:db8:113::10 counter name outside\n }\n"
           "}\n"
           "END");
    m_senders.start("bash", {"-c", "while :; do for host in 203.0.113.10 203.0.113.30 2001:db8:113::10; do "
                                   "echo x >/dev/udp/$host/9; done; read -t .002 <> <(:); done 2>/dev/null"});
    m_senders.waitForStarted();
}

LeakWatch::~LeakWatch()
{
    m_senders.kill();
    m_senders.waitForFinished();
    inHome("ip netns exec world nft delete table inet leaks");
}

int LeakWatch::packets()
{
    return inHome(
               "ip netns exec world nft list counter inet leaks outside | sed -n 's/.*packets \\([0-9]*\\) .*/\\1/p'")
        .toInt();
}

void LeakWatch::reset()
{
    inHome("ip netns exec world nft reset counters table inet leaks >/dev/null");
}
