#include "lab/service/Account.h"

#include "lab/service/Archives.h"

#include <archive.h>
#include <archive_entry.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <memory>
#include <vector>

namespace {

std::string percentEncoded(const std::string &value)
{
    static const char digits[] = "0123456789ABCDEF";
    static const std::string unreserved = "-._~";
    std::string encoded;
    for (const char c : value) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte < 0x80 && std::isalnum(byte)) || unreserved.find(c) != std::string::npos) {
            encoded += c;
        } else {
            encoded += '%';
            encoded += digits[byte >> 4];
            encoded += digits[byte & 15];
        }
    }
    return encoded;
}

/// Decodes whatever is in percent form and leaves the rest, so that a wrong encoding shows up when encoded again.
std::string percentDecoded(const std::string &text)
{
    std::string value;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%' && i + 2 < text.size() && std::isxdigit(static_cast<unsigned char>(text[i + 1])) &&
            std::isxdigit(static_cast<unsigned char>(text[i + 2]))) {
            value += static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16));
            i += 2;
        } else {
            value += text[i];
        }
    }
    return value;
}

la_ssize_t appendTo(archive *, void *target, const void *bytes, std::size_t length)
{
    static_cast<std::string *>(target)->append(static_cast<const char *>(bytes), length);
    return static_cast<la_ssize_t>(length);
}

void addFile(archive *zip, const std::string &name, const std::string &bytes)
{
    const std::unique_ptr<archive_entry, decltype(&archive_entry_free)> entry(archive_entry_new(),
                                                                              archive_entry_free);
    archive_entry_set_pathname(entry.get(), name.c_str());
    archive_entry_set_filetype(entry.get(), AE_IFREG);
    archive_entry_set_perm(entry.get(), 0600);
    archive_entry_set_size(entry.get(), static_cast<la_int64_t>(bytes.size()));
    archive_write_header(zip, entry.get());
    archive_write_data(zip, bytes.data(), bytes.size());
}

} // namespace

std::optional<Login> parseLoginForm(const std::string &body)
{
    static const std::string first = "username=";
    static const std::string second = "&password=";
    const std::size_t border = body.find(second);
    if (body.compare(0, first.size(), first) != 0 || border == std::string::npos) {
        return std::nullopt;
    }
    Login login{percentDecoded(body.substr(first.size(), border - first.size())),
                percentDecoded(body.substr(border + second.size()))};
    if (first + percentEncoded(login.user) + second + percentEncoded(login.password) != body) {
        return std::nullopt;
    }
    return login;
}

bool isSubscriber(const Accounts &accounts, const Login &login)
{
    std::ifstream file(accounts.users);
    for (std::string line; std::getline(file, line);) {
        if (line == login.user + '\t' + login.password) {
            return true;
        }
    }
    return false;
}

std::string profileArchive(const Accounts &accounts, const std::string &user)
{
    // The name came from outside: it names one folder, never a path.
    const std::filesystem::path folder = std::filesystem::path(accounts.profiles) / user;
    std::error_code failure;
    if (user.find('/') != std::string::npos || user == ".." || !std::filesystem::is_directory(folder, failure)) {
        return {};
    }
    std::vector<std::filesystem::path> files{std::filesystem::directory_iterator(folder, failure), {}};
    std::sort(files.begin(), files.end());

    std::string bytes;
    const std::unique_ptr<archive, decltype(&archive_write_free)> zip(archive_write_new(), archive_write_free);
    archive_write_set_format_zip(zip.get());
    archive_write_set_bytes_in_last_block(zip.get(), 1);
    archive_write_open(zip.get(), &bytes, nullptr, appendTo, nullptr);
    for (const std::filesystem::path &file : files) {
        addFile(zip.get(), file.filename().string(), fileBytes(file));
    }
    archive_write_close(zip.get());
    return bytes;
}
