#include "helpers/tools/LoginItems.h"

#include "helpers/system/Checks.h"
#include "names/Names.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <optional>

namespace {

constexpr char kNamePrefix[] = "korvan-";
constexpr char kNameSuffix[] = ".desktop";
constexpr char kOwnMark[] = "\nX-Korvan-LoginItem=true\n";

/// Reads "{ key = value; ... }" from a position on, which then stands behind what was understood.
class EntryReader
{
public:
    EntryReader(const std::string &text, size_t position) : m_text(text), m_position(position) {}

    size_t position() const { return m_position; }

    /// The value of the key Path, empty when there is none; no value when the text is no entry.
    std::optional<std::string> read()
    {
        std::string path;
        if (!skip('{')) {
            return {};
        }
        while (!skip('}')) {
            const std::optional<std::string> key = readWord();
            if (!key || !skip('=')) {
                return {};
            }
            const std::optional<std::string> value = readWord();
            if (!value || !skip(';')) {
                return {};
            }
            if (*key == "Path") {
                path = *value;
            }
        }
        return path;
    }

private:
    bool skip(char expected)
    {
        while (m_position < m_text.size() && std::isspace(static_cast<unsigned char>(m_text[m_position])) != 0) {
            ++m_position;
        }
        if (m_position >= m_text.size() || m_text[m_position] != expected) {
            return false;
        }
        ++m_position;
        return true;
    }

    std::optional<std::string> readWord()
    {
        if (skip('"')) {
            const size_t end = m_text.find('"', m_position);
            if (end == std::string::npos) {
                return {};
            }
            std::string word = m_text.substr(m_position, end - m_position);
            m_position = end + 1;
            return word;
        }
        const size_t start = m_position;
        while (m_position < m_text.size() && isBareCharacter(m_text[m_position])) {
            ++m_position;
        }
        return m_position > start ? std::optional(m_text.substr(start, m_position - start)) : std::nullopt;
    }

    static bool isBareCharacter(char c)
    {
        return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '.' || c == '/' || c == '-';
    }

    const std::string &m_text;
    size_t m_position;
};

bool isStartable(const std::string &bundle)
{
    return !bundle.empty() && bundle[0] == '/' && !hasControl(bundle);
}

/// A word of the key Exec: quoted, then escaped again as every text of a desktop entry is.
std::string execWord(const std::string &word)
{
    std::string result = "\"";
    for (const char c : word) {
        switch (c) {
        case '\\':
            result += "\\\\\\\\";
            break;
        case '"':
        case '`':
        case '$':
            result += std::string("\\\\") + c;
            break;
        case '%':
            result += "%%";
            break;
        default:
            result += c;
        }
    }
    return result + "\"";
}

} // namespace

LoginItems parseLoginItems(const std::string &list)
{
    LoginItems items;
    size_t start = list.find('{');
    while (start != std::string::npos) {
        EntryReader reader(list, start);
        const std::optional<std::string> bundle = reader.read();
        const std::string entry = list.substr(start, std::max(reader.position(), start + 1) - start);
        if (!bundle) {
            items.problems.push_back("can not understand an entry of the list after: " + entry);
        } else if (!isStartable(*bundle)) {
            items.problems.push_back("no path of an application in the entry: " + entry);
        } else if (std::find(items.bundles.begin(), items.bundles.end(), *bundle) == items.bundles.end()) {
            items.bundles.push_back(*bundle);
        }
        start = list.find('{', std::max(reader.position(), start + 1));
    }
    return items;
}

std::string desktopEntryName(const std::string &bundle)
{
    // FNV-1a; the name needs to be a valid file name for any path, and the same at every run.
    uint64_t hash = 14695981039346656037U;
    for (const char c : bundle) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
    }
    char digits[17];
    std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(hash));
    return std::string(kNamePrefix) + digits + kNameSuffix;
}

std::string desktopEntry(const std::string &bundle)
{
    const std::string program = bundle == kPackagedBundle ? kLauncher : bundle + "/Contents/MacOS/Korvan";
    return "[Desktop Entry]\nType=Application\nName=Korvan\nExec=" + execWord(program) + " -hide\nTerminal=false" +
           kOwnMark;
}

bool isOwnDesktopEntry(const std::string &name, const std::string &content)
{
    return name.rfind(kNamePrefix, 0) == 0 && content.find(kOwnMark) != std::string::npos;
}
