// What the attacks are tried on to see that they work: a window that is root and takes no care of what a person left
// for it. Started as "Victim URL" it also asks for that page.

#include <QApplication>
#include <QAudioDeviceInfo>
#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <QProcess>
#include <QSslSocket>
#include <QTimer>
#include <QWidget>

#include <unistd.h>

static constexpr int kLifeMs = 700;
static constexpr int kAnswerMs = 15000;

int main(int argc, char **argv)
{
    if (setuid(0) != 0) {
        return 1;
    }
    QCoreApplication::setSetuidAllowed(true);
    QApplication application(argc, argv);
    QProcess::execute(QCoreApplication::applicationDirPath() + "/tools/netstat", {});
    QAudioDeviceInfo::availableDevices(QAudio::AudioOutput);
    QSslSocket::supportsSsl();
    QProcess::execute("bash", {"-c", ":"});
    QWidget window;
    window.show();
    QNetworkAccessManager manager;
    const bool asks = QCoreApplication::arguments().size() == 2;
    if (asks) {
        manager.get(QNetworkRequest(QUrl(QCoreApplication::arguments().at(1))));
    }
    QTimer::singleShot(asks ? kAnswerMs : kLifeMs, &application, &QApplication::quit);
    return QApplication::exec();
}
