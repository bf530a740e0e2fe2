#include "helpers/compose9/Signature.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <openssl/evp.h>
#include <sstream>
#include <vector>

using Context = std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)>;
using Key = std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)>;

constexpr size_t kHeadSize = 2 + 8; // two letters that name the algorithm, and the key's own number
constexpr size_t kKeySize = 32;
constexpr size_t kSignatureSize = 64;

/// What Base64 stands for; empty unless it is exactly `size` bytes.
static std::string decoded(const std::string &text, size_t size)
{
    std::string bytes(text.size(), '\0');
    const size_t padding = text.size() - std::min(text.size(), text.find_last_not_of('=') + 1);
    const int length =
        text.size() % 4 != 0 || text.size() > 4 * kSignatureSize
            ? -1
            : EVP_DecodeBlock(reinterpret_cast<unsigned char *>(bytes.data()),
                              reinterpret_cast<const unsigned char *>(text.data()), static_cast<int>(text.size()));
    const bool fits = length >= 0 && padding <= 2 && static_cast<size_t>(length) == size + padding;
    return fits ? bytes.substr(0, size) : std::string();
}

static const unsigned char *raw(const std::string &bytes)
{
    return reinterpret_cast<const unsigned char *>(bytes.data());
}

static std::string blake2b(const std::string &bytes)
{
    std::string digest(kSignatureSize, '\0');
    const bool done = EVP_Digest(bytes.data(), bytes.size(), reinterpret_cast<unsigned char *>(digest.data()),
                                 nullptr, EVP_blake2b512(), nullptr) == 1;
    return done ? digest : std::string();
}

static bool verifies(const std::string &key, const std::string &signature, const std::string &message)
{
    const Key publicKey(EVP_PKEY_new_raw_public_key(EVP_PKEY_ED25519, nullptr, raw(key), key.size()), &EVP_PKEY_free);
    const Context context(EVP_MD_CTX_new(), &EVP_MD_CTX_free);
    return publicKey && context && !message.empty() &&
           EVP_DigestVerifyInit(context.get(), nullptr, nullptr, nullptr, publicKey.get()) == 1 &&
           EVP_DigestVerify(context.get(), raw(signature), signature.size(), raw(message), message.size()) == 1;
}

/// The key of that number; empty when it is none of ours.
static std::string findKey(const std::string &keys, const std::string &number)
{
    std::istringstream words(keys);
    for (std::string word; words >> word;) {
        const std::string bytes = decoded(word, kHeadSize + kKeySize);
        if (!bytes.empty() && bytes.compare(0, 2, "Ed") == 0 && bytes.compare(2, number.size(), number) == 0) {
            return bytes.substr(kHeadSize);
        }
    }
    return {};
}

/// The lines of a text, without the ends that other systems give them.
static std::vector<std::string> linesOf(const std::string &text)
{
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        line.erase(line.find_last_not_of("\r \t") + 1);
        if (!line.empty()) {
            lines.push_back(line);
        }
    }
    return lines;
}

SignedUpdate checkSignature(const std::string &keys, const std::string &archive, const std::string &signature)
{
    const std::string trusted = "trusted comment: ";
    const std::string product = "Korvan ";
    const std::vector<std::string> lines = linesOf(signature);
    if (lines.empty()) {
        return {{}, "it is not signed"};
    }
    const std::string signedBytes = lines.size() == 4 ? decoded(lines.at(1), kHeadSize + kSignatureSize) : "";
    const std::string signedComment = lines.size() == 4 ? decoded(lines.at(3), kSignatureSize) : "";
    if (signedBytes.empty() || signedComment.empty() || lines.at(2).compare(0, trusted.size(), trusted) != 0 ||
        signedBytes.compare(0, 2, "ED") != 0) {
        return {{}, "its signature is damaged"};
    }
    const std::string key = findKey(keys, signedBytes.substr(2, kHeadSize - 2));
    if (key.empty()) {
        return {{}, "it is signed with a key that this program does not know"};
    }
    const std::string own = signedBytes.substr(kHeadSize);
    const std::string comment = lines.at(2).substr(trusted.size());
    if (!verifies(key, own, blake2b(archive)) || !verifies(key, signedComment, own + comment)) {
        return {{}, "its signature is not right"};
    }
    const std::string version =
        comment.compare(0, product.size(), product) == 0 ? comment.substr(product.size()) : "";
    if (version.empty() || version.find_first_not_of("0123456789.abcdefghijklmnopqrstuvwxyz") != std::string::npos) {
        return {{}, "it is signed for another program"};
    }
    return {version, {}};
}

bool isOlder(const std::string &version, const std::string &other)
{
    const char *left = version.c_str();
    const char *right = other.c_str();
    while (*left || *right) {
        char *leftEnd = nullptr;
        char *rightEnd = nullptr;
        const unsigned long leftNumber = std::strtoul(left, &leftEnd, 10);
        const unsigned long rightNumber = std::strtoul(right, &rightEnd, 10);
        if (leftNumber != rightNumber) {
            return leftNumber < rightNumber;
        }
        const auto next = [](const char *end) {
            while (*end && *end != '.') {
                ++end;
            }
            return *end ? end + 1 : end;
        };
        left = next(leftEnd);
        right = next(rightEnd);
    }
    return false;
}
