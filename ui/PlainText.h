#pragma once

#include <QTextDocument>

/// The text for a place where Qt also takes markup, in a form that is shown as it stands. No text of the service's
/// may be markup: it would make this root process open any file that the text names.
inline QString plainText(const QString &text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}
