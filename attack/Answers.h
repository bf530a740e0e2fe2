#pragma once

#include <QByteArray>
#include <QVector>

/// To which question of the window an answer is given.
enum class Question { Login, Description, Archive, IpPage, SpeedTest };

/// What a hostile service says.
struct Answer
{
    const char *name;
    Question question;
    QByteArray bytes; ///< head and body
    QByteArray more;  ///< sent over and over behind them, until the window hangs up; empty for nothing
};

/// The answers of the table. Archives are made in the working folder.
QVector<Answer> hostileAnswers();
