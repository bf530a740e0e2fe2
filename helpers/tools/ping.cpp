// "ping -cN HOST" through the system's ping, with its summary in the words that the program reads: "stddev = " where
// Linux says "mdev = ", and no count of errors between the received packets and the loss.

#include "helpers/system/Checks.h"
#include "helpers/system/Run.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <regex>
#include <sys/wait.h>

namespace {

constexpr char kPing[] = "/usr/bin/ping";

std::string translated(const std::string &line)
{
    static const std::regex extraCounts("received, (\\+[0-9]+ [a-z]+, )+");
    static const std::regex deviation("^(rtt .*)mdev = ");
    return std::regex_replace(std::regex_replace(line, extraCounts, "received, "), deviation, "$1stddev = ");
}

/// Copies the real ping's output to standard output, a line at a time, until it ends. Returns whether there was any.
bool copyOutput(int from)
{
    bool any = false;
    FILE *stream = fdopen(from, "r");
    char *line = nullptr;
    size_t size = 0;
    while (getline(&line, &size, stream) >= 0) {
        std::fputs(translated(line).c_str(), stdout);
        std::fflush(stdout);
        any = true;
    }
    std::free(line);
    std::fclose(stream);
    return any;
}

bool isCount(const std::string &option)
{
    return option.compare(0, 2, "-c") == 0 && isNumber(option.substr(2));
}

} // namespace

int main(int argc, char **argv)
{
    const std::vector<std::string> words(argv, argv + argc);
    if (words.size() != 3 || !isCount(words[1]) || words[2].empty() || words[2][0] == '-') {
        std::fputs("ping: use ping -cCOUNT HOST\n", stderr);
        return 2;
    }
    int ends[2];
    const pid_t self = getpid();
    const pid_t child = pipe(ends) == 0 ? fork() : -1;
    if (child < 0) {
        std::fprintf(stderr, "ping: %s\n", std::strerror(errno));
        return 2;
    }
    if (child == 0) {
        dieWithParent(SIGKILL, self);
        dup2(ends[1], STDOUT_FILENO);
        close(ends[0]);
        close(ends[1]);
        becomeTool({kPing, words[1], "--", words[2]});
        std::fprintf(stderr, "ping: %s: %s; it is in the package iputils-ping\n", kPing, std::strerror(errno));
        _exit(127);
    }
    close(ends[1]);
    const bool any = copyOutput(ends[0]);
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (!any && WIFEXITED(status) && WEXITSTATUS(status) != 0) {
        std::puts(
            "0 received, 100% packet loss"); // a name that is unknown: only a ping that was canceled says nothing
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}
