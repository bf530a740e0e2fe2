#include "controller/Korvan.h"

#include "account/Proxy.h"
#include "ui_Korvan.h"

void Korvan::showProxy(const ProxySettings &proxy)
{
    m_form->rbNone->setChecked(proxy.none);
    m_form->rbHttp->setChecked(proxy.http);
    m_form->rbSocks->setChecked(proxy.socks);
    m_form->edProxyAddr->setText(proxy.address);
    m_form->edProxyPort->setText(proxy.port);
    m_form->cbProxyAuth->setChecked(proxy.authenticated);
    m_form->edProxyUser->setText(proxy.user);
    m_form->edProxyPass->setText(proxy.password);
}

ProxySettings Korvan::shownProxy() const
{
    return {m_form->rbNone->isChecked(), m_form->rbHttp->isChecked(), m_form->rbSocks->isChecked(),
            m_form->edProxyAddr->text(), m_form->edProxyPort->text(), m_form->cbProxyAuth->isChecked(),
            m_form->edProxyUser->text(), m_form->edProxyPass->text()};
}

QString Korvan::proxyAuthPath()
{
    const ProxySettings proxy = shownProxy();
    return proxy.authenticated ? writeProxyCredentials(proxy) : QString();
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
    const ProxySettings proxy = shownProxy();
    if (proxy.none) {
        enable(false, false, false);
    }
    if (proxy.http) {
        enable(true, true, proxy.authenticated);
    }
    if (proxy.socks) {
        enable(true, false, false);
    }
}

void Korvan::updateLocalNetworkProxy()
{
    QNetworkProxy::setApplicationProxy(networkProxy(shownProxy()));
}
