#include "tests/ui/ExampleWindow.h"

namespace {

QString buttonPattern(const char *family)
{
    return QStringLiteral(":/images/button_%1_%2.png").arg(QLatin1String(family), QLatin1String("%1"));
}

void setFamilies(const Ui::Korvan &ui)
{
    const std::pair<KvRetinaButton *, const char *> families[] = {
        {ui.pbLogin, "login"},
        {ui.pbExist, "useexisting"},
        {ui.pbMinimize, "column_download"},
        {ui.pbHelp, "column_help"},
        {ui.pbClose, "column_close"},
        {ui.pbHelpSupport, "help_and_support"},
        {ui.pbFAQ, "faq"},
        {ui.pbConnect, "connect"},
        {ui.pbDisconnect, "disconnect"},
        {ui.pbReconnect, "reconnect"},
        {ui.pbReset, "reset"},
        {ui.pbResetStat, "reset_all_statistics"},
        {ui.pbUpApp, "update"},
        {ui.pbChangeUser, "change_user"},
        {ui.pbSave, "save_options"},
        {ui.pbPingAll, "ping_all_servers"},
        {ui.pbPingDet, "detailed_ping"},
        {ui.pbSpeedTest, "run_speed_test"},
        {ui.pbTestCancel, "cancel"},
        {ui.pbSaveProxy, "save_proxy_settings"},
        {ui.pbCopyLog, "copy_log"},
    };
    for (const auto &[button, family] : families) {
        button->setImages(buttonPattern(family));
    }
    ui.cbRember->setImages(QStringLiteral(":/images/checkbox_remember_%1.png"));
    ui.pgUpdate->setImages(QStringLiteral(":/images/link_status_%1.png"));
    for (KvRetinaCheckBox *box : {ui.rbNone, ui.rbHttp, ui.rbSocks}) {
        box->setImages(QStringLiteral(":/images/radio_%1.png"));
    }
    ui.tab->addItem(QStringLiteral(":/images/top_menu_dashboard_%1.png"), QStringLiteral("Dashboard"));
    ui.tab->addItem(QStringLiteral(":/images/top_menu_vpn_log_%1.png"), QStringLiteral("VPN log"));
    ui.tab->addItem(QStringLiteral(":/images/top_menu_settings_%1.png"), QStringLiteral("Settings"));
    ui.tab->addItem(QStringLiteral(":/images/top_menu_proxy_settings_%1.png"), QStringLiteral("Proxy"));
    ui.tab->addItem(QStringLiteral(":/images/top_menu_service_status_%1.png"), QStringLiteral("Service status"));
}

void setTexts(const Ui::Korvan &ui)
{
    const std::pair<QLabel *, const char *> texts[] = {
        {ui.lbVersion, "2.4.1"},     {ui.lbName, "alice"},
        {ui.lbName2, "alice"},       {ui.lbExpired, "Dec 31 23:59:59 2027"},
        {ui.lbDownload, "0B/s"},     {ui.lbUpload, "0B/s"},
        {ui.lbTotalRecv, "48213MB"}, {ui.lbTotalSend, "3990MB"},
        {ui.lbTotalRD, "5120MB"},    {ui.lbTotalSD, "410MB"},
    };
    for (const auto &[label, text] : texts) {
        label->setText(QString::fromLatin1(text));
    }
    ui.edUser->setText(QStringLiteral("alice"));
    ui.edPass->setText(QStringLiteral("0123456789"));
    ui.cbRember->setChecked(true);
    ui.cbConnectOnBoot->setChecked(true);
    ui.cbLockDown->setChecked(true);
    ui.cbRunOnBoot->hide();
    ui.cbDnsLeak->hide();
    ui.cbAutoReconn->hide();
    ui.cmUpdate->setCurrentIndex(1);
    ui.rbHttp->setChecked(true);
    ui.edProxyAddr->setText(QStringLiteral("proxy.example"));
    ui.edProxyPort->setText(QStringLiteral("8080"));
    ui.cbProxyAuth->setEnabled(true);
    ui.pgUpdate->setValue(46);
    ui.edLog->setPlainText(QStringLiteral("20:14:02 Default Gateway:192.168.1.1\n"
                                          "20:14:02 Saved Gateway:192.168.1.1\n"
                                          "20:14:03 Get Data: 20481\n"
                                          "20:14:03 SUCCESS: download 20481 bytes user profile to local.\n"
                                          "20:14:09 UDPv4 link remote: [AF_INET]203.0.113.21:1194\n"
                                          "20:14:09 Initialization Sequence Completed"));
}

void setPings(QTableWidget *table)
{
    const QStringList rows[] = {{QStringLiteral("23ms"), QStringLiteral("0%"), QStringLiteral("812KB/s")},
                                {QStringLiteral("Ping..."), QString(), QString()},
                                {QStringLiteral("41ms"), QStringLiteral("5%"), QString()},
                                {QStringLiteral("N/A"), QStringLiteral("100%"), QStringLiteral("Canceled")}};
    for (int row = 0; row < 4; ++row) {
        for (int column = 1; column < 4; ++column) {
            table->setItem(row, column, new QTableWidgetItem(rows[row].at(column - 1)));
        }
    }
    table->setSortingEnabled(false);
    table->selectRow(1);
}

} // namespace

