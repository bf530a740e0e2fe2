#include "controller/Korvan.h"

#include "account/Proxy.h"
#include "ui_Korvan.h"

QString Korvan::proxyAuthPath()
{
    if (!m_form->cbProxyAuth->isChecked()) {
        return {};
    }
    return writeProxyCredentials(m_form->edProxyUser->text(), m_form->edProxyPass->text());
}

void Korvan::updateProxyState()
{
    const auto enable = [this](bool address, bool authentication, bool credentials) {
        m_form->edProxyAddr->setEnabled(address);
        m_form->edProxyPort->setEnabled(address);
        m_form->cbProxyAuth->setEnabled(authentication);
        m_form->edProxyUser->setEnabled(credentials);
        m_form->edProxyPass->setEnabled(credentials);
    };
    if (m_form->rbNone->isChecked()) {
        enable(false, false, false);
    }
    if (m_form->rbHttp->isChecked()) {
        enable(true, true, m_form->cbProxyAuth->isChecked());
    }
    if (m_form->rbSocks->isChecked()) {
        enable(true, false, false);
    }
}

void Korvan::updateLocalNetworkProxy()
{
    const ProxyKind kind = m_form->rbHttp->isChecked()    ? ProxyKind::Http
                           : m_form->rbSocks->isChecked() ? ProxyKind::Socks
                                                          : ProxyKind::None;
    QNetworkProxy::setApplicationProxy(networkProxy(kind, m_form->edProxyAddr->text(), m_form->edProxyPort->text(),
                                                    m_form->edProxyUser->text(), m_form->edProxyPass->text()));
}
