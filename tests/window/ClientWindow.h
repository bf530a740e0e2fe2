#pragma once

#include "controller/Korvan.h"
#include "tests/support/BoxAnswers.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTest>

#include <memory>

/// Encoding and look as the program sets them.
void prepareApplication(QApplication &application);

/// The real window, found by object names and clicked like a person. Its state is that of the application folder.
class ClientWindow
{
public:
    /// Empties the application folder's state.
    ClientWindow();

    /// Creates the window, in place of one that is there, waits until its start is done, and returns it.
    Korvan &start();

    /// Destroys the window, as the end of the program does.
    void end() { m_window.reset(); }

    /// The widget of that object name; the test fails without it.
    template <typename Widget> Widget *find(const char *name) const
    {
        auto *widget = m_window->findChild<Widget *>(QString::fromLatin1(name));
        if (widget == nullptr) {
            qFatal("no widget %s", name);
        }
        return widget;
    }

    /// Presses a button as the user does: only when it is shown and enabled.
    bool press(const char *button) const;

    BoxAnswers boxes;

protected:
    std::unique_ptr<Korvan> m_window;
};
