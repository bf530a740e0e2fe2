#pragma once

#include "account/Proxy.h"

#include <QByteArray>
#include <QString>

/// The user's preferences as "/cfg/option" holds them. The order is the file's.
struct Options
{
    int server = 0;      ///< index of the last selected server
    ProxySettings proxy; ///< user and password are plain here, and scrambled in the file
    bool connectOnBoot = false;
    bool runOnBoot = false;
    bool hideConnection = false;
    bool autoReconnect = false;
    bool noSound = false;
    QString bootServer; ///< name of the server for the automatic connection
    int updateFrequency = 0;
    QString protocol; ///< "OpenVPN" or "L2TP"
    bool dnsLeak = false;
    bool lockDown = false;
};

/// The options as the file's bytes: a data stream of the pinned version, big-endian, without a header.
QByteArray optionBytes(const Options &options);

/// The options of a file. Fields that a short or damaged file lacks are zero, false or empty.
Options optionsOf(const QByteArray &bytes);
