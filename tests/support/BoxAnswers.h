#pragma once

#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QString>

#include <functional>

/// Answers modal message boxes like a person would, and checks what they say. Boxes are expected in order; a box that
/// nobody expects is a failure, and is closed so that no run blocks for ever.
class BoxAnswers : public QObject
{
    Q_OBJECT

public:
    BoxAnswers();

    /// The next box must have this title and text and offer exactly these buttons; it is answered with `answer`.
    void expect(const QString &title, const QString &text, QMessageBox::StandardButtons buttons = QMessageBox::Ok,
                QMessageBox::StandardButton answer = QMessageBox::Ok);

    /// How many of the expected boxes have not come yet.
    int left() const { return m_expected.size(); }

    /// What went wrong so far; empty when all was as expected. Reading it forgets it.
    QString takeFailures();

    /// Called while the next expected box stands open, before it is answered.
    std::function<void()> whileOpen;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Expected
    {
        QString title;
        QString text;
        QMessageBox::StandardButtons buttons;
        QMessageBox::StandardButton answer;
    };

    void answer(QMessageBox *box);

    QList<Expected> m_expected;
    QString m_failures;
};
