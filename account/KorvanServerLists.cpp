#include "controller/Korvan.h"

#include "account/L2tpPassword.h"
#include "account/ServerLists.h"
#include "common/TableWidget.h"
#include "ui/KvL2TPBox.h"
#include "ui_Korvan.h"

#include <QDebug>
#include <QFile>
#include <QHeaderView>
#include <QMenu>
#include <QSet>

static constexpr int kPingRowHeight = 20;

/// Selects in both boxes the server of this name, if it is among the servers.
static void selectServer(Ui::Korvan &form, const QString &name)
{
    const int index = name.isEmpty() ? -1 : form.cmServer->findText(name);
    if (index >= 0) {
        form.cmServer->setCurrentIndex(index);
        form.cmBootServer->setCurrentIndex(index);
    }
}

static void fillServerBoxes(Ui::Korvan &form, const QStringList &names)
{
    for (QComboBox *box : {static_cast<QComboBox *>(form.cmServer), static_cast<QComboBox *>(form.cmBootServer)}) {
        box->clear();
        box->addItems(names);
    }
}

static void fillPingTable(QTableWidget &table, const QStringList &names, const QSet<QString> &skipped)
{
    const bool sorting = table.isSortingEnabled();
    table.setSortingEnabled(false); // a row must not move while it is filled
    QTableWidget_clear(&table);
    table.horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder); // the list's own order
    table.verticalHeader()->setMinimumSectionSize(kPingRowHeight);
    table.verticalHeader()->setDefaultSectionSize(kPingRowHeight);
    table.setRowCount(names.size());
    int row = 0;
    for (const QString &name : names) {
        if (!skipped.contains(name)) {
            table.setItem(row++, 0, new QTableWidgetItem(name));
        }
    }
    table.setRowCount(row);
    table.setSortingEnabled(sorting);
}

void Korvan::updateOpenVPNServerList()
{
    const QString bootServer = m_form->cmBootServer->currentText();
    const QStringList names = openVPNServerNames();
    fillServerMenu(names);
    fillServerBoxes(*m_form, names);
    fillPingTable(*m_form->tbPing, names, QSet<QString>(m_skipList.cbegin(), m_skipList.cend()));
    selectServer(*m_form, bootServer);
}

void Korvan::fillServerMenu(const QStringList &names)
{
    if (m_connectMenu == nullptr) {
        return;
    }
    // A menu needs quadratic time to lose its entries, so it is replaced instead.
    auto *menu = new QMenu(m_connectMenu->title(), m_trayMenu);
    menu->setIcon(m_connectMenu->icon());
    menu->menuAction()->setEnabled(m_connectMenu->menuAction()->isEnabled());
    for (const QString &name : names) {
        menu->addAction(name, this, &Korvan::onMenuConnect);
    }
    m_trayMenu->insertMenu(m_connectMenu->menuAction(), menu);
    m_trayMenu->removeAction(m_connectMenu->menuAction());
    m_connectMenu->deleteLater();
    m_connectMenu = menu;
}

void Korvan::updateL2TPServerList()
{
    const QVector<L2TPServer> servers = readL2TPServers();
    const QString bootServer = m_form->cmBootServer->currentText();
    QStringList names;
    for (const L2TPServer &server : servers) {
        names.append(server.name);
    }
    fillServerBoxes(*m_form, names);
    for (int index = 0; index < servers.size(); ++index) {
        m_form->cmServer->setItemData(index, servers.at(index).address);
    }
    selectServer(*m_form, bootServer);
}

void Korvan::updateOpenVPN(QString folder, QString file)
{
    const QString copy = folder + QLatin1String("temp");
    QFile::remove(copy);
    if (!QFile::copy(folder + file, copy)) {
        qDebug().noquote() << "WARNING: can not copy" << folder + file;
    }
}

QString Korvan::getL2TPPassword()
{
    KvL2TPBox box(nullptr);
    if (box.exec() != QDialog::Accepted) {
        return {};
    }
    if (box.isRemember()) {
        saveL2TPPassword(box.password());
    }
    return box.password();
}
