#pragma once

#include "ui_Korvan.h"

/// The form with its picture families and tabs, filled with the texts of an ordinary evening, but without a program
/// behind it: what the tests of the form measure and the preview photographs.
class ExampleWindow : public QMainWindow
{
    Q_OBJECT

public:
    ExampleWindow();

    enum class Status { NotConnected, Connecting, Connected };
    /// Shows one status of the connection on the dashboard.
    void showStatus(Status status);
    /// Shows a tab page of the main page.
    void showPage(int index);
    /// Puts a server of this name into every list.
    void addServer(const QString &name);

    Ui::Korvan ui;
};
