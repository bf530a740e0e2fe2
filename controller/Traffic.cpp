#include "controller/Traffic.h"

#include "common/AppPath.h"
#include "common/Text.h"
#include "names/StateFiles.h"
#include "ui_Korvan.h"
#include "vpn/VPNClient.h"

#include <QDebug>
#include <QFile>

static constexpr int kTickMs = 2000;

Traffic::Traffic(Ui::Korvan *form, VPNClient *engine) : m_form(form), m_engine(engine)
{
    m_timer.setSingleShot(true);
}

void Traffic::load()
{
    GetTotalDataTransfer(m_counters.totalReceived, m_counters.totalSent, m_counters.day, m_counters.dayReceived,
                         m_counters.daySent, m_counters.month, m_counters.monthReceived, m_counters.monthSent);
}

void Traffic::beginSession()
{
    m_counters.sessionReceived = 0;
    m_counters.sessionSent = 0;
    m_startTime = QDateTime::currentDateTime();
}

void Traffic::tick(bool connected)
{
    static quint64 last_rcv = 0;
    static quint64 last_snd = 0;
    if (!connected) {
        last_rcv = 0;
        last_snd = 0;
        showRates(0, 0);
        return;
    }
    quint64 received = 0;
    quint64 sent = 0;
    m_engine->byteCount(received, sent);
    const quint64 newlyReceived = received - qMin(received, last_rcv); // the counts may have begun anew
    const quint64 newlySent = sent - qMin(sent, last_snd);
    add(newlyReceived, newlySent);
    showRates(newlyReceived, newlySent);
    m_timer.start(kTickMs);
    last_rcv = received;
    last_snd = sent;
}

/// Shows what two seconds brought as rates of one second.
void Traffic::showRates(quint64 received, quint64 sent)
{
    m_form->lbDownload->setText(FormatDataSize(received >> 1) + QLatin1String("/s"));
    m_form->lbUpload->setText(FormatDataSize(sent >> 1) + QLatin1String("/s"));
}

void Traffic::add(quint64 received, quint64 sent)
{
    m_counters.add(received, sent);
    const bool rolledOver = m_counters.rollOver(QDate::currentDate());
    m_form->lbSessionRecv->setText(FormatDataSize(m_counters.sessionReceived));
    m_form->lbSessionSend->setText(FormatDataSize(m_counters.sessionSent));
    m_form->lbTotalRecv->setText(FormatDataSize(m_counters.totalReceived));
    m_form->lbTotalSend->setText(FormatDataSize(m_counters.totalSent));
    // The month's figures stand where the day's would be expected; the day's are kept in the file only.
    m_form->lbTotalSD->setText(FormatDataSize(m_counters.monthSent));
    m_form->lbTotalRD->setText(FormatDataSize(m_counters.monthReceived));
    if (rolledOver) {
        UpdateTotalDataTransfer(received, sent);
    }
}

void Traffic::endSession()
{
    quint64 received = 0;
    quint64 sent = 0;
    m_engine->byteCount(received, sent);
    add(received, sent);
    UpdateTotalDataTransfer(0, 0);
    qDebug().noquote() << "Since" << m_startTime.toString(Qt::ISODate) << "received" << FormatDataSize(received)
                       << "and sent" << FormatDataSize(sent);
    m_engine->clearByteCount(); // a second end of the same connection must not count it again
}

void Traffic::storeSession()
{
    quint64 received = 0;
    quint64 sent = 0;
    m_engine->byteCount(received, sent);
    UpdateTotalDataTransfer(received, sent);
}

void Traffic::clearSession()
{
    m_form->lbSessionRecv->clear();
    m_form->lbSessionSend->clear();
}

void Traffic::reset()
{
    m_counters = TransferCounters();
    add(0, 0);
}

void Traffic::deleteStored()
{
    QFile::remove(appPath(kTransferFile));
    for (QLabel *label : {m_form->lbTotalRecv, m_form->lbTotalSend, m_form->lbTotalRD, m_form->lbTotalSD}) {
        label->setText(FormatDataSize(0));
    }
}
