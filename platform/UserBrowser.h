#pragma once

#include <QObject>
#include <QUrl>

/// Opens web pages in the browser of the person at the screen. A program that runs as root must not start a browser
/// as root: while this object lives, QDesktopServices::openUrl() of a web address runs xdg-open with the rights of
/// the user who started the program (SUDO_UID, PKEXEC_UID or, after a set-user-id start, USER). Where that is root,
/// or the program does not run as root, pages open as they always do.
class UserBrowser : public QObject
{
    Q_OBJECT

public:
    UserBrowser();
    ~UserBrowser() override;

public slots:
    void open(const QUrl &url);
};
