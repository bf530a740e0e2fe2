#include "helpers/compose4/Operations.h"
#include "helpers/network/Network.h"
#include "helpers/system/Arguments.h"
#include "helpers/system/Checks.h"

#include <clocale>
#include <cstdlib>
#include <cstring>
#include <unistd.h>
#include <vector>

using Arguments = std::vector<std::string>;

static const char *const kUsage = "Error: usage: compose4 TYPE NAME SERVER [PSK] | NAME USER PASSWORD | CHECK NAME | "
                                  "NAME | TYPE NAME\n";

/// Whether the text can stand in a connection profile: UTF-8 on one line.
static bool isPlain(const std::string &text)
{
    return isUtf8(text) && text.find_first_of("\r\n") == std::string::npos;
}

static std::string setUpChecked(const Service &service, const Arguments &arguments)
{
    const std::string psk = arguments.size() == 4 ? arguments[3] : std::string();
    if (!isHost(arguments[2])) {
        return "Error: the server is neither a host name nor an address\n";
    }
    if ((strcmp(service.type, "L2TP") == 0) == psk.empty() || !isPlain(psk)) {
        return "Error: L2TP, and no other type, needs a pre-shared key on one line\n";
    }
    if (geteuid() == 0) {
        noteUplinks(arguments[2]); // dialling comes next
    }
    return setUp(service, arguments[2], psk);
}

static std::string run(const Arguments &arguments)
{
    const size_t count = arguments.size();
    if (count < 1 || count > 4) {
        return kUsage;
    }
    if (const Service *service = serviceOfType(arguments[0]); service) {
        if (count == 1 || arguments[1] != service->name) {
            return kUsage;
        }
        return count == 2 ? removeService(*service) : setUpChecked(*service, arguments);
    }
    if (count == 2 && arguments[0] == "CHECK") {
        const Service *service = serviceNamed(arguments[1]);
        return service ? check(*service) : kUsage;
    }
    const Service *service = serviceNamed(arguments[0]);
    if (!service || (count != 1 && count != 3)) {
        return kUsage;
    }
    if (count == 1) {
        if (geteuid() == 0) {
            noteUplinks({});
        }
        return hangUp(*service);
    }
    if (!isPlain(arguments[1]) || !isPlain(arguments[2])) {
        return "Error: the user name and the password must be UTF-8 text on one line\n";
    }
    return dial(*service, arguments[1], arguments[2]);
}

/// Manages the system VPN services PPTP, L2TP and IKEv2 as connection profiles of NetworkManager (and knows SSTP by
/// name). With "-" alone it reads its arguments from standard input, each ended by a NUL. Prints one answer, in one
/// piece; exit status 0 when it holds "Success", else 1.
int main(int argc, char *argv[])
{
    const Arguments arguments = takeArguments(argc, argv);
    setlocale(LC_CTYPE, "C.UTF-8");
    const std::string answer = run(arguments);
    const bool printed = write(STDOUT_FILENO, answer.data(), answer.size()) == static_cast<ssize_t>(answer.size());
    return printed && answer.find("Success") != std::string::npos ? 0 : 1;
}
