#pragma once

#include <QString>

/// Keeps the L2TP password in "/l2tp", readable by the owner only: its local 8-bit form in Base64.
void saveL2TPPassword(const QString &password);

/// The password in "/l2tp"; empty when it can not be read.
QString loadL2TPPassword();
