#include "attack/Answers.h"

#include "tests/support/Archives.h"
#include "tests/support/TestFiles.h"

namespace {

QByteArray http(const QByteArray &status, const QByteArray &body, const QByteArray &headers = {})
{
    return "HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n" + headers +
           "\r\n" + body;
}

QByteArray ok(const QByteArray &body)
{
    return http("200 OK", body);
}

QByteArray zip(const Items &items)
{
    buildArchive("made.zip", items);
    return fileBytes("made.zip");
}

const QByteArray kServer = "client\nremote 203.0.113.21 1194\n";
const QByteArray kPage = "<html><body>Welcome to the hotel</body></html>";

/// A ZIP of 2,000 small files, each a server.
Items manyServers(int count)
{
    Items items;
    for (int i = 0; i < count; ++i) {
        items.append({"S-" + QByteArray::number(i) + ".ovpn", kServer});
    }
    return items;
}

QVector<Answer> wrongAnswers()
{
    const Question login = Question::Login;
    const QByteArray junk = QByteArray("\x01\x9f\x00\xff junk", 9).repeated(100000);
    return {
        {"redirect with a page", login, http("302 Found", kPage, "Location: http://127.0.0.1:8099/portal\r\n"), {}},
        {"redirect to itself", login, http("307 Moved", "", "Location: /api\r\n"), {}},
        {"redirect to a local file", login, http("302 Found", "", "Location: file:///etc/shadow\r\n"), {}},
        {"a page", login, ok(kPage), {}},
        {"a page that names a ZIP", login, ok("PK<html></html>"), {}},
        {"nothing", login, ok(""), {}},
        {"status 204", login, "HTTP/1.1 204 No Content\r\n\r\n", {}},
        {"status 401", login, http("401 No", kPage, "WWW-Authenticate: Basic realm=x\r\n"), {}},
        {"status 407", login, http("407 No", kPage, "Proxy-Authenticate: Basic realm=x\r\n"), {}},
        {"status 500 with a page", login, http("500 Error", kPage), {}},
        {"status 511 with a page", login, http("511 Login", kPage), {}},
        {"junk of 900 kB", login, ok(junk), {}},
        {"junk that is no HTTP", login, junk, {}},
        {"a status that is no number", login, "HTTP/1.1 abc OK\r\n\r\nPK", {}},
        {"no head at all", login, "PK\3\4 and no more", {}},
        {"a rejection in 9 MB", login, ok(QByteArray(9 << 20, ' ') + "invalid username or password"), {}},
        {"a length of -1", login, "HTTP/1.1 200 OK\r\nContent-Length: -1\r\n\r\nPK", {}},
        {"a length of 10 GB", login, "HTTP/1.1 200 OK\r\nContent-Length: 10000000000\r\n\r\nPK", "PK"},
        {"half the length it says", login, "HTTP/1.1 200 OK\r\nContent-Length: 99\r\n\r\nPK\3\4", {}},
        {"chunks of no number", login, "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nxyz\r\nPK\r\n", {}},
    };
}

QVector<Answer> endlessAnswers()
{
    const Question login = Question::Login;
    const QByteArray head = "HTTP/1.1 200 OK\r\n";
    const QByteArray block(1 << 20, 'x');
    return {
        {"a body without end", login, head + "\r\nPK", block},
        {"chunks without end", login, head + "Transfer-Encoding: chunked\r\n\r\n", "1\r\nx\r\n"},
        {"headers without end", login, head, "X-Header: of no use\r\n"},
        {"one header without end", login, head + "X-Header: ", block},
        {"a status line without end", login, "HTTP/1.1 200 ", block},
        {"\"Continue\" without end", login, {}, "HTTP/1.1 100 Continue\r\n\r\n"},
        {"compressed zeros without end", login,
         head + "Content-Encoding: gzip\r\n\r\n" + QByteArray::fromHex("1f8b0800000000000003"),
         qCompress(QByteArray(8 << 20, '\0')).mid(6)},
        {"description without end", Question::Description, head + "\r\n<update>", block},
        {"update without end", Question::Archive, head + "\r\nPK\3\4", block},
        {"update of 10 GB", Question::Archive, head + "Content-Length: 10000000000\r\n\r\nPK\3\4", block},
        {"IP page: a header without end", Question::IpPage, head + "X-Header: ", block},
        {"speed test without end", Question::SpeedTest, head + "\r\n", block},
    };
}

QVector<Answer> profiles()
{
    const Question login = Question::Login;
    const QByteArray good = zip({{"S.ovpn", kServer}});
    return {
        {"ZIP, cut short", login, ok(good.left(good.size() / 2)), {}},
        {"ZIP, its beginning alone", login, ok("PK"), {}},
        {"ZIP with ../ in a name", login, ok(zip({{"../../../../victim/x", "x"}})), {}},
        {"ZIP with ..\\ in a name", login, ok(zip({{"a\\..\\..\\..\\..\\..\\victim/x", "x"}})), {}},
        {"ZIP with an absolute name", login, ok(zip({{"/run/victim/x", "x"}})), {}},
        {"ZIP with a link",
         login,
         ok(zip({{"l", "/run/victim", S_IFLNK | 0777}, {"l/x", "x"}, {"S.ovpn", kServer}})),
         {}},
        {"ZIP with control characters", login, ok(zip({{"\x1b[2J.ovpn", kServer}})), {}},
        {"ZIP of 1 GB of zeros", login, ok(zip({{"z", QByteArray(1 << 20, '\0'), S_IFREG | 0644, 1024}})), {}},
        {"ZIP of 25,000 files", login, ok(zip(manyServers(25000))), {}},
        {"5,000 servers", login, ok(zip(manyServers(5000))), {}},
        {"5 MB of L2TP lines",
         login,
         ok(zip({{"S.ovpn", kServer}, {"L2TP.txt", QByteArray("a|b\n").repeated(1300000)}})),
         {}},
        {"a server of 60 MB", login, ok(zip({{"S.ovpn", QByteArray(1 << 20, ' '), S_IFREG | 0644, 60}})), {}},
        {"a certificate's date of 50 MB",
         login,
         ok(zip({{"alice.crt", "Not After : " + QByteArray(50 << 20, '1') + "GMT"}, {"S.ovpn", kServer}})),
         {}},
        {"a profile that runs programs",
         login,
         ok(zip({{"S.ovpn", kServer + "script-security 2\nup \"/bin/touch /run/owned\"\n"}})),
         {}},
        {"a profile's file in the way of ours",
         login,
         ok(zip({{"config/x", "x"}, {"temp/x", "x"}, {"S.ovpn", kServer}})),
         {}},
    };
}

QVector<Answer> updates()
{
    const auto description = [](const QByteArray &version, const QByteArray &url, const QByteArray &message) {
        return ok("<update><system>macos</system><version>" + version + "</version><url>" + url + "</url><message>" +
                  message + "</message></update>");
    };
    const Question page = Question::Description;
    const Question archive = Question::Archive;
    const QByteArray url = "http://127.0.0.1:8099/archive.zip";
    return {
        {"description: a page", page, ok(kPage), {}},
        {"description: 120,000 entries", page, ok(QByteArray("<update>").repeated(120000)), {}},
        {"description: 200 kB of message", page, description("99", url, QByteArray(200000, 'm')), {}},
        {"description: 50,000 lines", page, description("99", url, QByteArray("m\n").repeated(50000)), {}},
        {"description: markup", page, description("99", url, "<img src=/run/victim/fifo>"), {}},
        {"description: a version of 900 kB", page, description(QByteArray("9.").repeated(450000), url, ""), {}},
        {"description: a local file", page, description("99", "file:///run/victim/fifo", "x"), {}},
        {"update: redirect", archive, http("302 Found", kPage, "Location: file:///etc/shadow\r\n"), {}},
        {"update: a page", archive, ok(kPage), {}},
        {"update: junk", archive, ok(QByteArray(1000000, 'z')), {}},
        {"update: nothing", archive, ok(""), {}},
        {"update: a part", archive, "HTTP/1.1 200 OK\r\nContent-Length: 99999\r\n\r\nPK\3\4", {}},
        {"update: not signed", archive, ok(zip({{"Korvan.app/Contents/MacOS/Korvan", "x"}})), {}},
    };
}

} // namespace

QVector<Answer> hostileAnswers()
{
    return wrongAnswers() + endlessAnswers() + profiles() + updates();
}
