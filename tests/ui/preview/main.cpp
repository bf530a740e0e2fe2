// Photographs every page of the form, filled with examples, into a folder. Run it with QT_SCALE_FACTOR=2 for the
// sharp pictures.
// Usage: korvan_preview FOLDER

#include "tests/ui/ExampleWindow.h"
#include "ui/KvImageBox.h"
#include "ui/KvL2TPBox.h"
#include "ui/Look.h"

#include <QApplication>
#include <QDir>
#include <QMessageBox>

namespace {

QDir g_folder;

void photograph(QWidget &window, const char *name)
{
    window.show();
    window.activateWindow();
    QApplication::processEvents();
    QApplication::processEvents();
    const QString suffix = window.devicePixelRatioF() > 1 ? QStringLiteral("@2x.png") : QStringLiteral(".png");
    window.grab().save(g_folder.filePath(QLatin1String(name) + suffix));
}

void photographDialogs()
{
    KvL2TPBox l2tp(nullptr);
    photograph(l2tp, "l2tp");
    KvImageBox image(QStringLiteral(":/img/macnotify.png"), QStringLiteral("Korvan Help"), nullptr);
    photograph(image, "help");
    const std::pair<QMessageBox::Icon, const char *> boxes[] = {{QMessageBox::Question, "box-question"},
                                                                {QMessageBox::Information, "box-information"},
                                                                {QMessageBox::Warning, "box-warning"},
                                                                {QMessageBox::Critical, "box-critical"}};
    const QString texts[] = {
        QStringLiteral("Are you sure you wish to quit Korvan?"), QStringLiteral("Update Successful."),
        QStringLiteral("Please note that if auto reconnect is enabled, there will be a brief moment \n"
                       "in which your programs may not be protected by the VPN during reconnection. \n"
                       "Do you still wish to enable auto-reconnect?"),
        QStringLiteral("Internet connection has been terminated for your security.\nPlease press OK to resume your "
                       "regular internet connection and reconnect to the VPN if needed.")};
    const QString *text = texts;
    for (const auto &[icon, name] : boxes) {
        QMessageBox box(icon, QStringLiteral("Exit"), *text++, QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton(QMessageBox::No);
        photograph(box, name);
    }
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication application(argc, argv);
    applyLook(application);
    g_folder = QDir(application.arguments().value(1, QStringLiteral(".")));
    g_folder.mkpath(QStringLiteral("."));

    ExampleWindow window;
    photograph(window, "login");
    window.showPage(0);
    photograph(window, "dashboard");
    window.showStatus(ExampleWindow::Status::Connecting);
    photograph(window, "dashboard-connecting");
    window.showStatus(ExampleWindow::Status::Connected);
    photograph(window, "dashboard-connected");
    const char *pages[] = {"log", "settings", "proxy", "status"};
    for (int page = 1; page <= 4; ++page) {
        window.showPage(page);
        photograph(window, pages[page - 1]);
    }
    photographDialogs();
    return 0;
}
