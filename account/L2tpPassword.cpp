#include "account/L2tpPassword.h"

#include "common/AppPath.h"
#include "common/StateFile.h"
#include "names/StateFiles.h"

static QString path()
{
    return appPath(kL2tpPasswordFile);
}

void saveL2TPPassword(const QString &password)
{
    writeWhole(path(), password.toLocal8Bit().toBase64());
}

QString loadL2TPPassword()
{
    return QString::fromLocal8Bit(QByteArray::fromBase64(readWhole(path())));
}
