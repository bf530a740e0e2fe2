#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// The folder of the unpacked profile, with a slash at its end.
QString profileFolder();

/// The display names of the OpenVPN servers: the profile's files "*.ovpn" without their ending, sorted by name.
/// Letter case counts neither for the ending nor for the order.
QStringList openVPNServerNames();

/// Whether the profile holds any OpenVPN server.
bool hasOpenVPNServers();

/// The name of an OpenVPN server's file, whose ending may be in any letter case; "NAME.ovpn" where there is none.
QString openVPNServerFile(const QString &name);

/// The host of an OpenVPN server: the text after the first "remote " in its file, comments included, up to the next
/// blank. Empty when the file can not be read or no blank follows. In a file without "remote " the search for the
/// blank starts at position 6.
QString GetHostFromOvpn(QString name);

/// A server of the L2TP list.
struct L2TPServer
{
    QString name;
    QString address; ///< host name or IP address
};

/// The servers of an L2TP list: one a line, "NAME|ADDRESS", further fields ignored. Lines with fewer fields are left
/// out.
QVector<L2TPServer> parseL2TPServers(const QString &text);

/// The path of the L2TP list that belongs to the profile.
QString l2tpListPath();

/// The servers of "/cfg/L2TP.txt"; none when it can not be read.
QVector<L2TPServer> readL2TPServers();

/// The server names in "/cfg/OpenVPN/skiplist.dat", which separates them by "|".
QStringList readSkipList();
