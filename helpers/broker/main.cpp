// The part of Korvan that is root where the window is not: starts the helpers that need root's rights for the one
// window at the other end of its standard input, a socket pair that the window made. It tells the window "ready", or
// "busy NUMBER" when the machine's tunnel is that user's, and ends with the window.

#include "helpers/broker/Broker.h"
#include "helpers/broker/Message.h"
#include "helpers/broker/Start.h"

#include <climits>
#include <cstdio>
#include <unistd.h>

namespace {

/// The application folder; empty when it is not known.
std::string ownFolder()
{
    char path[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
    const std::string file(path, length > 0 ? static_cast<size_t>(length) : 0);
    return file.substr(0, file.rfind('/') + 1);
}

} // namespace

int main()
{
    std::string reason;
    if (!findWindow(reason)) {
        std::fprintf(stderr, "broker: %s\n", reason.c_str());
        return 2;
    }
    const Descriptor signals = startClean();
    const std::optional<Window> window = findWindow(reason); // anew: no descriptor outlasts the clean start
    std::string bundle = ownFolder();
    if (!window || signals < 0 || bundle.empty()) {
        return 1;
    }
    bundle.pop_back();
    std::optional<uid_t> holder;
    const Descriptor lock = lockTunnel(window->person, holder);
    if (lock < 0) {
        sendMessage(STDIN_FILENO, holder ? "busy " + std::to_string(*holder) : "broken");
        return 1;
    }
    Broker broker(STDIN_FILENO, window->process, bundle, window->person);
    broker.restoreNetwork(); // of a program that was killed together with everything that would have done so
    sendMessage(STDIN_FILENO, "ready");
    broker.serve(signals);
    broker.endHelpers();
    broker.restoreNetwork();
    return 0;
}
