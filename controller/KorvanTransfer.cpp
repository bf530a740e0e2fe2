#include "controller/Korvan.h"

#include "common/Text.h"
#include "ui_Korvan.h"

void Korvan::refreshTransfer(quint64 received, quint64 sent)
{
    m_transfer.add(received, sent);
    const bool rolledOver = m_transfer.rollOver(QDate::currentDate());
    m_form->lbSessionRecv->setText(FormatDataSize(m_transfer.sessionReceived));
    m_form->lbSessionSend->setText(FormatDataSize(m_transfer.sessionSent));
    m_form->lbTotalRecv->setText(FormatDataSize(m_transfer.totalReceived));
    m_form->lbTotalSend->setText(FormatDataSize(m_transfer.totalSent));
    // The month's figures stand where the day's would be expected; the day's are kept in the file only.
    m_form->lbTotalSD->setText(FormatDataSize(m_transfer.monthSent));
    m_form->lbTotalRD->setText(FormatDataSize(m_transfer.monthReceived));
    if (rolledOver) {
        UpdateTotalDataTransfer(received, sent);
    }
}

void Korvan::onResetStat()
{
    m_transfer = TransferCounters();
    refreshTransfer(0, 0);
}
