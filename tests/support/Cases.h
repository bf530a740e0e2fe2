#pragma once

#include <QByteArray>
#include <QTest>

/// Compares like QCOMPARE, and names the case in the report. The expected value is converted to the actual one's
/// type, so that tables can hold plain texts.
template <typename Actual, typename Expected>
bool compareCase(const QByteArray &name, const Actual &actual, const Expected &expected, const char *expression,
                 const char *file, int line)
{
    const Actual wanted(expected);
    return QTest::qCompare(actual, wanted, (name + ": " + expression).constData(), "expected", file, line);
}

/// For loops over a table of cases: ends the test, and names the case, unless the two are the same.
#define COMPARE_CASE(name, actual, expected)                                                                         \
    do {                                                                                                             \
        if (!compareCase(name, actual, expected, #actual, __FILE__, __LINE__)) {                                     \
            return;                                                                                                  \
        }                                                                                                            \
    } while (false)
