#pragma once

#include <QByteArray>

/// A kind of system VPN service that this helper manages: what the caller calls it and how NetworkManager knows it.
struct Service
{
    const char *type;    ///< the caller's name of the type
    const char *name;    ///< the connection profile's name
    const char *uuid;    ///< the connection profile's identity
    const char *plugin;  ///< NetworkManager's name of the plug-in; null: the type is connected without NetworkManager
    const char *package; ///< the package that brings the plug-in
};

/// The service of this type, or of this profile name; null when there is none.
const Service *serviceOfType(const QByteArray &type);
const Service *serviceNamed(const QByteArray &name);

/// The connection profile as a keyfile, without user and password. `psk` is used by L2TP.
QByteArray profileText(const Service &service, const QByteArray &server, const QByteArray &psk);

/// The keyfile with `key` of [`group`] set to `value`; the group must be there.
QByteArray withValue(const QByteArray &text, const QByteArray &group, const QByteArray &key, const QByteArray &value);

/// Where the profile lies: in memory only, so that it is gone after a restart of the machine.
QByteArray profilePath(const Service &service);

/// Reads the stored profile; empty when there is none.
QByteArray readProfile(const Service &service);

/// Replaces the stored profile, readable by root alone. Returns whether it could.
bool writeProfile(const Service &service, const QByteArray &text);
