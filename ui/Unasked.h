#pragma once

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include <utility>

/// Whether a person's input goes to the main window while the modal dialog is shown: Qt does not keep it from there
/// where the dialog did not come up modal. Takes such a key for itself.
bool goesBehind(const QWidget &dialog, const QObject *target, QEvent *event);

/// A modal dialog that nobody has asked for just now. It comes up without taking the focus from another program, and
/// while it is there the main window takes no input.
template <typename Dialog> class Unasked : public Dialog
{
public:
    template <typename... Arguments>
    explicit Unasked(Arguments &&...arguments) : Dialog(std::forward<Arguments>(arguments)...)
    {
        if (QApplication::activeWindow() == nullptr) {
            this->setAttribute(Qt::WA_ShowWithoutActivating);
        }
        qApp->installEventFilter(this);
    }

    void setVisible(bool visible) override
    {
        if (!visible || !this->testAttribute(Qt::WA_ShowWithoutActivating)) {
            Dialog::setVisible(visible);
            return;
        }
        const Qt::WindowModality modality = this->windowModality();
        // Qt activates what comes up modal, whatever the attribute says; the message box's own setter would hide it
        // again.
        QWidget::setWindowModality(Qt::NonModal);
        Dialog::setVisible(true);
        QWidget::setWindowModality(modality);
    }

protected:
    bool event(QEvent *event) override
    {
        const bool comes = event->type() == QEvent::Show;
        const bool done = Dialog::event(event);
        if (comes && !this->isActiveWindow()) {
            QApplication::alert(this);
        }
        return done;
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        return goesBehind(*this, watched, event) || Dialog::eventFilter(watched, event);
    }
};
