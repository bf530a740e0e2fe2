#include "controller/Korvan.h"

#include "base/Addresses.h"
#include "platform/ActiveWindow.h"
#include "ui_Korvan.h"

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

void Korvan::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        m_tray.repaint();
    }
    if (event->type() != QEvent::WindowStateChange) {
        return;
    }
    if (!isMinimized()) {
        showNormal();
        activateWindow();
        macosActiveWindow();
    } else if (Tray::isAvailable()) {
        QTimer::singleShot(0, this, &Korvan::hide); // into the tray
    }
}

void Korvan::closeEvent(QCloseEvent *event)
{
    showOnTop(); // the question is never asked for an invisible window
    QMessageBox box(QMessageBox::Question, tr("Exit"), tr("Are you sure you wish to quit Korvan?"),
                    QMessageBox::Yes | QMessageBox::No, this);
    box.setDefaultButton(QMessageBox::No);
    if (m_form->pbSave->isEnabled()) {
        box.setInformativeText(tr("The changes of the options are not saved."));
    }
    if (box.exec() == QMessageBox::No) {
        event->ignore();
        return;
    }
    QApplication::quit();
}

void Korvan::onMenuCommand()
{
    showOnTop();
    const int tab = Tray::tabOf(sender());
    if (tab >= 0) {
        m_form->stack->setCurrentWidget(m_form->pageMain);
        m_form->tab->setCurrentIndex(tab);
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
