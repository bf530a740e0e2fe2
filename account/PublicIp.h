#pragma once

#include <QByteArray>
#include <QString>

/// Where the machine is seen on the internet.
struct PublicIp
{
    QString address;
    QString country;
};

/// Cuts the IP test page: the country stands between the first "in " and the "? " after it, the address between the
/// last ": " and the page's first "</h". A start that is missing counts as position -1; a missing end, or one before
/// the start, takes everything to the end of the page.
PublicIp cutIpPage(const QByteArray &page);
