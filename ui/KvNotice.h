#pragma once

#include <QFrame>

class QHBoxLayout;
class QLabel;
class QPushButton;

/// A card over the lower edge of the window that tells, without stopping anybody, what went wrong and offers what can
/// be done about it. Hidden until tell() is called.
class KvNotice : public QFrame
{
    Q_OBJECT

public:
    /// What is in `page` moves out of the notice's way while it is shown.
    KvNotice(QWidget *window, QWidget *page);

    /// Shows the text, which is plain, and those of the buttons that help. The first of them gets the focus, unless
    /// it is in a field of the window.
    void tell(const QString &text, bool portal, bool lastProfile);

signals:
    void portalWanted();      ///< "Sign in to this network"
    void lastProfileWanted(); ///< "Use the last working configuration"

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QPushButton *addButton(const char *name, const QString &text);

    QWidget *m_page;
    QLabel *m_text;
    QHBoxLayout *m_row;
    QPushButton *m_portal;
    QPushButton *m_lastProfile;
};
