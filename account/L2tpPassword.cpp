#include "account/L2tpPassword.h"

#include "common/AppPath.h"
#include "common/StateFile.h"

static QString path()
{
    return appPath("/l2tp");
}

void saveL2tpPassword(const QString &password)
{
    writeWhole(path(), password.toLocal8Bit().toBase64());
}

QString savedL2tpPassword()
{
    return QString::fromLocal8Bit(QByteArray::fromBase64(readWhole(path())));
}
