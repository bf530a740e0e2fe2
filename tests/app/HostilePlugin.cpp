#include <QGenericPlugin>

#include <cstdlib>
#include <unistd.h>

/// A Qt plug-in that an attacker would want a root process to load. It ends the process with status 42.
class HostilePlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "hostile.json")

public:
    QObject *create(const QString & /*key*/, const QString & /*arguments*/) override { std::_Exit(42); }
};

#include "HostilePlugin.moc"
