#include "platform/DesktopScale.h"

#include <QGuiApplication>
#include <QRect>

#include <cmath>
#include <cstdlib>
#include <memory>
#include <xcb/randr.h>
#include <xcb/xcb.h>

namespace {

constexpr char kScale[] = "QT_SCALE_FACTOR";
constexpr char kDpi[] = "QT_FONT_DPI";
constexpr qreal kUsualDpi = 96;

template <typename Reply> using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

/// What the X server knows of the desktop: its resolution, 0 where nobody has set one, and the room for windows on
/// the main screen, empty where it is not known.
struct Desktop
{
    qreal dpi = 0;
    QSize room;
};

QByteArray property(xcb_connection_t *server, xcb_window_t root, const char *name, xcb_atom_t type)
{
    const auto length = static_cast<uint16_t>(qstrlen(name));
    const Owned<xcb_intern_atom_reply_t> atom(
        xcb_intern_atom_reply(server, xcb_intern_atom(server, 1, length, name), nullptr), &std::free);
    if (!atom || atom->atom == XCB_ATOM_NONE) {
        return {};
    }
    const auto question = xcb_get_property(server, 0, root, atom->atom, type, 0, 16384);
    const Owned<xcb_get_property_reply_t> value(xcb_get_property_reply(server, question, nullptr), &std::free);
    return value ? QByteArray(static_cast<const char *>(xcb_get_property_value(value.get())),
                              xcb_get_property_value_length(value.get()))
                 : QByteArray();
}

qreal resolution(const QByteArray &resources)
{
    for (const QByteArray &line : resources.split('\n')) {
        if (line.startsWith("Xft.dpi:")) {
            return line.mid(8).trimmed().toDouble();
        }
    }
    return 0;
}

QRect mainMonitor(xcb_connection_t *server, const xcb_screen_t &screen)
{
    const QRect whole(0, 0, screen.width_in_pixels, screen.height_in_pixels);
    if (!xcb_get_extension_data(server, &xcb_randr_id)->present) {
        return whole;
    }
    const auto question = xcb_randr_get_monitors(server, screen.root, 1);
    const Owned<xcb_randr_get_monitors_reply_t> monitors(xcb_randr_get_monitors_reply(server, question, nullptr),
                                                         &std::free);
    QRect found;
    if (monitors) {
        for (auto next = xcb_randr_get_monitors_monitors_iterator(monitors.get()); next.rem > 0;
             xcb_randr_monitor_info_next(&next)) {
            if (found.isNull() || next.data->primary) {
                found = QRect(next.data->x, next.data->y, next.data->width, next.data->height);
            }
        }
    }
    return found.isNull() ? whole : found;
}

Desktop desktop()
{
    Desktop found;
    xcb_connection_t *server = xcb_connect(nullptr, nullptr);
    if (!xcb_connection_has_error(server)) {
        const xcb_screen_t &screen = *xcb_setup_roots_iterator(xcb_get_setup(server)).data;
        found.dpi = resolution(property(server, screen.root, "RESOURCE_MANAGER", XCB_ATOM_STRING));
        QRect room = mainMonitor(server, screen);
        const QByteArray workArea = property(server, screen.root, "_NET_WORKAREA", XCB_ATOM_CARDINAL);
        if (workArea.size() >= int(4 * sizeof(qint32))) {
            const auto *area = reinterpret_cast<const qint32 *>(workArea.constData());
            const QRect besidePanels = room & QRect(area[0], area[1], area[2], area[3]);
            room = besidePanels.isEmpty() ? room : besidePanels;
        }
        found.room = room.size();
    }
    xcb_disconnect(server);
    return found;
}

void put(const char *name, const QByteArray &value)
{
    value.isNull() ? qunsetenv(name) : qputenv(name, value);
}

QByteArray get(const char *name)
{
    return qEnvironmentVariableIsSet(name) ? qgetenv(name) : QByteArray();
}

} // namespace

DesktopScale::DesktopScale(const QSize &window) : m_scaleBefore(get(kScale)), m_dpiBefore(get(kDpi))
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    if (!platform.isEmpty() && platform != "xcb") {
        return;
    }
    const Desktop now = desktop();
    const qreal byPerson = m_dpiBefore.toDouble();
    const qreal dpi = byPerson > 0 ? byPerson : now.dpi > 0 ? now.dpi : kUsualDpi;
    if (byPerson <= 0 && now.dpi <= 0) {
        put(kDpi, "96"); // Qt would measure the monitor, which nobody has asked for
    }
    const qreal factor = m_scaleBefore.toDouble() > 0 ? m_scaleBefore.toDouble() : 1;
    const qreal wanted = factor * dpi / kUsualDpi;
    const qreal fits = fitting(wanted, window, now.room);
    if (fits < wanted) {
        put(kScale, QByteArray::number(factor * fits / wanted, 'f', 4));
    }
}

void DesktopScale::restoreEnvironment() const
{
    put(kScale, m_scaleBefore);
    put(kDpi, m_dpiBefore);
}

qreal DesktopScale::fitting(qreal wanted, const QSize &window, const QSize &room)
{
    if (room.isEmpty()) {
        return wanted;
    }
    const qreal greatest = qMin(qreal(room.width()) / window.width(), qreal(room.height()) / window.height());
    // Qt can not draw a window at less than its own size.
    return wanted <= greatest ? wanted : qMax(qMin(wanted, qreal(1)), std::floor(greatest * 100) / 100);
}
