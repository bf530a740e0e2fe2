#include "controller/Korvan.h"

#include "account/Limits.h"
#include "account/PendingUpdate.h"
#include "account/ServiceRequest.h"
#include "account/UpdateReason.h"
#include "account/Updates.h"
#include "account/WebPage.h"
#include "common/AppPath.h"
#include "common/Text.h"
#include "common/Wait.h"
#include "controller/Box.h"
#include "names/StateFiles.h"
#include "platform/RootPart.h"
#include "ui/KvUnaskedBox.h"
#include "ui_Korvan.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QMessageBox>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPointer>
#include <QTimer>

/// How long the thread of a manager may be at what has come after a reply was given up, in milliseconds.
static constexpr int kThreadEndMs = 5000;

bool Korvan::checkUpdate(QString &url, QString &message, QString &version)
{
    const QPointer<Korvan> self(this);
    const QByteArray page = GetPageDataByUrl(UPDATE_URL);
    if (self.isNull()) {
        return false;
    }
    if (page.isEmpty()) {
        qDebug().nospace() << "[WARNING]Can not load from " << UPDATE_URL;
        return false;
    }
    qDebug("SUCCESS: download %d bytes update information to local.", page.size());
    const UpdateDescription update = readUpdateDescription(page);
    if (!update.hasEntries) {
        qDebug().nospace() << "[WARNING]Get nothing from " << UPDATE_URL;
        return false;
    }
    version = update.version;
    url = update.url;
    message = update.message;
    m_updateSignature = update.signature;
    return !version.isEmpty() && VersionCompare(version, QCoreApplication::applicationVersion()) > 0;
}

void Korvan::updateRefresh(bool save)
{
    if (save) {
        const auto next = nextRefresh(m_form->cmUpdate->currentIndex(), m_nextRefresh, QDateTime::currentDateTime());
        if (next.has_value() && writeNextRefresh(*next)) {
            m_nextRefresh = *next;
        }
        return;
    }
    QDir().mkpath(appPath(kCfgFolder));
    const QDateTime stored = readNextRefresh();
    if (stored.isValid()) {
        m_nextRefresh = stored;
    }
}

/// Whether the profile's files and the chosen server are in use, as while a tunnel comes up, or a login is at work on
/// them.
bool Korvan::isProfileInUse() const
{
    return m_bundleInWork || m_connectInWork || tunnelInUse(m_status) || m_status == STATUS_RECONNECTING;
}

void Korvan::onUpdate()
{
    if (isProfileInUse()) {
        qDebug("WARNING: the configuration is in use and can not be refreshed now.");
        return;
    }
    const QPointer<Korvan> self(this);
    hideNotice();
    showInServerBox(tr("Updating Configuration ..."));
    enableRefresh(tr("The configuration is in use now."));
    m_form->cmProto->setEnabled(false);
    m_bundleInWork = true;
    QByteArray profile;
    loginKorvan(m_userName, m_password, profile);
    if (!self.isNull() && !profile.isEmpty()) {
        releaseCompressedConfig(profile);
    }
    if (self.isNull()) {
        return;
    }
    m_bundleInWork = false;
    if (profile.isEmpty()) {
        m_answer = ProfileAnswer::None; // the profile is as it was
        enableRefresh(tr("Please sign in first."));
        m_form->lbSignInHint->setText(
            tr("The configuration could not be refreshed: the service can not be reached."));
        QTimer::singleShot(0, this, &Korvan::onChangeUser);
        if (!m_refusal.isEmpty()) {
            KvUnaskedBox::tell(this, QMessageBox::Critical, tr("Notify"), joined(tr("Update Failed."), m_refusal));
        }
        return;
    }
    updateOpenVPNServerList();
    enableRefresh({});
    showExpiry();
    m_form->cmServer->setEnabled(true);
    m_form->cmProto->setEnabled(true);
    const bool failed = m_answer != ProfileAnswer::None;
    if (!failed) {
        rememberLogin();
    }
    if (m_form->cmProto->currentText() == QLatin1String("L2TP")) {
        updateL2TPServerList();
    }
    tellWhyNoServers();
    KvUnaskedBox::tell(this, failed ? QMessageBox::Critical : QMessageBox::Information, tr("Notify"),
                       failed ? tr("Update Failed.") : tr("Update Successful."));
}

/// Unless there is a reason against it, which the buttons tell.
void Korvan::enableRefresh(const QString &reason)
{
    for (QWidget *button : {m_form->pbUpdate, m_form->pbUpAccount}) {
        button->setEnabled(reason.isEmpty());
        button->setToolTip(reason);
    }
}

void Korvan::onUpApp()
{
    // Of a local file, which the description could name, opening alone may wait for ever.
    if (!QUrl(m_updateAddress).scheme().startsWith(QLatin1String("http"))) {
        QMessageBox::information(this, tr("Update"), tr("Update url is not valid."));
        return;
    }
    if (const Refusal reason = whyNoUpdates(); !reason.isEmpty()) {
        QMessageBox::information(this, tr("Update"), reason.translated());
        return;
    }
    const QPointer<Korvan> self(this);
    auto *manager = new QNetworkAccessManager(this);
    QNetworkReply *reply = sendRequest(*manager, QNetworkRequest(QUrl(m_updateAddress)), kArchiveLimit);
    connect(reply, &QNetworkReply::downloadProgress, this, &Korvan::onUpdateProgress);
    m_form->pbUpApp->setEnabled(false);
    Wait wait;
    wait.until(reply, &QNetworkReply::finished);
    wait.until(this, &QObject::destroyed);
    if (!wait.run() || self.isNull()) {
        return; // the program ends
    }
    // Not sooner: other waits may have held this one up for long. And not at once: destroying the manager while its
    // thread is still at what has come would stop the window for as long.
    QTimer::singleShot(kThreadEndMs, manager, &QObject::deleteLater);
    const QByteArray archive = wholeBody(*reply);
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    QString problem = archive.isEmpty() ? QStringLiteral("no data") : whyNoArchive(status, archive);
    const QString refused = refusal(*reply);
    if (problem.isEmpty()) {
        problem = storeUpdate(archive, m_updateSignature);
    }
    if (self.isNull()) {
        return;
    }
    if (problem.isEmpty()) {
        KvUnaskedBox::tell(this, QMessageBox::Information, tr("Update"),
                           tr("Update done, please restart application."));
        return;
    }
    qDebug().noquote() << "WARNING: the update is refused:" << problem;
    KvUnaskedBox::tell(this, QMessageBox::Information, tr("Update"),
                       joined(tr("Update failed, %1.").arg(translatedReason(problem)), refused));
    m_form->pbUpApp->setEnabled(true);
}

void Korvan::onUpdateProgress(qlonglong received, qlonglong total)
{
    if (total > 0) { // Qt reports an unknown size as -1
        m_form->pgUpdate->setValue(static_cast<int>(received * 100 / total));
        m_form->pgUpdate->repaint();
    }
}
