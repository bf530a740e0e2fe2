#include "common/Digest.h"

#include <QCryptographicHash>

#include <cstring>

char ENCODE_KEY[17] = "Tq r,zmH7XeP3Wak";

static constexpr int kKeyLength = 16;

/// 256 distinct codes of two printable characters; the code of byte v stands at 2v. Stored logins depend on it.
static const char ENCODE_MAP[] = "@(].OEc; `nmn:oc(iX5KygqYJ}=j}qritgk7 @#>=fxm4s9iA(%MdlwNFv1*oR)"
                                 "6sVh_Z8%0ppv8v]-:c`Th4}.0u>oRmRqE#o<Jjm8^]xw{-8)-3zU~0)q /6`XQ<v"
                                 "zK#z p`2*;+_GG7o-ceC*~a`C-n6r),!t ]}y<=wkpV}ZvJIz6=*m<pcK%8y1Cb1"
                                 "$/qa}}P_'IuTUgQ@P#f^2-Trj,:-&r8pBwzSNPN oG%Q&Ii<XP]F_n^UI5)m/Rc$"
                                 "@^T2; Vn]X#.GL,B2~;)=jHX>qvE;ubNu1mjOyn8B%7: @RB:jE]Vqvy.^/+_@Zf"
                                 "ZyYp[@%A_chBk(&C)QFPM 6mI~pAq-0/$Lb,3QF{neATxlr;<0py3f^aNs`R0Fy1"
                                 "-}O:M7r8NZ}'NCUElyHL)p&eb&wn5+&hsNl_b4Yip_xC%TEjgEJAS6lqmYosF-[."
                                 "1c;C&=&>PAx/+gDJ&9!TA/G6o=^}()oQ4<7+Wf49&A)Xw35nv&7iEMIQRc#N*(X`";
static_assert(sizeof ENCODE_MAP == 2 * 256 + 1, "one code a byte value");

static bool keyIsUsable()
{
    return strnlen(ENCODE_KEY, sizeof ENCODE_KEY) == kKeyLength;
}

/// The byte value whose code is the pair at `pair`, or 256.
static int valueOfCode(const char *pair)
{
    int value = 0;
    while (value < 256 && std::memcmp(ENCODE_MAP + 2 * value, pair, 2) != 0) {
        ++value;
    }
    return value;
}

QString md5(const QString &text)
{
    return QString::fromLatin1(QCryptographicHash::hash(text.toLocal8Bit(), QCryptographicHash::Md5).toHex());
}

int simple_encode(const char *input, char *output)
{
    if (!keyIsUsable()) {
        return -2;
    }
    int written = 0;
    for (int k = 0; *input != '\0'; ++input, k = (k + 1) % kKeyLength) {
        const auto value = static_cast<unsigned char>(*input ^ ENCODE_KEY[k]);
        output[written++] = ENCODE_MAP[2 * value];
        output[written++] = ENCODE_MAP[2 * value + 1];
    }
    output[written] = '\0';
    return written;
}

int simple_decode(const char *input, char *output)
{
    if (!keyIsUsable()) {
        return -3;
    }
    if (std::strlen(input) % 2 != 0) {
        return -4;
    }
    int k = 0;
    for (; *input != '\0'; input += 2, k = (k + 1) % kKeyLength) {
        *output++ = static_cast<char>(ENCODE_KEY[k] ^ valueOfCode(input));
    }
    return k;
}
