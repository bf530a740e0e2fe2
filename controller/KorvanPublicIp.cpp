#include "controller/Korvan.h"

#include "account/Limits.h"
#include "account/PublicIp.h"
#include "account/ServiceRequest.h"
#include "account/WebPage.h"
#include "base/Addresses.h"
#include "ui_Korvan.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>

void Korvan::updateCountryFromIP()
{
    // Not waited for in place: a request that the tunnel's new routes cut off would hold up the wait of onConnect()
    // below it. Only the newest counts, because an older answer tells the address before the change.
    delete m_publicIpRequest;
    m_publicIpRequest = new QNetworkAccessManager(this);
    QNetworkReply *reply = m_publicIpRequest->get(plainRequest(QStringLiteral(KORVAN_IP_TEST_URL)));
    limitReply(*reply, kPageLimit);
    connect(reply, &QNetworkReply::finished, this, [this, reply] {
        const PublicIp ip = cutIpPage(wholeBody(*reply));
        m_form->lbPublicIP->setText(shownText(ip.address));
        m_form->lbCountry->setText(shownText(ip.country));
        m_publicIpRequest->deleteLater();
        m_publicIpRequest = nullptr;
    });
}
