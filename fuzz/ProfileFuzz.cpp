#include "helpers/compose/ProfileFilter.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>

// What compose lets pass must be read back as the same directives and let pass once more, unchanged. Built with clang
// and -fsanitize=fuzzer this is a libFuzzer target; the main() below needs neither.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const auto pass = [](const std::string &text) -> std::optional<std::string> {
        std::string error;
        const auto directives = parseProfile(text, error);
        const auto filtered = directives ? filterProfile(*directives, {}, error) : std::nullopt;
        auto result = filtered ? renderProfile(filtered->directives, error) : std::nullopt;
        if (!result && error.empty()) {
            std::abort();
        }
        return result;
    };
    const auto once = pass({reinterpret_cast<const char *>(data), size});
    if (once && once->find_first_not_of('\n') != std::string::npos && pass(*once) != once) {
        std::abort();
    }
    return 0;
}

#ifndef KORVAN_LIBFUZZER
/// profile_fuzz ROUNDS PROFILE...: mutates the profiles, always in the same way.
int main(int argc, char *argv[])
{
    constexpr char kPieces[] = "\"'\\ \t#;\r\n<>/-\0\v\xff";
    std::mt19937 random(1);
    const auto below = [&random](size_t limit) {
        return std::uniform_int_distribution<size_t>(0, limit - 1)(random);
    };
    std::vector<std::string> seeds;
    for (int i = 2; i < argc; ++i) {
        std::ifstream file(argv[i], std::ios::binary);
        seeds.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    if (seeds.empty()) {
        return 2;
    }
    const long rounds = std::strtol(argv[1], nullptr, 10);
    for (long round = 0; round < rounds; ++round) {
        std::string text = seeds[below(seeds.size())];
        for (size_t changes = below(6); changes > 0 && !text.empty(); --changes) {
            const size_t at = below(text.size());
            switch (below(4)) {
            case 0:
                text[at] = kPieces[below(sizeof(kPieces))];
                break;
            case 1:
                text.insert(at, 1, kPieces[below(sizeof(kPieces))]);
                break;
            case 2:
                text.erase(at, below(40));
                break;
            default:
                text.insert(at, text.substr(below(text.size()), below(40)));
            }
        }
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(text.data()), text.size());
    }
    std::printf("%ld rounds without a finding\n", rounds);
    return 0;
}
#endif
