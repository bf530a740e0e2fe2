#include "controller/Korvan.h"

#include "account/Certificate.h"
#include "account/Limits.h"
#include "account/Login.h"
#include "account/SavedLogin.h"
#include "account/ServerLists.h"
#include "base/Addresses.h"
#include "base/Settings.h"
#include "common/Text.h"
#include "controller/Box.h"
#include "ui/KvUnaskedBox.h"
#include "ui/PlainText.h"
#include "ui_Korvan.h"

#include <QDebug>
#include <QFile>
#include <QMessageBox>
#include <QPointer>

bool Korvan::loginKorvan(QString user, QString password, QByteArray &body)
{
    if (!isUserName(user)) {
        return false;
    }
    const QPointer<Korvan> self(this);
    const LoginAnswer answer = postLogin(loginBody(user, password));
    if (self.isNull()) {
        return false;
    }
    body = answer.body;
    m_refusal = answer.refusal;
    m_answer = profileAnswer(answer.status, body);
    qDebug("Get Data: %d", body.size());
    if (getSetting(QStringLiteral("DEBUG/ENABLE")) == QLatin1String("true")) {
        QMessageBox::information(this, tr("Debug"),
                                 plainText(QLatin1String("Result: ") + shownText(latin1UpToNul(body))));
    }
    switch (classifyLogin(answer)) {
    case LoginReply::NoAnswer:
        qDebug("WARNING: can not get reply from server, time out.");
        return true;
    case LoginReply::Rejected:
        return false;
    case LoginReply::Profile:
        qDebug("SUCCESS: download %d bytes user profile to local.", body.size());
        return true;
    case LoginReply::Malformed:
        break;
    }
    qDebug("WARNING: the data is not in correct format, the login might fail.");
    return true;
}

void Korvan::onLogin()
{
    if (m_bundleInWork) {
        return; // the wait for the service delivers clicks on the other login button
    }
    m_form->pbLogin->setEnabled(false);
    m_form->lbSignInHint->setText(tr("Use the name and password of your subscription."));
    m_answer = ProfileAnswer::None;
    hideNotice();
    showInServerBox(tr("Getting files from server ..."));
    bool isAccepted = false; // neither what is on the disk nor an answer that is no profile confirms a login
    if (sender() == m_form->pbExist) {
        qDebug("Use existing cert files.");
    } else {
        m_userName = m_form->edUser->text();
        m_password = m_form->edPass->text();
        if (!profileIsUsable() && !fetchProfile(isAccepted)) {
            return;
        }
    }
    if (isAccepted) {
        rememberLogin();
    }
    finishLogin();
}

bool Korvan::profileIsUsable()
{
    return QFile::exists(savedLoginPath()) && hasOpenVPNServers() && QFile::exists(certificatePath(m_userName)) &&
           !isCrtExpired();
}

bool Korvan::fetchProfile(bool &isAccepted)
{
    const QPointer<Korvan> self(this);
    QByteArray profile;
    m_bundleInWork = true;
    const bool accepted = loginKorvan(m_userName, m_password, profile);
    if (self.isNull()) {
        return false;
    }
    m_bundleInWork = false;
    if (!accepted) {
        KvUnaskedBox::tell(this, QMessageBox::Critical, tr("Error"), tr("Invalid username or password."));
        QTimer::singleShot(0, this, &Korvan::onChangeUser);
        m_form->pbLogin->setEnabled(true);
        return false;
    }
    showInServerBox(tr("Updating Configuration ..."));
    m_form->cmProto->setEnabled(false);
    if (profile.isEmpty()) {
        return fallBackToOldProfile();
    }
    if (!installProfile(profile)) {
        return false;
    }
    isAccepted = m_answer == ProfileAnswer::None;
    return true;
}

bool Korvan::fallBackToOldProfile()
{
    if (hasOpenVPNServers()) {
        KvUnaskedBox::tell(nullptr, QMessageBox::Warning, tr("Warning"),
                           joined(tr("Update of new configuration failed.\nPlease try again later.\n"
                                     "Korvan-GUI will use existing keys and configurations."),
                                  m_refusal));
        m_answer = ProfileAnswer::None; // the profile is as it was
        return true;
    }
    KvUnaskedBox::tell(nullptr, QMessageBox::Warning, tr("Warning"),
                       joined(tr("Retrieval of configuration and keys failed.\n"
                                 "Please try again later or contact Support at ") +
                                  QLatin1String(KORVAN_SUPPORT_EMAIL),
                              m_refusal));
    onChangeUser();
    m_form->pbLogin->setEnabled(true);
    if (m_answer != ProfileAnswer::WebPage) {
        m_answer = ProfileAnswer::None; // nothing came that could be damaged
    }
    tellWhyNoServers();
    return false;
}

bool Korvan::installProfile(const QByteArray &profile)
{
    const QPointer<Korvan> self(this);
    m_bundleInWork = true;
    releaseCompressedConfig(profile);
    if (self.isNull()) {
        return false;
    }
    updateRefresh(true);
    m_bundleInWork = false;
    return true;
}

void Korvan::finishLogin()
{
    m_form->pbLogin->setEnabled(true);
    showBootHint();
    updateOpenVPNServerList();
    showExpiry();
    selectBootServer();
    if (m_form->cbConnectOnBoot->isChecked()) {
        QTimer::singleShot(0, this, &Korvan::onConnect);
    }
    setStatus(STATUS_READY); // selects the stored protocol
    if (m_form->cmProto->currentText() == QLatin1String("L2TP")) {
        updateL2TPServerList();
        selectBootServer();
    }
    tellWhyNoServers();
}

void Korvan::selectBootServer()
{
    const QSignalBlocker quiet(m_form->cmBootServer); // nobody has changed the option
    const int bootServer = m_form->cmBootServer->findText(m_bootServer);
    if (bootServer >= 0) {
        m_form->cmBootServer->setCurrentIndex(bootServer);
    }
    m_form->cmServer->setCurrentIndex(m_form->cmBootServer->currentIndex());
}

void Korvan::showInServerBox(const QString &text)
{
    m_form->cmServer->setItems({text});
    m_form->cmServer->setEnabled(false);
}

void Korvan::onChangeUser()
{
    if (tunnelInUse(m_status)) {
        QTimer::singleShot(0, this, &Korvan::onDisconnect);
    }
    m_form->stack->setCurrentWidget(m_form->pageLogin);
    m_form->edUser->setFocus();
}
