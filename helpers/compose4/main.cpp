#include "helpers/compose4/Operations.h"

#include <QString>
#include <QVector>

#include <algorithm>
#include <cstring>
#include <unistd.h>

static const char *const kUsage = "Error: usage: compose4 TYPE NAME SERVER [PSK] | NAME USER PASSWORD | CHECK NAME | "
                                  "NAME | TYPE NAME\n";

/// Takes the arguments over and blanks them in the process list, which every user of the machine can read.
static QVector<QByteArray> takeArguments(int argc, char *argv[])
{
    QVector<QByteArray> arguments;
    for (int i = 1; i < argc; ++i) {
        arguments += QByteArray(argv[i]);
        memset(argv[i], 0, strlen(argv[i]));
    }
    return arguments;
}

/// Whether the text can stand in a connection profile: UTF-8 on one line.
static bool isPlain(const QByteArray &text)
{
    return QString::fromUtf8(text).toUtf8() == text &&
           std::none_of(text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; });
}

/// Whether the text is a host name or an address.
static bool isServer(const QByteArray &text)
{
    return !text.isEmpty() && text.size() <= 253 && text.front() != '-' &&
           std::all_of(text.begin(), text.end(), [](char c) {
               return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || strchr(".-:_", c);
           });
}

static QByteArray setUpChecked(const Service &service, const QVector<QByteArray> &arguments)
{
    const QByteArray psk = arguments.value(3);
    if (!isServer(arguments[2])) {
        return "Error: the server is neither a host name nor an address\n";
    }
    if ((qstrcmp(service.type, "L2TP") == 0) == psk.isEmpty() || !isPlain(psk)) {
        return "Error: L2TP, and no other type, needs a pre-shared key on one line\n";
    }
    return setUp(service, arguments[2], psk);
}

static QByteArray run(const QVector<QByteArray> &arguments)
{
    const int count = arguments.size();
    if (const Service *service = serviceOfType(arguments.value(0)); service) {
        if (count < 2 || count > 4 || arguments[1] != service->name) {
            return kUsage;
        }
        return count == 2 ? remove(*service) : setUpChecked(*service, arguments);
    }
    if (count == 2 && arguments[0] == "CHECK") {
        const Service *service = serviceNamed(arguments[1]);
        return service ? check(*service) : kUsage;
    }
    const Service *service = serviceNamed(arguments.value(0));
    if (!service || (count != 1 && count != 3)) {
        return kUsage;
    }
    if (count == 1) {
        return hangUp(*service);
    }
    if (!isPlain(arguments[1]) || !isPlain(arguments[2])) {
        return "Error: the user name and the password must be UTF-8 text on one line\n";
    }
    return dial(*service, arguments[1], arguments[2]);
}

/// Manages the system VPN services PPTP, L2TP and IKEv2 as connection profiles of NetworkManager (and knows SSTP by
/// name). Prints one answer, in one piece; exit status 0 when it holds "Success", else 1.
int main(int argc, char *argv[])
{
    const QVector<QByteArray> arguments = takeArguments(argc, argv);
    struct sigaction action = {};
    action.sa_handler = [](int) { g_stop = 1; };
    sigaction(SIGTERM, &action, nullptr);
    const QByteArray answer = run(arguments);
    const bool printed = write(STDOUT_FILENO, answer.constData(), size_t(answer.size())) == answer.size();
    return printed && answer.contains("Success") ? 0 : 1;
}
