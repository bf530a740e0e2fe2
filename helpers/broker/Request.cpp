#include "helpers/broker/Request.h"

namespace {

struct Helper
{
    std::string_view name;
    const char *program;
    bool isScript = false;
    const char *mode = nullptr; ///< its first argument, whatever the window says
};

constexpr Helper kHelpers[] = {
    {"compose", "/compose"},   {"compose4", "/compose4"}, {"compose9", "/compose9", false, "--install-given"},
    {"composec", "/composec"}, {"route", "/tools/route"}, {"down", "/down.sh", true},
};

} // namespace

std::optional<Request> parseRequest(std::string_view message)
{
    if (message.empty() || message.size() > kLongestRequest || message.back() != '\0') {
        return std::nullopt;
    }
    std::vector<std::string> words;
    while (!message.empty()) {
        const size_t end = message.find('\0');
        words.emplace_back(message.substr(0, end));
        message.remove_prefix(end + 1);
    }
    if (words.size() > kMostArguments + 1) {
        return std::nullopt;
    }
    for (const Helper &helper : kHelpers) {
        if (helper.name == words[0]) {
            if (helper.mode != nullptr) {
                words.insert(words.begin() + 1, helper.mode);
            }
            return Request{helper.program, helper.isScript, {words.begin() + 1, words.end()}};
        }
    }
    return std::nullopt;
}
