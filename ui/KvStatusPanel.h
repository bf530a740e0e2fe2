#pragma once

#include <QFrame>

/// The card of the connection status. Its text and its progress bar take their colour from the status picture, the
/// line below the text from whether it warns.
class KvStatusPanel : public QFrame
{
    Q_OBJECT

public:
    explicit KvStatusPanel(QWidget *parent = nullptr);

    /// Whether the line below the text warns.
    void setWarning(bool warns);

public slots:
    /// To be called with the resource name of the status picture whenever it changes.
    void showPicture(const QString &resource);

private:
    /// Sets a property by which the style sheet tells cards apart.
    void mark(const char *what, bool isSo);
};
