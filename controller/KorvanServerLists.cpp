#include "controller/Korvan.h"

#include "account/L2tpPassword.h"
#include "account/ServerLists.h"
#include "ui/KvL2TPBox.h"
#include "ui/TableWidget.h"
#include "ui_Korvan.h"

#include <QDebug>
#include <QFile>
#include <QHeaderView>
#include <QMenu>
#include <QSet>

static constexpr int kPingRowHeight = 20;

/// More servers than these are grouped in the menu, so many to a group.
static constexpr int kMenuEntries = 1000;

/// Selects in both boxes the server of this name, if it is among the servers.
static void selectServer(Ui::Korvan &form, const QString &name)
{
    const int index = name.isEmpty() ? -1 : form.cmServer->findText(name);
    if (index >= 0) {
        form.cmServer->setCurrentIndex(index);
        form.cmBootServer->setCurrentIndex(index);
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
    {
        const QSignalBlocker quiet(table.model()); // one repaint, not one for every name
        for (const QString &name : names) {
            if (!skipped.contains(name)) {
                table.setItem(row++, 0, new QTableWidgetItem(name));
            }
        }
    }
    table.viewport()->update();
    table.setRowCount(row);
    table.setSortingEnabled(sorting);
}

void Korvan::updateOpenVPNServerList()
{
    const QString bootServer = m_form->cmBootServer->currentText();
    const QStringList names = openVPNServerNames();
    fillServerMenu(names);
    m_form->cmServer->setItems(names);
    m_form->cmBootServer->setItems(names);
    fillPingTable(*m_form->tbPing, names, QSet<QString>(m_skipList.cbegin(), m_skipList.cend()));
    selectServer(*m_form, bootServer);
}

void Korvan::fillServerMenu(const QStringList &names)
{
    if (m_connectMenu == nullptr) {
        return;
    }
    m_connectMenu->clear();
    for (QMenu *group : m_connectMenu->findChildren<QMenu *>(QString(), Qt::FindDirectChildrenOnly)) {
        group->deleteLater();
    }
    const auto addServers = [this](QMenu *menu, const QStringList &servers) {
        for (const QString &server : servers) {
            menu->addAction(server, this, &Korvan::onMenuConnect);
        }
    };
    if (names.size() <= kMenuEntries) {
        addServers(m_connectMenu, names);
        return;
    }
    // Qt searches a whole menu for every entry that it gains, and nobody finds a server among thousands.
    for (int index = 0; index < names.size(); index += kMenuEntries) {
        const QStringList servers = names.mid(index, kMenuEntries);
        QMenu *group = m_connectMenu->addMenu(servers.first() + QStringLiteral(" \u2013 ") + servers.last());
        connect(group, &QMenu::aboutToShow, this, [=] {
            if (group->isEmpty()) {
                addServers(group, servers);
            }
        });
    }
}

void Korvan::updateL2TPServerList()
{
    const QString bootServer = m_form->cmBootServer->currentText();
    QStringList names;
    QStringList addresses;
    for (const L2TPServer &server : readL2TPServers()) {
        names.append(server.name);
        addresses.append(server.address);
    }
    m_form->cmServer->setItems(names, addresses);
    m_form->cmBootServer->setItems(names);
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