ExampleWindow::ExampleWindow()
{
    ui.setupUi(this);
    setFixedSize(geometry().size());
    setFamilies(ui);
    const int widths[] = {230, 95, 95, 110};
    for (int column = 0; column < 4; ++column) {
        ui.tbPing->setColumnWidth(column, widths[column]);
    }
    connect(ui.tab, &KvRetinaTabBar::indexChanged, ui.tabPage, &QStackedWidget::setCurrentIndex);
    for (const char *name : {"Examplia-1", "Examplia-2-Routed", "Samplonia-Surfing-1", "Proxied-Samplonia"}) {
        addServer(QString::fromLatin1(name));
    }
    setTexts(ui);
    setPings(ui.tbPing);
    showStatus(Status::NotConnected);
}

void ExampleWindow::addServer(const QString &name)
{
    ui.cmServer->addItem(name);
    ui.cmBootServer->addItem(name);
    const int row = ui.tbPing->rowCount();
    ui.tbPing->insertRow(row);
    ui.tbPing->setRowHeight(row, 20);
    ui.tbPing->setItem(row, 0, new QTableWidgetItem(name));
}

void ExampleWindow::showStatus(Status status)
{
    const bool connected = status == Status::Connected;
    const bool idle = status == Status::NotConnected;
    ui.lbStatus->setPicture(connected ? QStringLiteral(":/images/icon_status_connect_connected.png")
                                      : QStringLiteral(":/images/icon_status_connect_disconnected.png"));
    ui.lbStatusT->setText(connected ? QStringLiteral(" CONNECTED") : QStringLiteral("NOT CONNECTED"));
    ui.pgLinkState->setValue(connected ? 100 : idle ? 0 : 34);
    ui.pbConnect->setVisible(idle);
    ui.pbDisconnect->setVisible(!idle);
    ui.pbReconnect->setEnabled(connected);
    ui.cmServer->setEnabled(idle);
    ui.cmProto->setEnabled(idle);
    ui.lbServerIP->setText(connected ? QStringLiteral("203.0.113.21") : QString());
    ui.lbPublicIP->setText(connected ? QStringLiteral("198.18.1.2")
                           : idle    ? QStringLiteral("198.51.100.2")
                                     : QStringLiteral("Public IP Address*"));
    ui.lbCountry->setText(connected ? QStringLiteral("Examplia") : idle ? QStringLiteral("Homeland") : QString());
    ui.lbDownload->setText(connected ? QStringLiteral("812KB/s") : QStringLiteral("0B/s"));
    ui.lbUpload->setText(connected ? QStringLiteral("40KB/s") : QStringLiteral("0B/s"));
    ui.lbSessionRecv->setText(connected ? QStringLiteral("214MB") : QString());
    ui.lbSessionSend->setText(connected ? QStringLiteral("18MB") : QString());
}

void ExampleWindow::showPage(int index)
{
    ui.stack->setCurrentWidget(ui.pageMain);
    ui.tab->setCurrentIndex(index);
}
