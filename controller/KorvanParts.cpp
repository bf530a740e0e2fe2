#include "controller/Korvan.h"

// The slots and functions that hand over to the parts of the window.

void Korvan::hideInTray()
{
    m_tray.hideWindow();
}

void Korvan::onTrayClicked(QSystemTrayIcon::ActivationReason reason)
{
    m_tray.click(reason);
}

void Korvan::onStatus()
{
    m_traffic.tick(m_status == STATUS_CONNECTED);
}

void Korvan::refreshTransfer(quint64 received, quint64 sent)
{
    m_traffic.add(received, sent);
}

void Korvan::onReset()
{
    m_traffic.deleteStored();
}

void Korvan::onResetStat()
{
    m_traffic.reset();
}

void Korvan::onPingAll()
{
    m_tests.pingAll();
}

void Korvan::onPingDet()
{
    m_tests.pingSelected();
}

void Korvan::onPingHeader(int column)
{
    m_tests.sortBy(column);
}

void Korvan::onSpeedTest()
{
    m_tests.testSpeed();
}

int Korvan::getPingByHostName(QString host, int count, double &loss)
{
    return m_tests.ping(host, count, loss);
}

int Korvan::getDownloadSpeedByUrl(QString url)
{
    return m_tests.downloadSpeedOf(url);
}
