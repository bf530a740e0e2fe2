#pragma once

#include "vpn/VPNAgent.h"
#include "vpn/VPNClient.h"

#include <QStringList>
#include <QTimer>

/// A client that keeps what it reported, and whose parts a test may set.
class TestClient : public VPNClient
{
public:
    TestClient()
    {
        connect(this, &VPNClient::message, this, [this](const QString &text) { messages << text; });
        connect(this, &VPNClient::stateChanged, this, [this](int s) { states << QString::number(s); });
    }
    ~TestClient() override
    {
        close(); // which delivers what is still on its way
        disconnect();
    }

    using VPNClient::m_agent;
    using VPNClient::m_option;
    using VPNClient::m_process;
    using VPNClient::m_timeout;

    bool openWith(int type, const QString &config = {}, const QString &user = {}, const QString &password = {},
                  const QString &params = {})
    {
        return open({static_cast<TYPE>(type), user, password, config, params, -1, {}, {}, {}});
    }
    QStringList errors() const { return messages.filter(QStringLiteral("[ERROR]")); }
    QString counts()
    {
        quint64 received = 0;
        quint64 sent = 0;
        byteCount(received, sent);
        return QStringLiteral("%1/%2").arg(received).arg(sent);
    }

    QStringList messages;
    QStringList states;
};
