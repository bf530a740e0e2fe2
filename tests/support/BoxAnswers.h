#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <utility>

/// Answers modal message boxes like a person would, and checks what they say. Boxes are expected in order; a box that
/// nobody expects is a failure, and is closed so that no run blocks for ever.
class BoxAnswers : public QObject
{
public:
    BoxAnswers() { qApp->installEventFilter(this); }

    /// The next box must have this title and text and offer exactly these buttons; it is answered with `answer`.
    void expect(const QString &title, const QString &text, QMessageBox::StandardButtons buttons = QMessageBox::Ok,
                QMessageBox::StandardButton answer = QMessageBox::Ok)
    {
        m_expected.append({description(title, text, buttons), answer});
    }

    /// How many of the expected boxes have not come yet.
    int left() const { return m_expected.size(); }

    /// What went wrong so far; empty when all was as expected. Reading it forgets it.
    QString takeFailures() { return std::exchange(m_failures, QString()); }

    /// Called while the next expected box stands open, before it is answered.
    std::function<void()> whileOpen;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const QPointer<QMessageBox> box(qobject_cast<QMessageBox *>(watched));
        if (event->type() == QEvent::Show && box) {
            QTimer::singleShot(0, this, [this, box] {
                if (box && box->isVisible() && box->isModal()) {
                    answer(box);
                }
            });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    static QString description(const QString &title, const QString &text, QMessageBox::StandardButtons buttons)
    {
        return QStringLiteral("box \"%1\": %2 (buttons %3)\n").arg(title, text, QString::number(int(buttons), 16));
    }

    void answer(QMessageBox *box)
    {
        const auto [expected, reply] =
            m_expected.isEmpty() ? qMakePair(QString("none"), QMessageBox::NoButton) : m_expected.takeFirst();
        const QString shown = description(box->windowTitle(), box->text(), box->standardButtons());
        if (shown != expected) {
            m_failures += shown + "expected: " + expected;
        }
        if (whileOpen && reply != QMessageBox::NoButton) {
            whileOpen();
        }
        QAbstractButton *button = box->button(reply);
        button != nullptr ? button->click() : box->reject();
    }

    QList<QPair<QString, QMessageBox::StandardButton>> m_expected;
    QString m_failures;
};
