#include "controller/Korvan.h"

#include "base/Addresses.h"
#include "platform/ActiveWindow.h"
#include "platform/LoginItems.h"
#include "ui/KvImageBox.h"
#include "ui_Korvan.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QMessageBox>
#include <QUrl>

void Korvan::showOnTop()
{
    showNormal();
    activateWindow();
    macosActiveWindow();
    raise();
}

void Korvan::hideInTray()
{
    QSystemTrayIcon::isSystemTrayAvailable() ? hide() : showMinimized();
}

void Korvan::onTrayClicked(QSystemTrayIcon::ActivationReason reason)
{
    if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::MiddleClick) {
        QTimer::singleShot(0, this, &Korvan::showOnTop);
    }
}

void Korvan::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() != QEvent::WindowStateChange) {
        return;
    }
    if (!isMinimized()) {
        showNormal();
        activateWindow();
        macosActiveWindow();
    } else if (QSystemTrayIcon::isSystemTrayAvailable()) {
        QTimer::singleShot(0, this, &Korvan::hide); // into the tray
    }
}

void Korvan::closeEvent(QCloseEvent *event)
{
    showOnTop(); // the question is never asked for an invisible window
    if (QMessageBox::question(this, tr("Exit"), tr("Are you sure you wish to quit Korvan?"),
                              QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::No) {
        event->ignore();
        return;
    }
    QApplication::quit();
}

void Korvan::onMenuCommand()
{
    showOnTop();
    const auto *action = qobject_cast<QAction *>(sender());
    if (action == nullptr) {
        return;
    }
    if (action->text() == tr("Update Config...")) {
        m_form->tab->setCurrentIndex(kSettingsTab);
    } else if (action->text() == tr("Proxy Settings...")) {
        m_form->tab->setCurrentIndex(kProxyTab);
    }
}

void Korvan::onLogCopy()
{
    m_form->edLog->selectAll();
    m_form->edLog->copy();
}

void Korvan::onHelp()
{
    QDesktopServices::openUrl(QUrl(QStringLiteral(KORVAN_HELPDESK_URL "/")));
}

void Korvan::onHelpSupport()
{
    QDesktopServices::openUrl(QUrl(QStringLiteral(KORVAN_HELPDESK_URL "/anonymous_requests/new")));
}

void Korvan::onFAQ()
{
    QDesktopServices::openUrl(QUrl(QStringLiteral(KORVAN_SITE_URL "/faqs.php")));
}

void Korvan::onUpAccount()
{
    onUpdate();
}

void Korvan::onProgress()
{
    static int ticks = 0;
    if (ticks++ % 10 < 3) {
        return; // the bar moves in bursts
    }
    // Only STATUS_CONNECTED completes the bar.
    m_form->pgLinkState->setValue(qMin(m_form->pgLinkState->value() + 1, 99));
}

void Korvan::onRunOnBoot()
{
    KvImageBox(QStringLiteral(":/img/macnotify.png"), tr("Korvan Help"), this).exec();
    m_form->cbRunOnBoot->setChecked(false);
}
