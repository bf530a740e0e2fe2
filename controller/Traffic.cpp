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
    TransferCounters today = m_counters;
    today.rollOver(QDate::currentDate());
    showTotals(today);
}

void Traffic::beginSession()
{
    m_counters.sessionReceived = 0;
    m_counters.sessionSent = 0;
    m_startTime = QDateTime::currentDateTime();
}

Traffic::Bytes Traffic::takeNew()
{
    Bytes now;
    m_engine->byteCount(now.received, now.sent);
    const bool begunAnew = now.received < m_counted.received || now.sent < m_counted.sent;
    const Bytes before = begunAnew ? Bytes() : m_counted;
    m_counted = now;
    return {now.received - before.received, now.sent - before.sent};
}

void Traffic::tick(bool connected)
{
    if (!connected) {
        showRates({});
        return;
    }
    const Bytes bytes = takeNew();
    add(bytes.received, bytes.sent);
    showRates(bytes);
    m_timer.start(kTickMs);
}

/// Shows what two seconds brought as rates of one second.
void Traffic::showRates(const Bytes &bytes)
{
    m_form->lbDownload->setText(FormatDataSize(bytes.received >> 1) + QLatin1String("/s"));
    m_form->lbUpload->setText(FormatDataSize(bytes.sent >> 1) + QLatin1String("/s"));
}

void Traffic::showTotals(const TransferCounters &counters)
{
    m_form->lbTotalRecv->setText(FormatDataSize(counters.totalReceived));
    m_form->lbTotalSend->setText(FormatDataSize(counters.totalSent));
    // The month's figures stand where the day's would be expected; the day's are kept in the file only.
    m_form->lbTotalSD->setText(FormatDataSize(counters.monthSent));
    m_form->lbTotalRD->setText(FormatDataSize(counters.monthReceived));
}

void Traffic::add(quint64 received, quint64 sent, const QDate &today)
{
    constexpr int leapYear = 2024; // the file knows no year
    const QDate before(leapYear, m_counters.month, m_counters.day);
    if (m_unstored.received + m_unstored.sent > 0 && before.isValid() && before.month() != today.month()) {
        UpdateTotalDataTransfer(m_unstored.received, m_unstored.sent, before); // or the new month would get it
        m_unstored = {};
    }
    m_counters.add(received, sent);
    const bool rolledOver = m_counters.rollOver(today);
    m_form->lbSessionRecv->setText(FormatDataSize(m_counters.sessionReceived));
    m_form->lbSessionSend->setText(FormatDataSize(m_counters.sessionSent));
    showTotals(m_counters);
    if (rolledOver) {
        UpdateTotalDataTransfer(received, sent, today);
    } else {
        m_unstored.received += received;
        m_unstored.sent += sent;
    }
}

/// The file gets what it does not have yet.
void Traffic::store()
{
    UpdateTotalDataTransfer(m_unstored.received, m_unstored.sent);
    m_unstored = {};
}

void Traffic::endSession()
{
    quint64 received = 0;
    quint64 sent = 0;
    m_engine->byteCount(received, sent);
    const Bytes rest = takeNew(); // the ticks have added the others
    add(rest.received, rest.sent);
    showRates({});
    store();
    qDebug().noquote() << "Since" << m_startTime.toString(Qt::ISODate) << "received" << FormatDataSize(received)
                       << "and sent" << FormatDataSize(sent);
    m_engine->clearByteCount(); // a second end of the same connection must not count it again
    m_counted = {};
}

void Traffic::storeSession()
{
    const Bytes rest = takeNew();
    m_unstored.received += rest.received;
    m_unstored.sent += rest.sent;
    if (m_unstored.received + m_unstored.sent > 0) {
        store();
    }
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
    const TransferCounters before = m_counters;
    m_counters = TransferCounters();
    m_counters.sessionReceived = before.sessionReceived;
    m_counters.sessionSent = before.sessionSent;
    m_counters.day = before.day;
    m_counters.month = before.month;
    m_unstored = {};
    showTotals(m_counters);
}
