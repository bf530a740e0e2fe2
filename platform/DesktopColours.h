#pragma once

#include <QObject>

#include <optional>

class QDBusVariant;

/// Whether the person wants dark windows, as the desktop's settings portal on the session bus tells it.
class DesktopColours : public QObject
{
    Q_OBJECT

public:
    /// Asks the portal, for 200 ms at most, and listens to it from then on.
    explicit DesktopColours(QObject *parent = nullptr);

    /// The preference now; nothing where no portal tells any.
    std::optional<bool> prefersDark() const { return m_dark; }

signals:
    void changed();

private slots:
    void onSetting(const QString &group, const QString &key, const QDBusVariant &value);

private:
    std::optional<bool> m_dark;
};
