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
#include <QStandardItemModel>

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

/// Replaces a box's items in one go. `addresses` become their data, where there are any.
static void fillBox(QComboBox &box, const QStringList &names, const QStringList &addresses = {})
{
    QList<QStandardItem *> items;
    items.reserve(names.size());
    for (int index = 0; index < names.size(); ++index) {
        items.append(new QStandardItem(names.at(index)));
        if (index < addresses.size()) {
            items.last()->setData(addresses.at(index), Qt::UserRole);
        }
    }
    box.clear();
    qobject_cast<QStandardItemModel *>(box.model())->invisibleRootItem()->appendRows(items);
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
    fillBox(*m_form->cmServer, names);
    fillBox(*m_form->cmBootServer, names);
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
    // Qt searches a whole menu for every entry that it gains, and nobody finds a server among thousands.
    const bool grouped = names.size() > kMenuEntries;
    QMenu *menu = m_connectMenu;
    for (int index = 0; index < names.size(); ++index) {
        if (grouped && index % kMenuEntries == 0) {
            const int last = qMin(index + kMenuEntries, names.size()) - 1;
            menu = m_connectMenu->addMenu(names.at(index) + QStringLiteral(" \u2013 ") + names.at(last));
        }
        menu->addAction(names.at(index), this, &Korvan::onMenuConnect);
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
    fillBox(*m_form->cmServer, names, addresses);
    fillBox(*m_form->cmBootServer, names);
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
