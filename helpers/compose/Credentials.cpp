#include "helpers/compose/Credentials.h"

#include "helpers/system/Checks.h"

#include <cerrno>
#include <poll.h>
#include <unistd.h>

namespace {

/// Below the bytes that a pipe takes in one piece, so that an answer arrives whole.
constexpr size_t kMaxAnswer = 1024;

/// The engine writes one answer, then waits for the next prompt: more than a line was one answer with a line end in
/// it.
bool moreIsWaiting(int input)
{
    pollfd waiting = {input, POLLIN, 0};
    return poll(&waiting, 1, 0) > 0 && (waiting.revents & POLLIN) != 0;
}

std::optional<std::string> readAnswer(int input, const std::string &what, std::string &error)
{
    std::string answer;
    char c = 0;
    while (c != '\n' && answer.size() <= kMaxAnswer) {
        const ssize_t count = read(input, &c, 1);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            break;
        }
        answer += c;
    }
    if (c != '\n' && answer.size() <= kMaxAnswer) {
        error = "no " + what + " was given";
        return std::nullopt;
    }
    answer.pop_back();
    if (!answer.empty() && answer.back() == '\r') {
        answer.pop_back();
    }
    if (c != '\n') {
        error = "the " + what + " is too long";
    } else if (hasControl(answer) || moreIsWaiting(input)) {
        error = "the " + what + " holds a line end or another control character";
    } else if (answer.empty()) {
        error = "the " + what + " is empty";
    } else {
        return answer;
    }
    return std::nullopt;
}

std::optional<std::string> ask(int input, int output, const std::string &prompt, const std::string &what,
                               std::string &error)
{
    if (write(output, prompt.data(), prompt.size()) != static_cast<ssize_t>(prompt.size())) {
        error = "nobody can be asked for the " + what;
        return std::nullopt;
    }
    return readAnswer(input, what, error);
}

} // namespace

std::optional<std::string> askCredentials(int input, int output, std::string &error)
{
    const auto user = ask(input, output, "Enter Auth Username:", "user name", error);
    if (!user) {
        return std::nullopt;
    }
    const auto password = ask(input, output, "Enter Auth Password:", "password", error);
    if (!password) {
        return std::nullopt;
    }
    return *user + "\n" + *password + "\n";
}
