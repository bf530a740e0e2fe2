#pragma once

#include "ui/Unasked.h"

#include <QElapsedTimer>
#include <QMessageBox>

/// A message box that nobody has asked for just now. No key reaches it before the person has paused for a second with
/// the box active: what is being typed when it comes is not an answer. The mouse works at once.
class KvUnaskedBox : public Unasked<QMessageBox>
{
    Q_OBJECT

public:
    KvUnaskedBox(Icon icon, const QString &title, const QString &text, QWidget *parent);

    /// Shows a box with an OK button, and returns when it is closed.
    static void tell(QWidget *parent, Icon icon, const QString &title, const QString &text);

    bool heedsKeys() const;

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QElapsedTimer m_quiet; ///< since the box came, became active, or had a key pressed in it
    bool m_answered = false;
};
