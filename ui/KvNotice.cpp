#include "ui/KvNotice.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVariant>

static constexpr int kMargin = 17; // that of the cards below it
static constexpr int kHeight = 96;

KvNotice::KvNotice(QWidget *window) : QFrame(window), m_text(new QLabel(this))
{
    setObjectName(QStringLiteral("notice"));
    setProperty("card", true);
    m_text->setObjectName(QStringLiteral("lbNotice"));
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(kMargin, 8, kMargin, 8);
    row->setSpacing(8);
    row->addWidget(m_text, 1);
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
    layout()->addWidget(button);
    return button;
}

void KvNotice::tell(const QString &text, bool portal, bool lastProfile)
{
    m_text->setText(text);
    m_portal->setVisible(portal);
    m_lastProfile->setVisible(lastProfile);
    const QRect room = parentWidget()->rect();
    setGeometry(kMargin, room.height() - kHeight - 8, room.width() - 2 * kMargin, kHeight);
    show();
    raise();
}
