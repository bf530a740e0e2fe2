#include "controller/Korvan.h"

#include "account/ServerLists.h"
#include "base/Addresses.h"
#include "ui/KvNotice.h"
#include "ui_Korvan.h"

#include <QDebug>
#include <QDesktopServices>
#include <QMessageBox>
#include <QPointer>
#include <QUrl>

/// Tells on the page that stays why there are no servers, or only what is left of a profile, where that is so.
void Korvan::tellWhyNoServers()
{
    const bool portal = m_answer == ProfileAnswer::WebPage;
    QString text;
    switch (m_answer) {
    case ProfileAnswer::None:
        text = tr("There is no configuration any more.");
        break;
    case ProfileAnswer::WebPage:
        text = tr("A web page came in place of your configuration. Hotels, trains and cafés do that until you have "
                  "signed in to their network. Sign in there, then try again.");
        break;
    case ProfileAnswer::Outage:
        text = tr("The service is out of order at the moment. Please try again later.");
        break;
    case ProfileAnswer::Rejected:
        text = tr("The service did not accept your user name or password. Change the user and sign in again.");
        break;
    case ProfileAnswer::Damaged:
        text = tr("The configuration that came is damaged. Please try again later or contact Support at ") +
               QLatin1String(KORVAN_SUPPORT_EMAIL);
        break;
    case ProfileAnswer::Unstored:
        text = tr("The configuration that came could not be stored. Look whether the disk is full, then try again.");
        break;
    }
    if (m_answer == ProfileAnswer::None && (hasOpenVPNServers() || !hasLastProfile(m_userName))) {
        hideNotice();
        return;
    }
    qDebug().noquote() << "WARNING:" << text;
    if (m_notice == nullptr) {
        m_notice = new KvNotice(m_form->centralwidget, m_form->pageLogin);
        // A page without encryption: the network puts its own in place of it.
        connect(m_notice, &KvNotice::portalWanted, this,
                [] { QDesktopServices::openUrl(QUrl(QStringLiteral(KORVAN_SITE_URL))); });
        connect(m_notice, &KvNotice::lastProfileWanted, this, &Korvan::onLastProfile);
    }
    m_notice->tell(text, portal, hasLastProfile(m_userName));
}

void Korvan::hideNotice()
{
    if (m_notice != nullptr) {
        m_notice->hide();
    }
}

void Korvan::onLastProfile()
{
    if (isProfileInUse()) {
        return;
    }
    const QPointer<Korvan> self(this);
    hideNotice();
    m_bundleInWork = true;
    const bool done = useLastProfile();
    if (self.isNull()) {
        return;
    }
    m_bundleInWork = false;
    m_answer = ProfileAnswer::None;
    if (!done) {
        QMessageBox::critical(this, tr("Error"), tr("The last configuration can not be put back."));
        return;
    }
    m_form->stack->setCurrentWidget(m_form->pageMain);
    finishLogin();
}
