#include "helpers/broker/Request.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>

// What the root part takes for a request is one on its list, whole: put together again it is the same message. Built
// with clang and -fsanitize=fuzzer this is a libFuzzer target; the main() below needs neither.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string_view message(reinterpret_cast<const char *>(data), size);
    const auto request = parseRequest(message);
    if (!request) {
        return 0;
    }
    std::string again(message.substr(0, message.find('\0') + 1));
    for (const std::string &argument : request->arguments) {
        again.append(argument).push_back('\0');
    }
    if (again != message || request->program.empty() || request->program[0] != '/') {
        std::abort();
    }
    return 0;
}

#ifndef KORVAN_LIBFUZZER
/// request_fuzz ROUNDS: mutates requests, always in the same way.
int main(int argc, char *argv[])
{
    const std::string seeds[] = {std::string("compose\0--config\0/x\0", 19), std::string("route\0add\0\0", 11),
                                 std::string("down\0", 5)};
    std::mt19937 random(1);
    const long rounds = argc == 2 ? std::strtol(argv[1], nullptr, 10) : 10000;
    for (long round = 0; round < rounds; ++round) {
        std::string text = seeds[random() % 3];
        for (size_t changes = random() % 4; changes > 0 && !text.empty(); --changes) {
            const size_t at = random() % text.size();
            switch (random() % 3) {
            case 0:
                text[at] = static_cast<char>(random());
                break;
            case 1:
                text.insert(at, random() % 100, static_cast<char>(random() % 3));
                break;
            default:
                text.erase(at, random() % 5);
            }
        }
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(text.data()), text.size());
    }
    std::printf("%ld rounds without a finding\n", rounds);
    return 0;
}
#endif
