#include "account/Updates.h"

#include "account/Limits.h"
#include "base/Addresses.h"
#include "common/AppPath.h"
#include "common/StateFile.h"
#include "common/Text.h"
#include "names/StateFiles.h"

#include <QCoreApplication>

#include <limits>

QString UPDATE_URL = QStringLiteral(KORVAN_UPDATE_URL);

/// Finds a text from ever later positions of a page. It remembers what it found, so that walking a whole page of
/// hostile entries costs one pass.
class ForwardSearch
{
public:
    ForwardSearch(const QByteArray &page, const QByteArray &text) : m_page(page), m_text(text) {}

    /// The first position at or after `from`, which never goes back; the page's size when there is none.
    int at(int from)
    {
        if (m_found < from) {
            m_found = m_page.indexOf(m_text, from);
            m_found = m_found < 0 ? m_page.size() : m_found;
        }
        return m_found;
    }

private:
    const QByteArray &m_page;
    const QByteArray m_text;
    int m_found = -1;
};

static QString element(const QString &entry, const QString &name)
{
    const QString open = QLatin1Char('<') + name + QLatin1Char('>');
    return entry.contains(open) ? GetStringBetween(entry, open, QLatin1String("</") + name + QLatin1Char('>'))
                                : QString();
}

UpdateDescription readUpdateDescription(const QByteArray &page)
{
    const QByteArray open = "<update>";
    const QByteArray system = "<system>macos</system>";
    ForwardSearch opens(page, open);
    ForwardSearch closes(page, "</update>");
    ForwardSearch zeros(page, QByteArray(1, '\0'));
    ForwardSearch systems(page, system);
    UpdateDescription description;
    for (int start = opens.at(0); start < page.size(); start = opens.at(start)) {
        description.hasEntries = true;
        start += open.size();
        const int end = closes.at(start);
        if (end < page.size() && end < zeros.at(start) && systems.at(start) + system.size() <= end) {
            const QString entry = QString::fromLatin1(page.mid(start, end - start));
            description.version = element(entry, QStringLiteral("version")).left(kVersionLimit);
            description.url = element(entry, QStringLiteral("url")).left(kAddressLimit);
            description.signature = element(entry, QStringLiteral("signature")).left(kAddressLimit).trimmed();
            description.message = shownText(element(entry, QStringLiteral("message")));
            break;
        }
    }
    return description;
}

QString whyNoArchive(int status, const QByteArray &body)
{
    constexpr int httpOk = 200;
    if (status != httpOk) {
        return QStringLiteral("the answer has the status %1").arg(status);
    }
    return body.startsWith("PK\3\4") ? QString() : QStringLiteral("the answer is no archive");
}

std::optional<QDateTime> nextRefresh(int choice, const QDateTime &stored, const QDateTime &now)
{
    constexpr qint64 dayMs = 86400000;
    constexpr qint64 intervals[] = {0, dayMs, 7 * dayMs, 30 * dayMs};
    switch (choice) {
    case 0:
        return now;
    case 1:
    case 2:
    case 3: {
        const QDateTime next = now.addMSecs(intervals[choice]);
        return next < stored || now >= stored ? next : stored;
    }
    case 4: {
        // Unsigned arithmetic wraps where signed overflow would be undefined.
        constexpr auto largest = static_cast<quint64>(std::numeric_limits<qint64>::max());
        const auto sum = static_cast<quint64>(now.toMSecsSinceEpoch()) + largest;
        return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(sum));
    }
    default:
        return std::nullopt;
    }
}

static QString refreshPath()
{
    return appPath(kRefreshFile);
}

bool writeNextRefresh(const QDateTime &time)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(kStreamVersion);
    stream << time;
    return writeWhole(refreshPath(), bytes);
}

QDateTime readNextRefresh()
{
    QDataStream stream(readWhole(refreshPath()));
    stream.setVersion(kStreamVersion);
    QDateTime time;
    stream >> time;
    return stream.status() == QDataStream::Ok ? time : QDateTime();
}
