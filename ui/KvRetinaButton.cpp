#include "ui/KvRetinaButton.h"

#include "ui/Mnemonics.h"
#include "ui/StatePicture.h"
#include "ui/Theme.h"

#include <QKeyEvent>
#include <QPainter>

KvRetinaButton::KvRetinaButton(QWidget *parent) : QPushButton(parent)
{
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::TabFocus); // a click leaves the focus, and its ring, where it is
    setCursor(Qt::PointingHandCursor);
}

void KvRetinaButton::setImages(const QString &pattern)
{
    m_images = pattern;
    const QImage picture = statePicture(pattern, "release", this).toImage();
    m_body = picture.isNull() ? QColor(Qt::transparent) : picture.pixelColor(picture.rect().center());
    updateGeometry();
    update();
}

QSize KvRetinaButton::sizeHint() const
{
    if (text().isEmpty()) {
        return {32, 32};
    }
    const bool link = m_body.alpha() == 0;
    return {fontMetrics().size(Qt::TextShowMnemonic, text()).width() + (link ? 16 : 32), link ? 26 : 36};
}

QColor KvRetinaButton::textColour() const
{
    if (!isEnabled()) {
        return colours().disabled;
    }
    if (m_body.alpha() == 0) {
        return QPushButton::palette().color(QPalette::ButtonText);
    }
    return m_body.lightness() < 160 ? colours().onAction : colours().ink;
}

void KvRetinaButton::changeEvent(QEvent *event)
{
    QPushButton::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        setImages(m_images); // the pictures may be dark ones now
    }
}

void KvRetinaButton::keyPressEvent(QKeyEvent *event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && !event->isAutoRepeat()) {
        click();
        return;
    }
    QPushButton::keyPressEvent(event);
}

void KvRetinaButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    drawStretched(painter, rect(), statePicture(m_images, stateOf(this, isDown()), this));
    painter.setPen(textColour());
    painter.drawText(rect(), Qt::AlignCenter | mnemonicFlag(), text());
}
