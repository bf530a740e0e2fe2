#include "common/AppPath.h"
#include "tests/support/Cases.h"
#include "vpn/HelperArguments.h"
#include "vpn/HelperOutput.h"

/// What goes to the helpers and what comes back, without running any.
class OutputTest : public QObject
{
    Q_OBJECT

private slots:
    void sstpCommandLine()
    {
        for (const auto &[params, mtu] : {std::pair("abc", " 1500 "), std::pair("1400", " 1400 ")}) {
            const VPNClient::OPTION option{VPNClient::SSTP, "u", "p w", {}, params, -1, {}, "host", {}};
            COMPARE_CASE(params, sstpArguments(option).join(' '),
                         "--user u --password p w host --log-level 3 --debug usepeerdns defaultroute refuse-pap "
                         "refuse-eap noauth mtu" +
                             QString(mtu) + "logfile " + appPath("/vpnlog.txt"));
        }
    }

    /// Where a chunk holds several markers, or nearly one.
    void output()
    {
        QCOMPARE(classifyOpenVPN("AUTH_FAILED\nEnter Auth Password:"), OpenVPNOutput::WantsPassword);
        QCOMPARE(classifyOpenVPN("Initialization Sequence Completed\nAUTH_FAILED"), OpenVPNOutput::AuthFailed);
        QCOMPARE(classifyOpenVPN("With Errors auth username: auth_failed"), OpenVPNOutput::Other);
        QCOMPARE(classifyService("No Error\nSuccess"), ServiceOutput::Success);
        QCOMPARE(classifySstp("authentication failed\nremote IP address 10.0.0.1"), SstpOutput::Connected);
        QCOMPARE(classifySstp("bad username or password"), SstpOutput::AuthFailed);
        const ByteCount count = parseServiceCounts("Send 7\nRecv  18446744073709551615 \r\nSuccess\n");
        QVERIFY(count.received == ~quint64(0) && count.sent == 7);
    }
};

QTEST_GUILESS_MAIN(OutputTest)
#include "OutputTest.moc"
