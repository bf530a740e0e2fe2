#include "controller/Korvan.h"

#include "account/SavedLogin.h"
#include "common/AppPath.h"
#include "common/StateFile.h"
#include "controller/Options.h"
#include "names/StateFiles.h"
#include "platform/LoginItems.h"
#include "ui/KvImageBox.h"
#include "ui_Korvan.h"

#include <QDebug>
#include <QDir>
#include <QFile>

void Korvan::updateOption(bool save)
{
    updateRefresh(save);
    const QString path = appPath(kOptionFile);
    if (save) {
        const Options options = shownOptions();
        if (writeWhole(path, optionBytes(options))) {
            m_bootServer = options.bootServer;
            m_protocol = options.protocol;
            m_route.optionsSaved(m_status == STATUS_CONNECTED);
            showPastTunnel();
        }
        return;
    }
    QDir().mkpath(appPath(kCfgFolder));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) { // the first run
        const auto noted =
            connect(m_engine, &VPNClient::message, [](const QString &text) { qDebug().noquote() << text; });
        m_engine->reset(); // nobody else listens yet
        disconnect(noted);
        writeWhole(path, {});
        return;
    }
    showOptions(optionsOf(file.readAll()));
    updateProxyState();
}

void Korvan::showOptions(const Options &options)
{
    m_form->cmServer->setCurrentIndex(options.server);
    showProxy(options.proxy);
    m_form->cbConnectOnBoot->setChecked(options.connectOnBoot);
    m_form->cbRunOnBoot->setChecked(options.runOnBoot);
    m_form->cbHideConnection->setChecked(options.hideConnection);
    m_form->cbAutoReconn->setChecked(options.autoReconnect);
    m_form->cbNoSound->setChecked(options.noSound);
    m_bootServer = options.bootServer;
    m_form->cmUpdate->setCurrentIndex(options.updateFrequency);
    m_protocol = options.protocol;
    m_form->cbDnsLeak->setChecked(options.dnsLeak);
    m_form->cbLockDown->setChecked(options.lockDown);
}

Options Korvan::shownOptions() const
{
    Options options;
    options.server = m_form->cmServer->currentIndex();
    options.proxy = shownProxy();
    options.connectOnBoot = m_form->cbConnectOnBoot->isChecked();
    options.runOnBoot = m_form->cbRunOnBoot->isChecked();
    options.hideConnection = m_form->cbHideConnection->isChecked();
    options.autoReconnect = m_form->cbAutoReconn->isChecked();
    options.noSound = m_form->cbNoSound->isChecked();
    options.bootServer = m_form->cmBootServer->currentText();
    options.updateFrequency = m_form->cmUpdate->currentIndex();
    options.protocol = m_form->cmProto->currentText();
    options.dnsLeak = m_form->cbDnsLeak->isChecked();
    options.lockDown = m_form->cbLockDown->isChecked();
    return options;
}

/// The path of the application bundle. A folder that does not hold the bundle's name keeps its first nine characters,
/// which removes no login item and adds one that starts nothing.
static QString bundlePath()
{
    static const QString bundle = QStringLiteral("Korvan.app");
    const QString folder = appPath("");
    const int found = folder.indexOf(bundle);
    return found == 0 ? folder : folder.left(found + bundle.size());
}

void Korvan::onSave()
{
    updateOption(true);
    m_form->pbSave->setEnabled(false);
    m_form->pbSaveProxy->setEnabled(false);
    if (sender() == m_form->pbSave || sender() == m_form->pbSaveProxy) {
        machelpLaunchStartup(bundlePath().toLocal8Bit().constData(), m_form->cbRunOnBoot->isChecked() ? 1 : 0,
                             nullptr);
    }
    if (m_form->cbConnectOnBoot->isChecked() && QFile::exists(savedLoginPath())) {
        loadLogin();
    }
    updateLocalNetworkProxy();
}

/// An automatic connection begins with an automatic login.
void Korvan::showBootHint()
{
    const bool misses = m_form->cbConnectOnBoot->isChecked() && !QFile::exists(savedLoginPath());
    m_form->cbConnectOnBoot->setAccessibleDescription(
        misses ? tr("Needs \"%1\" on the sign-in page.").arg(m_form->cbRember->text().remove(QLatin1Char('&')))
               : QString());
    m_form->cbConnectOnBoot->updateGeometry();
}

void Korvan::onSaveReady()
{
    updateProxyState();
    showBootHint();
    m_form->pbSave->setEnabled(true);
    m_form->pbSaveProxy->setEnabled(true);
}

void Korvan::onRunOnBoot()
{
    KvImageBox(QStringLiteral(":/img/macnotify.png"), tr("Korvan Help"), this).exec();
    m_form->cbRunOnBoot->setChecked(false);
}
