#include "controller/Korvan.h"

#include "account/L2tpPassword.h"
#include "account/ServerLists.h"
#include "ui/KvL2TPBox.h"
#include "ui_Korvan.h"

#include <QDebug>
#include <QFile>

/// Selects in both boxes the server of this name, if it is among the servers.
static void selectServer(Ui::Korvan &form, const QString &name)
{
    const int index = name.isEmpty() ? -1 : form.cmServer->findText(name);
    if (index >= 0) {
        form.cmServer->setCurrentIndex(index);
        form.cmBootServer->setCurrentIndex(index);
    }
}

void Korvan::updateOpenVPNServerList()
{
    const QSignalBlocker quiet(m_form->cmBootServer); // a new list is no change of the option
    const QString bootServer = m_form->cmBootServer->currentText();
    const QStringList names = openVPNServerNames();
    m_tray.setServers(names);
    m_form->cmServer->setItems(names);
    m_form->cmBootServer->setItems(names);
    m_skipList = readSkipList(); // a profile that came since the start has brought one
    m_tests.setServers(names, m_skipList);
    selectServer(*m_form, bootServer);
}

void Korvan::updateL2TPServerList()
{
    const QSignalBlocker quiet(m_form->cmBootServer); // a new list is no change of the option
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

void Korvan::onCurrentIndexChanged(QString text)
{
    if (text == QLatin1String("OpenVPN")) {
        updateOpenVPNServerList();
    } else if (text == QLatin1String("L2TP")) {
        updateL2TPServerList();
    }
    if (text != m_protocol) {
        onSaveReady();
    }
}
