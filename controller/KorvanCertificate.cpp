#include "controller/Korvan.h"

#include "account/Certificate.h"
#include "account/Limits.h"
#include "ui_Korvan.h"

#include <QDebug>
#include <QFile>

bool Korvan::isCrtExpired()
{
    if (m_userName.isEmpty()) {
        m_userName = m_form->edUser->text();
    }
    const QString path = certificatePath(m_userName);
    if (!QFile::exists(path)) {
        return true;
    }
    const QString date = GetCertExpiredDateTime(path);
    qDebug().noquote() << "Certificate expired at:" << shownText(date);
    return isExpired(date, QDateTime::currentDateTimeUtc());
}

void Korvan::showExpiry()
{
    m_form->lbExpired->setText(shownText(GetCertExpiredDateTime(certificatePath(m_userName))));
}
