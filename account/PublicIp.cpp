#include "account/PublicIp.h"

/// QByteArray::mid() takes everything to the end for a negative length.
static QString cut(const QByteArray &page, int start, int end)
{
    return QString::fromUtf8(page.mid(start, end - start));
}

PublicIp cutIpPage(const QByteArray &page)
{
    const int country = page.indexOf("in ") + 3;
    const int address = page.lastIndexOf(": ") + 2;
    return {cut(page, address, page.indexOf("</h")), cut(page, country, page.indexOf("? ", country))};
}
