#include "helpers/system/Arguments.h"

#include "helpers/system/Descriptor.h"
#include "names/Names.h"

#include <cstring>
#include <fcntl.h>

/// Whoever starts the program looks for it in the file.
[[gnu::used]] static const auto &s_marker = kArgumentsOnInput;

static std::vector<std::string> readArguments()
{
    constexpr size_t kLimit = 65536;
    std::string text;
    std::vector<std::string> arguments;
    if (!readAll(STDIN_FILENO, text, kLimit)) {
        return arguments;
    }
    for (size_t begin = 0, end = 0; (end = text.find('\0', begin)) != std::string::npos; begin = end + 1) {
        arguments.push_back(text.substr(begin, end - begin));
    }
    return arguments;
}

std::vector<std::string> takeArguments(int argc, char *argv[])
{
    if (argc != 2 || std::strcmp(argv[1], "-") != 0) {
        std::string text;
        for (int i = 1; i < argc; ++i) {
            text.append(argv[i]).push_back('\0');
        }
        const Descriptor arguments = sealedFile(text);
        char dash[] = "-";
        char *words[] = {argv[0], dash, nullptr};
        if (arguments >= 0 && dup2(arguments, STDIN_FILENO) >= 0) {
            execve("/proc/self/exe", words, environ);
        }
        return {};
    }
    std::vector<std::string> arguments = readArguments();
    const Descriptor nothing(open("/dev/null", O_RDONLY | O_CLOEXEC));
    dup2(nothing, STDIN_FILENO);
    return arguments;
}
