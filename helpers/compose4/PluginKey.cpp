#include "helpers/compose4/PluginKey.h"

#include "helpers/system/Descriptor.h"

#include <fcntl.h>
#include <openssl/evp.h>
#include <unistd.h>
#include <vector>

static const char *const kFile = "/etc/ipsec.d/ipsec.nm-l2tp.secrets";

static std::string base64(const std::string &text)
{
    std::vector<unsigned char> code((text.size() + 2) / 3 * 4 + 1);
    const int size = EVP_EncodeBlock(code.data(), reinterpret_cast<const unsigned char *>(text.data()),
                                     static_cast<int>(text.size()));
    return {code.begin(), code.begin() + size};
}

bool isPluginKey(const std::string &secrets, const std::string &psk)
{
    // A key that is in Base64 already is taken over.
    const std::string code = psk.compare(0, 2, "0s") == 0 ? psk : "0s" + base64(psk);
    return !psk.empty() && (secrets + "\n").find(": PSK " + code + "\n") != std::string::npos;
}

void forgetPluginKey(const std::string &psk)
{
    if (geteuid() != 0) {
        return;
    }
    const Descriptor file(open(kFile, O_RDONLY | O_CLOEXEC));
    std::string secrets;
    if (file >= 0 && readAll(file, secrets) && isPluginKey(secrets, psk)) {
        unlink(kFile);
    }
}
