#include "attack/RawService.h"

#include <arpa/inet.h>
#include <csignal>
#include <fstream>
#include <iterator>
#include <netinet/in.h>
#include <string>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

static std::string whole(const char *path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

static bool sendAll(int client, const std::string &bytes)
{
    for (size_t done = 0; done < bytes.size();) {
        const ssize_t n = send(client, bytes.data() + done, bytes.size() - done, MSG_NOSIGNAL);
        if (n <= 0) {
            return false;
        }
        done += static_cast<size_t>(n);
    }
    return true;
}

static void answer(int client)
{
    std::string request;
    char buffer[4096];
    while (request.find("\r\n\r\n") == std::string::npos) {
        const ssize_t n = recv(client, buffer, sizeof buffer, 0);
        if (n <= 0) {
            return;
        }
        request.append(buffer, static_cast<size_t>(n));
    }
    if (request.find(whole("only") + " HTTP") == std::string::npos) {
        const linger reset = {1, 0};
        setsockopt(client, SOL_SOCKET, SO_LINGER, &reset, sizeof reset);
        return;
    }
    const std::string more = whole("more");
    bool open = sendAll(client, whole("answer"));
    while (open && !more.empty()) {
        open = sendAll(client, more);
    }
    shutdown(client, SHUT_WR);
    while (open && recv(client, buffer, sizeof buffer, 0) > 0) {
    }
}

int startRawService(unsigned short port)
{
    const int listener = socket(AF_INET, SOCK_STREAM, 0);
    const int on = 1;
    setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (bind(listener, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0 ||
        listen(listener, 16) != 0) {
        return -1;
    }
    const int child = fork();
    if (child != 0) {
        close(listener);
        return child;
    }
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    std::signal(SIGCHLD, SIG_IGN);
    while (true) {
        const int client = accept(listener, nullptr, nullptr);
        if (fork() == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            answer(client);
            _exit(0);
        }
        close(client);
    }
}
