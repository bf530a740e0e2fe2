#include "common/AppPath.h"
#include "tests/support/Cases.h"
#include "vpn/HelperArguments.h"
#include "vpn/HelperOutput.h"

/// What goes to the helpers and what comes back, without running any.
class OutputTest : public QObject
{
    Q_OBJECT

private slots:
    void arguments()
    {
        const auto option = [](VPNClient::TYPE type, const char *user, const char *params) {
            return VPNClient::OPTION{type, user, "p w", "/cfg/OpenVPN/temp", params, -1, {}, "host", {}};
        };
        const QString scripts = "--script-security 2 --up " + appPath("/up.sh") + " --down " + appPath("/down.sh");
        const QString sstp = "--user u --password p w host --log-level 3 --debug usepeerdns defaultroute refuse-pap "
                             "refuse-eap noauth mtu %1 logfile " +
                             appPath("/vpnlog.txt");
        const std::pair<QStringList, QString> cases[] = {
            {openVPNArguments({}, {}), scripts},
            {openVPNArguments(option(VPNClient::OPENVPN, "", "|--http-proxy|h|8080||--cd|/d|"), "44360"),
             "--config " + appPath("/cfg/OpenVPN/temp") +
                 " --auth-user-pass --auth-nocache --http-proxy h 8080 --cd /d "
                 "--management 127.0.0.1 44360 " +
                 scripts},
            {sstpArguments(option(VPNClient::SSTP, "u", "abc")), sstp.arg(1500)},
            {sstpArguments(option(VPNClient::SSTP, "u", "0")), sstp.arg(1500)},
            {sstpArguments(option(VPNClient::SSTP, "u", "1400")), sstp.arg(1400)},
            {serviceConnectArguments(option(VPNClient::L2TP, "u", "")), "Korvan-L2TP u p w"},
            {serviceStatusArguments(VPNClient::PPTP), "CHECK Korvan-PPTP"},
            {serviceDisconnectArguments(VPNClient::IKEV2), "Korvan-IKEv2"},
        };
        for (const auto &[built, expected] : cases) {
            QCOMPARE(built.join(' '), expected);
        }
    }

    void output()
    {
        QCOMPARE(classifyOpenVPN("Enter Auth Username:Enter Auth Password:"), OpenVPNOutput::WantsUser);
        QCOMPARE(classifyOpenVPN("AUTH_FAILED\nEnter Auth Password:"), OpenVPNOutput::WantsPassword);
        QCOMPARE(classifyOpenVPN("Initialization Sequence Completed\nAUTH_FAILED"), OpenVPNOutput::AuthFailed);
        QCOMPARE(classifyOpenVPN("With Errors auth username: auth_failed"), OpenVPNOutput::Other);
        QCOMPARE(classifyService("No Error\nSuccess"), ServiceOutput::Success);
        QCOMPARE(classifyService("success error"), ServiceOutput::Other);
        QCOMPARE(classifySstp("authentication failed\nremote IP address 10.0.0.1"), SstpOutput::Connected);
        QCOMPARE(classifySstp("bad username or password"), SstpOutput::AuthFailed);
        const ByteCount count = parseServiceCounts("Send 7\nRecv  18446744073709551615 \r\nSuccess\n");
        QCOMPARE(count.received, ~quint64(0));
        QCOMPARE(count.sent, quint64(7));
    }
};

QTEST_GUILESS_MAIN(OutputTest)
#include "OutputTest.moc"
