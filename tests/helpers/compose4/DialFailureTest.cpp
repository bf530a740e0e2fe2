#include "helpers/compose4/DialFailure.h"
#include "helpers/compose4/ConnectionProfile.h"
#include "helpers/compose4/PluginKey.h"

#include <QtTest>

class DialFailureTest : public QObject
{
    Q_OBJECT

private slots:
    /// With lines of the journal as pppd and strongSwan write them.
    void tellsTheReason()
    {
        const std::pair<const char *, const char *> cases[] = {
            {"Connect: ppp0 <--> /dev/pts/1\nMS-CHAP authentication failed: E=691 Authentication failure\n",
             "691 the user name or password is not valid"},
            // charon sends again while it dials, also to a server that refuses the password in the end.
            {"sending retransmit 1 of request message ID 0, seq 1\nCHAP authentication failed\n",
             "691 the user name or password is not valid"},
            {"invalid HASH_V1 payload length, decryption failed?\nsending retransmit 1 of request message ID 0, seq "
             "3\n",
             "the pre-shared key is not the one of the server"},
            {"sending retransmit 2 of request message ID 0, seq 1\n", "the server does not answer"},
            {"failed to connect: 'couldn't look up L2TP VPN gateway IP address'\n",
             "the name of the server is not known, check the connection to the Internet"},
            {"Starting strongSwan 6.0.1 IPsec [starter]...\n", ""},
        };
        for (const auto &[journal, reason] : cases) {
            QCOMPARE(dialFailure(journal), std::string(reason));
        }
    }

    /// The plug-in's file may hold the key of a connection that is somebody else's.
    void knowsItsOwnKey()
    {
        const std::string psk = " lab\\key\t7";
        const std::string profile = profileText(*serviceOfType("L2TP"), "a.example", psk);
        QCOMPARE(valueOf(profile, "vpn-secrets", "ipsec-psk"), psk);
        QVERIFY(valueOf(profile, "vpn", "ipsec-psk").empty());
        const std::string written = ": PSK 0sIGxhYlxrZXkJNw==\n";
        QVERIFY(isPluginKey(written, psk) && isPluginKey("@id " + written, psk));
        QVERIFY(isPluginKey(written, "0sIGxhYlxrZXkJNw==") && isPluginKey(": PSK 0sbWVsbG93ZmluY2g=", "mellowfinch"));
        QVERIFY(!isPluginKey(written, " lab") && !isPluginKey("", psk) && !isPluginKey(written, ""));
    }
};

QTEST_GUILESS_MAIN(DialFailureTest)
#include "DialFailureTest.moc"
