#include "platform/DesktopColours.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>

static constexpr int kAnswerLimitMs = 200;
static constexpr uint kDark = 1; // 2 is light, 0 no preference

static const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
static const QString kObject = QStringLiteral("/org/freedesktop/portal/desktop");
static const QString kSettings = QStringLiteral("org.freedesktop.portal.Settings");
static const QString kGroup = QStringLiteral("org.freedesktop.appearance");
static const QString kKey = QStringLiteral("color-scheme");

/// The portal wraps its answer once more than its signal.
static std::optional<bool> isDark(QVariant value)
{
    while (value.userType() == qMetaTypeId<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    bool isNumber = false;
    const uint scheme = value.toUInt(&isNumber);
    return isNumber && scheme != 0 ? std::optional(scheme == kDark) : std::nullopt;
}

DesktopColours::DesktopColours(QObject *parent) : QObject(parent)
{
    // Without the address Qt would look for a bus by ways that a root process must not take.
    if (!qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS")) {
        return;
    }
    QDBusConnection bus = QDBusConnection::sessionBus();
    QDBusMessage question = QDBusMessage::createMethodCall(kService, kObject, kSettings, QStringLiteral("Read"));
    question.setArguments({kGroup, kKey});
    question.setAutoStartService(false); // a desktop that uses it has started it
    const QDBusMessage answer = bus.call(question, QDBus::Block, kAnswerLimitMs);
    if (answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty()) {
        m_dark = isDark(answer.arguments().constFirst());
    }
    bus.connect(kService, kObject, kSettings, QStringLiteral("SettingChanged"), this,
                SLOT(onSetting(QString, QString, QDBusVariant)));
}

void DesktopColours::onSetting(const QString &group, const QString &key, const QDBusVariant &value)
{
    if (group == kGroup && key == kKey) {
        m_dark = isDark(value.variant());
        emit changed();
    }
}
