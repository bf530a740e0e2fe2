// The one owner of the machine's network state, as OpenVPN's scripts, the program's down.sh and the guardian start
// it:
//   network up|routes|down    in the environment of OpenVPN's scripts
//   network down [--stale]    without it: the program has ended its tunnels; with the option it waits for none
//   network watch DESCRIPTOR  the guardian of the program that this process descriptor stands for

#include "helpers/network/Guardian.h"
#include "helpers/network/Network.h"
#include "names/PastTunnel.h"

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace {

Environment takeEnvironment()
{
    Environment environment;
    for (char **each = environ; *each != nullptr; ++each) {
        const std::string text = *each;
        const size_t equals = text.find('=');
        if (equals != std::string::npos) {
            environment[text.substr(0, equals)] = text.substr(equals + 1);
        }
    }
    clearenv();
    return environment;
}

Outcome actOn(const std::string &event, bool isStale)
{
    const Offer offer = readOffer(takeEnvironment());
    const Process openVpn = processOf(offer.process);
    if (event == "up") {
        return tunnelUp(offer, openVpn);
    }
    if (event == "routes") {
        Outcome outcome = tunnelRouted(offer, openVpn);
        std::printf("%s%s\n", kPastTunnel, pastTunnel(offer).c_str());
        return outcome;
    }
    return openVpn.start != 0 ? tunnelDown(openVpn) : tunnelsEnded(!isStale);
}

} // namespace

int main(int argc, char **argv)
{
    const std::string event = argc > 1 ? argv[1] : "";
    if (event == "watch" && argc == 3) {
        watchNetwork(int(std::strtol(argv[2], nullptr, 10)));
        return 0;
    }
    if (event != "up" && event != "routes" && event != "down") {
        std::fputs("network: use up|routes|down [--stale]|watch DESCRIPTOR\n", stderr);
        return 2;
    }
    const Outcome outcome = actOn(event, argc > 2 && std::string(argv[2]) == "--stale");
    for (const std::string &note : outcome.notes) {
        std::fprintf(stderr, "%s.sh: %s\n", event.c_str(), note.c_str());
    }
    return outcome.done ? 0 : 1;
}
