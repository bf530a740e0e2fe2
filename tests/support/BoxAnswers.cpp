#include "tests/support/BoxAnswers.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QTimer>

BoxAnswers::BoxAnswers()
{
    qApp->installEventFilter(this);
}

void BoxAnswers::expect(const QString &title, const QString &text, QMessageBox::StandardButtons buttons,
                        QMessageBox::StandardButton answer)
{
    m_expected.append({title, text, buttons, answer});
}

QString BoxAnswers::takeFailures()
{
    QString failures;
    failures.swap(m_failures);
    return failures;
}

bool BoxAnswers::eventFilter(QObject *watched, QEvent *event)
{
    auto *box = qobject_cast<QMessageBox *>(watched);
    if (event->type() == QEvent::Show && box != nullptr) {
        const QPointer<QMessageBox> shown(box);
        QTimer::singleShot(0, this, [this, shown] {
            if (shown && shown->isVisible() && shown->isModal()) {
                answer(shown);
            }
        });
    }
    return QObject::eventFilter(watched, event);
}

void BoxAnswers::answer(QMessageBox *box)
{
    if (m_expected.isEmpty()) {
        m_failures += QStringLiteral("unexpected box \"%1\": %2\n").arg(box->windowTitle(), box->text());
        box->reject();
        return;
    }
    const Expected expected = m_expected.takeFirst();
    if (box->windowTitle() != expected.title || box->text() != expected.text ||
        box->standardButtons() != expected.buttons) {
        m_failures += QStringLiteral("box \"%1\": %2 (buttons %3), expected \"%4\": %5 (buttons %6)\n")
                          .arg(box->windowTitle(), box->text())
                          .arg(int(box->standardButtons()), 0, 16)
                          .arg(expected.title, expected.text)
                          .arg(int(expected.buttons), 0, 16);
    }
    if (whileOpen) {
        whileOpen();
    }
    QAbstractButton *button = box->button(expected.answer);
    button != nullptr ? button->click() : box->reject();
}
