#include "ui/KvNotice.h"

#include "ui/News.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVariant>

static constexpr int kMargin = 17; // that of the cards below it
static constexpr int kGap = 8;

KvNotice::KvNotice(QWidget *window, QWidget *page) : QFrame(window), m_page(page), m_text(new QLabel(this))
{
    setObjectName(QStringLiteral("notice"));
    setProperty("card", true);
    m_text->setObjectName(QStringLiteral("lbNotice"));
    m_text->setProperty("news", true);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(kMargin, kGap, kMargin, kGap);
    column->setSpacing(kGap);
    column->addWidget(m_text);
    m_row = new QHBoxLayout;
    m_row->setSpacing(kGap);
    m_row->addStretch();
    column->addLayout(m_row);
    m_portal = addButton("pbPortal", tr("Sign in to this network"));
    m_lastProfile = addButton("pbLastProfile", tr("Use the last working configuration"));
    connect(m_portal, &QPushButton::clicked, this, &KvNotice::portalWanted);
    connect(m_lastProfile, &QPushButton::clicked, this, &KvNotice::lastProfileWanted);
    connect(addButton("pbNoticeClose", tr("Close")), &QPushButton::clicked, this, &QWidget::hide);
    hide();
}

QPushButton *KvNotice::addButton(const char *name, const QString &text)
{
    auto *button = new QPushButton(text, this);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(true); // Return presses it, too
    m_row->addWidget(button);
    return button;
}

void KvNotice::showEvent(QShowEvent *event)
{
    QFrame::showEvent(event);
    m_page->setContentsMargins(0, 0, 0, height() + kGap);
}

void KvNotice::hideEvent(QHideEvent *event)
{
    QFrame::hideEvent(event);
    m_page->setContentsMargins(0, 0, 0, 0);
}

void KvNotice::tell(const QString &text, bool portal, bool lastProfile)
{
    m_text->setText(text);
    m_portal->setVisible(portal);
    m_lastProfile->setVisible(lastProfile);
    ensurePolished(); // whose font decides how many lines the text has
    m_text->ensurePolished();
    const QRect room = parentWidget()->rect();
    const int width = room.width() - 2 * kMargin;
    const int height = layout()->totalHeightForWidth(width);
    setGeometry(kMargin, room.height() - height - kGap, width, height);
    setAccessibleName(text);
    QPushButton *first = nullptr;
    for (QPushButton *button : findChildren<QPushButton *>()) {
        button->setAccessibleDescription(text);
        first = first == nullptr && !button->isHidden() ? button : first;
    }
    isVisible() ? readOut(m_text) : show(); // which has it read out, too
    raise();
    if (qobject_cast<const QLineEdit *>(window()->focusWidget()) == nullptr) { // where a person may be typing
        first->setFocus(Qt::OtherFocusReason);
    }
}
