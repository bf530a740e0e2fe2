#!/usr/bin/python3
"""A desktop's panel as far as programs see it on the session's bus: a tray and a notification daemon.

Prints a line for each icon ("tray BUS-NAME PATH") and each notification ("notification TITLE: TEXT").
"""
from gi.repository import Gio, GLib

INTERFACES = Gio.DBusNodeInfo.new_for_xml("""<node>
<interface name="org.kde.StatusNotifierWatcher">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  <method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
  <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <property name="ProtocolVersion" type="i" access="read"/>
</interface>
<interface name="org.freedesktop.Notifications">
  <method name="GetCapabilities"><arg type="as" direction="out"/></method>
  <method name="GetServerInformation">
    <arg type="s" direction="out"/><arg type="s" direction="out"/><arg type="s" direction="out"/>
    <arg type="s" direction="out"/>
  </method>
  <method name="CloseNotification"><arg type="u" direction="in"/></method>
  <method name="Notify">
    <arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
    <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
    <arg type="a{sv}" direction="in"/><arg type="i" direction="in"/><arg type="u" direction="out"/>
  </method>
</interface></node>""")

icons = []


def on_call(_bus, sender, _path, _interface, method, arguments, call):
    given = arguments.unpack()
    answer = None
    if method == "RegisterStatusNotifierItem":
        # Either a path of the caller's or a bus name of its own.
        place = (sender, given[0]) if given[0].startswith("/") else (given[0], "/StatusNotifierItem")
        icons.append("".join(place))
        print("tray", *place, flush=True)
    elif method == "Notify":
        print(f"notification {given[3]}: {given[4]}", flush=True)
        answer = GLib.Variant("(u)", (1,))
    elif method == "GetCapabilities":
        answer = GLib.Variant("(as)", (["body"],))
    elif method == "GetServerInformation":
        answer = GLib.Variant("(ssss)", ("shell", "lab", "1", "1.2"))
    call.return_value(answer)


def on_get(_bus, _sender, _path, _interface, name):
    return {
        "RegisteredStatusNotifierItems": GLib.Variant("as", icons),
        "IsStatusNotifierHostRegistered": GLib.Variant("b", True),
        "ProtocolVersion": GLib.Variant("i", 0),
    }[name]


bus = Gio.bus_get_sync(Gio.BusType.SESSION)
for interface, path in zip(INTERFACES.interfaces, ("/StatusNotifierWatcher", "/org/freedesktop/Notifications")):
    bus.register_object(path, interface, on_call, on_get, None)
    Gio.bus_own_name_on_connection(bus, interface.name, Gio.BusNameOwnerFlags.NONE, None, None)
GLib.MainLoop().run()
