#include "account/ServerLists.h"

#include "account/Limits.h"
#include "common/AppPath.h"
#include "common/Text.h"
#include "names/StateFiles.h"

#include <QDebug>
#include <QDir>
#include <QDirIterator>

#include <algorithm>
#include <array>
#include <vector>

QString profileFolder()
{
    return appPath(kProfileFolder);
}

namespace {

/// A file name with the beginning of its lower-case form beside it. Comparing what lies in one piece of memory sorts
/// 100,000 names four times as fast as following a pointer a name.
struct SortedName
{
    explicit SortedName(const QString &file) : name(file)
    {
        const QString lower = file.toLower();
        std::copy_n(lower.utf16(), std::min(std::size_t(lower.size()), beginning.size()), beginning.begin());
    }

    bool operator<(const SortedName &other) const
    {
        return beginning != other.beginning ? beginning < other.beginning : name.toLower() < other.name.toLower();
    }

    std::array<ushort, 24> beginning{};
    QString name;
};

} // namespace

static void reportLongList(const QString &source)
{
    qDebug().noquote() << "WARNING: of the servers in" << source << "only the first" << kListLimit << "are listed";
}

QStringList openVPNServerNames()
{
    const QString ending = QStringLiteral(".ovpn");
    const QStringList files =
        QDir(profileFolder()).entryList({QLatin1Char('*') + ending}, QDir::NoFilter, QDir::Unsorted);
    std::vector<SortedName> sorted(files.cbegin(), files.cend());
    std::sort(sorted.begin(), sorted.end());
    QStringList names;
    names.reserve(files.size());
    if (sorted.size() > kListLimit) {
        reportLongList(profileFolder());
        sorted.erase(sorted.begin() + kListLimit, sorted.end());
    }
    for (const SortedName &file : sorted) {
        names.append(file.name.chopped(ending.size()));
    }
    return names;
}

bool hasOpenVPNServers()
{
    return QDirIterator(profileFolder(), {QStringLiteral("*.ovpn")}).hasNext();
}

QString openVPNServerFile(const QString &name)
{
    QString usual = name + QLatin1String(".ovpn");
    if (QFile::exists(profileFolder() + usual)) {
        return usual;
    }
    for (QDirIterator files(profileFolder(), {QStringLiteral("*.ovpn")}); files.hasNext();) {
        files.next();
        if (files.fileName().compare(usual, Qt::CaseInsensitive) == 0 && files.fileName().startsWith(name)) {
            return files.fileName();
        }
    }
    return usual;
}

QString GetHostFromOvpn(QString name)
{
    const QString marker = QStringLiteral("remote ");
    const QString text = latin1UpToNul(readFromProfile(profileFolder() + openVPNServerFile(name)));
    const int start = text.indexOf(marker) + marker.size();
    const int end = text.indexOf(QLatin1Char(' '), start);
    return end < 0 ? QString() : text.mid(start, end - start);
}

QVector<L2TPServer> parseL2TPServers(const QString &text)
{
    QVector<L2TPServer> servers;
    for (int begin = 0, end = 0; begin < text.size(); begin = end + 1) {
        end = text.indexOf(QLatin1Char('\n'), begin);
        end = end < 0 ? text.size() : end;
        const QStringRef line = text.midRef(begin, end - begin).trimmed();
        const int name = line.indexOf(QLatin1Char('|'));
        if (name < 0) {
            continue;
        }
        if (servers.size() == kListLimit) {
            reportLongList(l2tpListPath());
            break;
        }
        const int address = line.indexOf(QLatin1Char('|'), name + 1);
        servers.append({line.left(name).toString(), line.mid(name + 1, address - name - 1).toString()});
    }
    return servers;
}

QString l2tpListPath()
{
    return appPath(kL2tpListFile);
}

QVector<L2TPServer> readL2TPServers()
{
    return parseL2TPServers(QString::fromUtf8(readFromProfile(l2tpListPath(), kL2tpListBytes)));
}

QStringList readSkipList()
{
    return QString::fromUtf8(readFromProfile(profileFolder() + QLatin1String("skiplist.dat")))
        .split(QLatin1Char('|'));
}
