#pragma once

#include "controller/Korvan.h"
#include "tests/support/BoxAnswers.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QTest>

#include <functional>
#include <memory>

/// Encoding and look as the program sets them.
void prepareApplication(QApplication &application);

/// The real window, found by object names and clicked like a person. Its state is that of the application folder.
class ClientWindow
{
public:
    ClientWindow() { clear(); }

    /// Empties the application folder's state.
    static void clear();

    /// Creates the window, in place of one that is there, and waits until its start is done.
    void start();

    /// Destroys the window, as the end of the program does.
    void end() { m_window.reset(); }

    /// The widget of that object name; the test fails without it.
    template <typename Widget = QWidget> Widget *find(const char *name) const
    {
        auto *widget = m_window->findChild<Widget *>(QString::fromLatin1(name));
        if (widget == nullptr) {
            qFatal("no widget %s", name);
        }
        return widget;
    }

    QString label(const char *name) const { return find<QLabel>(name)->text(); }

    /// The items of a box, or a column of a table.
    QStringList items(const char *name, int column = 0) const;

    /// For controls as in "c:pbConnect d:pbDisconnect": the letters of those that are enabled, a dash for each other.
    QString enabled(const QString &controls) const;

    /// An entry of the tray's menu or of its list of servers; null when there is none of that text.
    QAction *trayEntry(const QString &text) const;

    /// Presses a button as the user does, who opens its page first and presses only what is shown and enabled; or
    /// chooses an entry of the tray's menu by its text.
    bool press(const char *control) const;

    /// Runs the action as soon as the condition holds, also while a slot of the window waits.
    void when(const std::function<bool()> &condition, const std::function<void()> &action) const;

    /// The dialog that stands open, also one that has not taken the focus; null when there is none.
    static QDialog *openDialog();

    BoxAnswers boxes;

protected:
    std::unique_ptr<Korvan> m_window;
};
