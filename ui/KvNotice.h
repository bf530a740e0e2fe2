#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

/// A card over the lower edge of the window that tells, without stopping anybody, what went wrong and offers what can
/// be done about it. Hidden until tell() is called.
class KvNotice : public QFrame
{
    Q_OBJECT

public:
    explicit KvNotice(QWidget *window);

    /// Shows the text, which is plain, and those of the buttons that help.
    void tell(const QString &text, bool portal, bool lastProfile);

signals:
    void portalWanted();      ///< "Sign in to this network"
    void lastProfileWanted(); ///< "Use the last working configuration"

private:
    QPushButton *addButton(const char *name, const QString &text);

    QLabel *m_text;
    QPushButton *m_portal;
    QPushButton *m_lastProfile;
};
