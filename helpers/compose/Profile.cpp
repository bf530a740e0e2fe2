#include "helpers/compose/Profile.h"

#include "helpers/system/Checks.h"

#include <algorithm>
#include <utility>

namespace {

constexpr size_t kMaxWords = 16;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kConnection = "connection";

/// What the C locale, in which OpenVPN runs, takes for white space.
bool isBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

std::string_view withoutLeadingBlanks(std::string_view text)
{
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    return text;
}

std::vector<std::string_view> linesOf(std::string_view text)
{
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        while (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        lines.push_back(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

/// Splits a line into words, character by character.
class LineSplitter
{
public:
    bool isBetween() const { return m_state == State::Between; }
    const std::vector<std::string> &words() const { return m_words; }

    /// Returns why the character can not stand here, or an empty text.
    std::string take(char c)
    {
        if (isControl(c) && !isBlank(c)) {
            return "holds a control character, so it is not a line of a profile";
        }
        if (c == '\\' && !m_escaped && m_state != State::Single) {
            m_escaped = true;
            return {};
        }
        const bool special = !std::exchange(m_escaped, false);
        if (!special && c != '\\' && c != '"' && !isBlank(c)) {
            return "a backslash may stand only before a blank, a double quote or another backslash";
        }
        if (isBetween()) {
            begin(c, special);
        } else if (ends(c, special)) {
            m_state = State::Between;
        } else {
            m_words.back() += c;
        }
        return {};
    }

    /// Returns why the line can not end here, or an empty text.
    std::string problemAtEnd() const
    {
        if (m_state == State::Double || m_state == State::Single) {
            return "a quotation mark is not closed";
        }
        if (m_escaped) {
            return "ends with a backslash";
        }
        return m_words.size() > kMaxWords ? "has more than " + std::to_string(kMaxWords) + " words" : "";
    }

private:
    enum class State { Between, Plain, Double, Single };

    void begin(char c, bool special)
    {
        if (isBlank(c)) {
            return;
        }
        m_words.emplace_back();
        m_state = special && c == '"' ? State::Double : special && c == '\'' ? State::Single : State::Plain;
        if (m_state == State::Plain) {
            m_words.back() += c;
        }
    }

    bool ends(char c, bool special) const
    {
        return (m_state == State::Plain && special && isBlank(c)) ||
               (m_state == State::Double && special && c == '"') || (m_state == State::Single && c == '\'');
    }

    State m_state = State::Between;
    bool m_escaped = false;
    std::vector<std::string> m_words;
};

/// Turns lines into directives. `firstLine` is the profile's number of lines.front().
class Parser
{
public:
    Parser(std::vector<std::string_view> lines, int firstLine) : m_lines(std::move(lines)), m_firstLine(firstLine) {}

    bool parse(std::vector<Directive> &directives, std::string &error)
    {
        for (; m_next < m_lines.size(); ++m_next) {
            Directive directive;
            directive.line = m_firstLine + static_cast<int>(m_next);
            const auto words = splitOptionLine(m_lines[m_next], error);
            if (!words) {
                error = atLine(directive.line, error);
                return false;
            }
            if (words->empty()) {
                continue;
            }
            directive.words = *words;
            std::string &name = directive.words.front();
            if (name.size() > 2 && name.compare(0, 2, "--") == 0) {
                name.erase(0, 2);
            }
            const bool opensBlock =
                directive.words.size() == 1 && name.size() > 2 && name.front() == '<' && name.back() == '>';
            if (opensBlock && !takeBlock(directive, error)) {
                return false;
            }
            directives.push_back(std::move(directive));
        }
        return true;
    }

private:
    /// Reads up to the line that begins with the closing tag; what stands behind the tag OpenVPN skips.
    bool takeBlock(Directive &directive, std::string &error)
    {
        std::string &name = directive.words.front();
        const std::string openTag = name;
        name = name.substr(1, name.size() - 2);
        const std::string closeTag = "</" + name + ">";
        const size_t begin = m_next + 1;
        for (m_next = begin; m_next < m_lines.size(); ++m_next) {
            const std::string_view line = withoutLeadingBlanks(m_lines[m_next]);
            if (line.compare(0, closeTag.size(), closeTag) == 0) {
                return closeBlock(directive, begin, error);
            }
            // OpenVPN reads an over-long line in pieces and would take the tag at the start of a piece.
            if (line.find(closeTag) != std::string_view::npos) {
                error = atLine(m_firstLine + static_cast<int>(m_next), closeTag + " stands inside a line");
                return false;
            }
        }
        error = atLine(directive.line, "the block " + openTag + " is never closed");
        return false;
    }

    bool closeBlock(Directive &directive, size_t begin, std::string &error) const
    {
        const std::vector<std::string_view> content(m_lines.begin() + static_cast<ptrdiff_t>(begin),
                                                    m_lines.begin() + static_cast<ptrdiff_t>(m_next));
        if (directive.name() == kConnection) {
            if (!Parser(content, m_firstLine + static_cast<int>(begin)).parse(directive.inner, error)) {
                return false;
            }
            if (directive.inner.empty()) {
                error = atLine(directive.line, "the block <connection> is empty");
            }
            return !directive.inner.empty();
        }
        directive.block.emplace();
        for (const std::string_view line : content) {
            directive.block->append(line).append("\n");
        }
        return true;
    }

    const std::vector<std::string_view> m_lines;
    const int m_firstLine;
    size_t m_next = 0;
};

/// Writes directives on the lines on which they stand in the profile, so that OpenVPN's messages name those.
class Renderer
{
public:
    bool render(const std::vector<Directive> &directives, std::string &error)
    {
        for (const Directive &directive : directives) {
            for (; m_line < directive.line; ++m_line) {
                m_text += '\n';
            }
            if (directive.isBlock()) {
                add("<" + directive.name() + ">\n");
                add(directive.block.value_or(""));
                if (!render(directive.inner, error)) {
                    return false;
                }
                add("</" + directive.name() + ">\n");
                continue;
            }
            std::string line = directive.optional ? "setenv opt" : "";
            for (const std::string &word : directive.words) {
                line += (line.empty() ? "" : " ") + quoteWord(word);
            }
            if (line.size() > kMaxOptionLine) {
                error = atLine(directive.line, "longer than the " + std::to_string(kMaxOptionLine) +
                                                   " characters that OpenVPN reads");
                return false;
            }
            add(line + "\n");
        }
        return true;
    }

    const std::string &text() const { return m_text; }

private:
    void add(const std::string &lines)
    {
        m_text += lines;
        m_line += static_cast<int>(std::count(lines.begin(), lines.end(), '\n'));
    }

    std::string m_text;
    int m_line = 1;
};

} // namespace

std::string atLine(int line, const std::string &reason)
{
    return "profile line " + std::to_string(line) + ": " + reason;
}

std::optional<std::vector<std::string>> splitOptionLine(std::string_view line, std::string &error)
{
    LineSplitter splitter;
    for (const char c : line) {
        if (splitter.isBetween() && (c == '#' || c == ';')) {
            break;
        }
        error = splitter.take(c);
        if (!error.empty()) {
            return std::nullopt;
        }
    }
    error = splitter.problemAtEnd();
    return error.empty() ? std::optional(splitter.words()) : std::nullopt;
}

std::optional<std::vector<Directive>> parseProfile(std::string_view text, std::string &error)
{
    if (text.find('\0') != std::string_view::npos) {
        error = "the profile is not a text file";
        return std::nullopt;
    }
    if (text.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0) {
        text.remove_prefix(kByteOrderMark.size());
    }
    std::vector<Directive> directives;
    if (!Parser(linesOf(text), 1).parse(directives, error)) {
        return std::nullopt;
    }
    if (directives.empty()) {
        error = "the profile is empty";
        return std::nullopt;
    }
    return directives;
}

std::string quoteWord(const std::string &word)
{
    constexpr std::string_view kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_./:,@%+=-";
    if (!word.empty() && word.find_first_not_of(kPlain) == std::string::npos) {
        return word;
    }
    std::string quoted = "\"";
    for (const char c : word) {
        if (c == '"' || c == '\\') {
            quoted += '\\';
        }
        quoted += c;
    }
    return quoted + '"';
}

std::optional<std::string> renderProfile(const std::vector<Directive> &directives, std::string &error)
{
    Renderer renderer;
    if (!renderer.render(directives, error)) {
        return std::nullopt;
    }
    return renderer.text();
}
